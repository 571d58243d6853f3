// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "bench/ByteStream.h"

#include <QTcpServer>
#include <QTcpSocket>

namespace corvane::bench {

/// One connection to a TcpPort.
class TcpStream : public ByteStream
{
    Q_OBJECT

public:
    /// Takes the socket over; goes by itself when the connection ends.
    explicit TcpStream(QTcpSocket *socket, QObject *parent);

    void send(const QByteArray &bytes) override;
    [[nodiscard]] qint64 backlog() const override { return m_socket->bytesToWrite(); }
    void dropPeer() override { m_socket->abort(); }

private:
    QTcpSocket *m_socket;
};

/// A TCP server on this computer alone, with any number of clients.
class TcpPort : public QObject, public Plug
{
    Q_OBJECT

public:
    TcpPort();

    /// Listens on the preferred port, or on a free one when that is taken or 0.
    bool listen(quint16 preferred);
    /// The port, also while unplugged; 0 before listen().
    [[nodiscard]] quint16 port() const { return m_port; }
    [[nodiscard]] QString errorString() const { return m_server.errorString(); }

    /// Drops all clients and refuses new ones.
    void unplug() override;
    bool replug() override;
    [[nodiscard]] bool isPlugged() const override { return m_server.isListening(); }
    [[nodiscard]] QString state() const override;
    /// What a client has not taken yet is in its own connection: nothing waits here.
    void discardOutput() override {}

Q_SIGNALS:
    /// A client came. The stream belongs to the port.
    void opened(corvane::bench::ByteStream &stream);

private:
    QTcpServer m_server;
    quint16 m_port = 0;
};

} // namespace corvane::bench
