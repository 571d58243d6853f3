// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "devices/Transport.h"

#include <QByteArray>
#include <QString>

namespace corvane {

/// The states of a TCP client, numbered as the status texts are.
enum class SocketState {
    Closed = 0,
    Open = 1,
    Listening = 2,
    ConnectionPending = 3,
    ResolvingHost = 4,
    HostResolved = 5,
    Connecting = 6,
    Connected = 7,
    PeerClosing = 8,
    Error = 9
};

/// One TCP client socket as the Channels see it.
class TcpClient : public Transport
{
    Q_OBJECT

public:
    [[nodiscard]] QString remoteHost() const { return m_host; }
    void setRemoteHost(const QString &host) { m_host = host; }
    /// Any number may be set; one outside 1..65535 is a fault at connecting.
    [[nodiscard]] qint32 remotePort() const { return m_port; }
    void setRemotePort(qint32 port) { m_port = port; }

    [[nodiscard]] virtual SocketState state() const = 0;
    /// The peer broke the connection off instead of ending it. Known while the state is
    /// PeerClosing; false otherwise.
    [[nodiscard]] virtual bool wasReset() const = 0;

    /// Starts connecting to the remote host and port and returns at once; the state tells the
    /// progress, errorOccurred a failure. Throws PlatformError when it cannot even start (port out
    /// of range, host empty, socket not closed).
    virtual void connectToPeer() = 0;
    /// Closes the socket at once from any state; unsent and unread bytes are dropped. The state is
    /// Closed afterwards.
    virtual void close() = 0;

    /// Queues the bytes for sending; returns at once. Throws PlatformError unless connected.
    void sendData(const QByteArray &bytes) { send(bytes); }
    /// Takes what has arrived. One arrival is bounded: a peer that never stops is held up by its
    /// own connection.
    QByteArray getData() { return receive(); }

Q_SIGNALS:
    void stateChanged();
    void dataArrived();
    /// Connecting or the connection failed; the state is Error until closed. Queued, never inside a
    /// driver's slot, once for each failure. A peer that closes is no error.
    void errorOccurred(int number, const QString &description);

private:
    QString m_host;
    qint32 m_port = 0;
};

} // namespace corvane
