// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "bench/DeskOrders.h"
#include "bench/FaultLine.h"
#include "bench/Literals.h"
#include "bench/PtyPort.h"
#include "bench/TcpPort.h"
#include "bench/TimeSource.h"

#include <QMap>
#include <QStringList>
#include <QTemporaryDir>

#include <optional>

namespace corvane::bench {

/// What a bench is started with. A port of 0 asks for a free one.
struct BenchOptions
{
    /// The port of the chamber controller, or of a recorded TCP/IP-1.
    quint16 chamberPort = 5000;
    /// The port of the board, or of a recorded TCP/IP-2.
    quint16 boardPort = 5001;
    quint16 gpibPort = 1234;
    /// The port of a second "++" controller; none without it.
    std::optional<quint16> secondGpibPort;
    /// The folder of the serial ports' links, which must exist; empty for a temporary one.
    QString linkFolder;
    TimeSource time = steadyTime();
};

/// What every bench is to those who use it: places where faults can be ordered, orders as text, and
/// how the program is pointed at it. What stands at the places is the subclass's.
class Desk : public QObject
{
    Q_OBJECT

public:
    /// One place where a fault can be ordered.
    struct Place
    {
        /// As orders name it: "rs485", "gpib:5".
        QString name;
        QString what;
        /// Where the program finds it: a device path, "127.0.0.1:5000", "GPIB0::5".
        QString where;
        FaultLine *faults;
        Plug *plug;

        /// Its fault and what its plug says, as in "slow 500, 1 connected".
        [[nodiscard]] QString state() const;
    };

    /// What one of the program's Channels, by the title of its tab, is filled in with.
    struct Entries
    {
        QString channel;
        QString port;
        QString host;
        QString address;
    };

    /// Starts everything. False when a part could not; errorString() says which, and the rest runs.
    bool start();
    [[nodiscard]] QString errorString() const { return m_errors.join(u'\n'); }

    /// Where its TCP ports are.
    [[nodiscard]] static QString host() { return u"127.0.0.1"_s; }
    [[nodiscard]] const std::vector<Place> &places() const { return m_layout.places; }
    /// The program's serial port numbers and the devices that they stand for here.
    [[nodiscard]] const QMap<int, QString> &serialDevices() const { return m_layout.serialDevices; }
    /// The program's GPIB boards and the adapters that they stand for here.
    [[nodiscard]] const QMap<int, QString> &gpibAdapters() const { return m_layout.gpibAdapters; }
    [[nodiscard]] const std::vector<Entries> &entries() const { return m_layout.entries; }
    /// The arguments that make the program use this bench's serial ports and controllers.
    [[nodiscard]] QStringList programArguments() const;
    /// What these cannot say: where the TCP/IP Channels connect to.
    [[nodiscard]] virtual QString tcpHint() const = 0;

    /// Does what one order says ("rs485 silent", "clear", "help") and returns the answer.
    QString order(const QString &text) { return deskOrders::run(*this, text); }
    /// The orders that are this bench's own.
    [[nodiscard]] virtual std::vector<DeskOrder> ownOrders() = 0;
    /// What there is to say of the whole.
    [[nodiscard]] virtual QString state() = 0;

Q_SIGNALS:
    /// Something happened that people should know.
    void said(const QString &text);

protected:
    /// What is where.
    struct Layout
    {
        std::vector<Place> places;
        QMap<int, QString> serialDevices;
        QMap<int, QString> gpibAdapters;
        std::vector<Entries> entries;
    };

    explicit Desk(BenchOptions options);

    /// Starts the transports, and says what is where then.
    virtual Layout lay() = 0;

    [[nodiscard]] const BenchOptions &options() const { return m_options; }
    /// The path of a serial port.
    [[nodiscard]] QString link(const QString &name) const;
    void startSerial(PtyPort &port);
    void startTcp(TcpPort &port, quint16 preferred);
    /// "127.0.0.1:5000".
    [[nodiscard]] static QString addressOf(const TcpPort &port);

private:
    const BenchOptions m_options;
    QTemporaryDir m_temporaryLinks;
    QStringList m_errors;
    Layout m_layout;
};

} // namespace corvane::bench
