// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/channels/ChannelSession.h"

#include <optional>

namespace corvane {

class TcpClient;

/// A Channel over a TCP client socket: TCP/IP-1, which sends a command as one line and shows the
/// newest arrival, or TCP/IP-2, which sends the pieces between ";" one reply apart and collects.
class TcpSession : public ChannelSession
{
    Q_OBJECT

public:
    /// The port that a send on a closed socket goes back to, whatever the entry holds.
    static constexpr qint32 defaultPort = 5000;

    /// `index` 3: TCP/IP-1, 4: TCP/IP-2.
    TcpSession(int index, TcpClient &client, const ChannelContext &context);

    [[nodiscard]] TcpClient &client() const { return m_client; }
    /// All that has arrived since the last command, the first 65,536 bytes of it: the box may show
    /// its newest piece alone.
    [[nodiscard]] const QByteArray &arrivals() const { return m_arrivals; }
    void forgetArrivals() { m_arrivals.clear(); }
    /// The host and the port entry.
    [[nodiscard]] const QString &host() const { return m_host; }
    void setHost(const QString &host);
    [[nodiscard]] const QString &portEntry() const { return m_portEntry; }
    /// Said with a message box while the socket is connected: it counts from the next Connect on.
    void setPortEntry(const QString &entry);

    void setLooping(bool on) override;
    void tcpClient_DataArrival();
    void tcpClient_Error(int number, const QString &description);

    [[nodiscard]] bool isOpen() const override;
    [[nodiscard]] bool isConnecting() const override;
    [[nodiscard]] QString place() const override;
    void fillIn(const ChannelEntries &entries) override;

protected:
    void openTransport() override;
    void reopenTransport() override;
    void closeTransport() override;
    void transmit(const QByteArray &command) override;
    void poll() override;
    void forgetExchange() override;
    [[nodiscard]] QString statusText() const override;

private:
    [[nodiscard]] QString enteredPlace() const;
    void closeUntilClosed();
    /// The pieces that wait are not sent any more; says `fault` when there are any.
    void dropRest(const QString &fault);
    void sendNextPiece();

    TcpClient &m_client;
    QString m_host;
    QString m_portEntry = QString::number(defaultPort);
    QString m_openedHost; ///< of the newest connect
    qint32 m_openedPort = defaultPort;
    QString m_place;
    /// A piece is out, others follow it, and its reply has not come yet (TCP/IP-2).
    bool TcpSegmentWait = false;
    /// What is still to be sent of the command, each piece after the reply to the one before.
    QList<QByteArray> m_pieces;
    /// Something was sent by hand or has arrived since the last tick.
    bool m_answered = false;
    /// The loop's tick is sending: what it has lost before stays said.
    bool m_inLoop = false;
    QByteArray m_arrivals;
};

} // namespace corvane
