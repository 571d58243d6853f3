// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "devices/DetachedCall.h"
#include "devices/HostLookup.h"
#include "devices/TcpClient.h"
#include "devices/TcpLine.h"

#include <QTcpSocket>
#include <QTimer>

namespace corvane {

/// The TCP client on a real socket. It keeps a state of its own, since the toolkit's socket is
/// already unconnected when "closed by the peer" and "error" must still be seen, and a time limit
/// for looking the host up and connecting.
///
/// stateChanged and dataArrived come straight out of the socket's slots: a receiver takes the bytes
/// and neither waits nor shows a box.
class QtTcpClient : public TcpClient
{
public:
    static constexpr int defaultConnectTimeoutMs = 10'000;
    /// Bytes that one arrival holds at most.
    static constexpr qint64 mostAtOnce = qint64{256} * 1024;
    /// Unsent bytes from which a send is refused: a peer that stops reading must not fill the
    /// memory of a loop that runs for days.
    static constexpr qint64 mostUnsent = 16'000'000;

    explicit QtTcpClient(int connectTimeoutMs = defaultConnectTimeoutMs,
                         hostLookup::Resolver resolver = hostLookup::systemResolver);
    ~QtTcpClient() override;

    [[nodiscard]] SocketState state() const override { return m_state; }
    [[nodiscard]] bool wasReset() const override { return m_wasReset; }
    void connectToPeer() override;
    void close() override;

protected:
    bool put(const QByteArray &bytes) override;
    QByteArray take() override;

private:
    [[nodiscard]] bool isActive() const;
    void connectToOneOf(QList<QHostAddress> addresses);
    void setState(SocketState state);
    void followSocket(QAbstractSocket::SocketState state);
    void handleError(QAbstractSocket::SocketError error);
    void peerClosed();
    void fail(QAbstractSocket::SocketError error);

    QTcpSocket m_socket;
    TcpLine m_line;
    QByteArray m_rest; ///< what the socket left behind when the peer closed
    bool m_wasReset = false;
    QTimer m_connectLimit;
    hostLookup::Resolver m_resolver;
    DetachedCall m_lookup;
    QList<QHostAddress> m_addresses; ///< of the running attempt, still to be tried
    SocketState m_state = SocketState::Closed;
    QString m_peer;    ///< host and port of the running attempt, for messages
    int m_attempt = 0; ///< tells reports of an earlier attempt from this one's
};

} // namespace corvane
