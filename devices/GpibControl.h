// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "devices/GpibAdapter.h"
#include "devices/Literals.h"
#include "devices/Transport.h"
#include "devices/WaitGroup.h"

#include <QByteArray>
#include <QString>

#include <array>
#include <functional>
#include <memory>

namespace corvane {

/// The system's one GPIB control: a connect string, a time-out, and open, reset, write and a read
/// that blocks for at most the time-out. It talks through the adapter of the addressed board.
///
/// While a call waits for the bus the windows keep painting and other devices keep being served;
/// whoever holds back clicks and keys meanwhile follows busyChanged. A second use throws
/// PlatformError ("busy"), so two exchanges are never interleaved.
class GpibControl : public Transport
{
    Q_OBJECT

public:
    /// Makes the adapter of a board (0..3); called at its first use, and anew after forgetAdapter.
    using AdapterFactory = std::function<std::unique_ptr<GpibAdapter>(int board)>;

    static constexpr int defaultTimeoutMs = 1000;

    GpibControl(Clock &clock, AdapterFactory factory);
    ~GpibControl() override;

    /// Where write and read go, as in "GPIB0::5". Any text may be set; a wrong one is a fault of
    /// the next operation.
    [[nodiscard]] QString connectString() const { return m_connectString; }
    void setConnectString(const QString &text) { m_connectString = text; }

    /// How long a read blocks at most, in ms, 1..59999. Others are ignored.
    [[nodiscard]] int timeout() const { return m_timeoutMs; }
    void setTimeout(int ms);

    /// (Re-)initialises the adapter of the addressed board. Throws PlatformError.
    void open();
    /// Clears the addressed device. Throws PlatformError when the adapter is not there.
    void reset();
    /// Writes the text's bytes as they are. Throws PlatformError.
    void write(const QByteArray &bytes) { send(bytes); }
    /// Reads one reply; empty when none came within the time-out, or the read was cancelled.
    QByteArray read() { return receive(); }
    /// Why the last reply is only a part of one, or may be; empty when it is whole.
    [[nodiscard]] QString incomplete() const { return m_incomplete; }

    /// True while a call waits for the bus.
    [[nodiscard]] bool isBusy() const { return m_busy; }
    /// Ends the call that waits for the bus at once; a read then returns nothing.
    void cancel();
    /// Ends the running call and refuses all later ones; the program is closing.
    void shutDown();

    /// What serves a board, or why nothing does. For the about box and the adapter window.
    [[nodiscard]] QString adapterDescription(int board);
    /// The adapter's version text. Throws PlatformError.
    QString adapterVersion(int board);
    /// Drops the board's adapter, so that its next use makes it anew.
    void forgetAdapter(int board);

Q_SIGNALS:
    /// A call has begun to use the bus, or has ended.
    void busyChanged(bool busy);
    void adapterForgotten(int board);

protected:
    bool put(const QByteArray &bytes) override;
    QByteArray take() override;

private:
    class Use;

    GpibAdapter &adapter(int board);
    GpibAddress tellAddress();

    WaitGroup m_waits;
    AdapterFactory m_factory;
    std::array<std::unique_ptr<GpibAdapter>, GpibAddress::boardCount> m_adapters;
    QString m_connectString = u"GPIB0::0"_s;
    QString m_told; ///< the address of the last exchange
    int m_timeoutMs = defaultTimeoutMs;
    QString m_incomplete;
    bool m_busy = false;
    bool m_shutDown = false;
};

} // namespace corvane
