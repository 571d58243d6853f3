// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "bench/GpibStation.h"
#include "bench/PlusPlusParser.h"

#include <QPointer>

#include <functional>
#include <map>
#include <span>

namespace corvane::bench {

class ReplySender;

/// A GPIB controller with the "++" command set, over any stream: GPIB-ETHERNET over a TcpPort,
/// GPIB-USB over a PtyPort. Its settings outlive connections and are the same for all of them.
/// Commands that come while a read is on wait for its end; a read that finds nothing is silent.
class PlusPlusController : public QObject
{
public:
    PlusPlusController();

    /// Puts an instrument on the bus at a primary address, 0 to 30, and a secondary one, 96 to 126
    /// or 0 for none. It outlives the controller.
    void connectStation(int primary, GpibStation &station, int secondary = 0);
    /// Is told each message to an address where no instrument is.
    using Listener = std::function<void(int primary, int secondary, const QByteArray &message)>;
    void setUnheard(Listener unheard) { m_unheard = std::move(unheard); }
    /// The stream must not outlive the controller.
    void attach(ByteStream &stream);
    /// The reply to "++ver".
    void setVersion(const QByteArray &version) { m_version = version; }
    /// The faults of the controller itself, not of its instruments.
    [[nodiscard]] FaultLine &faults() { return m_faults; }

private:
    struct Settings
    {
        int mode = 1;
        int automatic = 0;
        int eoi = 1;
        int eos = 3;
        int eotEnable = 0;
        int eotChar = 0;
        int readTimeoutMs = 1200;
        int saveConfiguration = 1;
    };
    struct Number
    {
        const char *name;
        int low;
        int high;
        int Settings::*member;
    };
    struct Action
    {
        const char *name;
        /// False: the command was not understood.
        bool (PlusPlusController::*run)(const QByteArray &arguments);
    };
    struct Waiting
    {
        QPointer<ByteStream> stream;
        ReplySender *sender;
        PlusPlusLine line;
    };
    enum class ReadUntil { TimeOut, End, Character };

    static std::span<const Number> numbers();
    static std::span<const Action> actions();

    void work();
    void command(const QByteArray &line);
    bool setOrShow(const Number &number, const QByteArray &arguments);
    bool address(const QByteArray &arguments);
    bool read(const QByteArray &arguments);
    bool clearDevice(const QByteArray &arguments);
    bool version(const QByteArray &arguments);
    bool showZero(const QByteArray &arguments);
    bool nothingToDo(const QByteArray &arguments);

    void writeToDevice(const QByteArray &bytes);
    [[nodiscard]] GpibStation *station() const;
    void startRead(ReadUntil until, char character = 0);
    void pump();
    void finishRead();
    void reply(const QByteArray &text) { send(text + "\r\n"); }
    void send(const QByteArray &bytes);

    /// By primary and secondary address.
    std::map<std::pair<int, int>, GpibStation *> m_stations;
    Listener m_unheard = [](int, int, const QByteArray &) {};
    FaultLine m_faults;
    QByteArray m_version = "Bench GPIB controller version 1.0";
    Settings m_settings;
    int m_primary = 0;
    int m_secondary = 0;

    std::deque<Waiting> m_waiting;
    /// Whose line is being worked on.
    Waiting m_current;
    bool m_reading = false;
    ReadUntil m_until = ReadUntil::End;
    char m_untilCharacter = 0;
    QTimer m_gap;
};

} // namespace corvane::bench
