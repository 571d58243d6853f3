// SPDX-License-Identifier: GPL-3.0-or-later
#include "bench/TcpPort.h"

#include "bench/Literals.h"

#include <QNetworkProxy>

namespace corvane::bench {

TcpStream::TcpStream(QTcpSocket *socket, QObject *parent)
    : ByteStream(parent)
    , m_socket(socket)
{
    socket->setParent(this);
    socket->setSocketOption(QAbstractSocket::LowDelayOption, 1);
    connect(socket, &QTcpSocket::readyRead, this, [this] { Q_EMIT received(m_socket->readAll()); });
    connect(socket, &QTcpSocket::bytesWritten, this, [this] {
        if (m_socket->bytesToWrite() == 0)
            Q_EMIT drained();
    });
    connect(socket, &QTcpSocket::disconnected, this, [this] {
        Q_EMIT closed();
        deleteLater();
    });
}

void TcpStream::send(const QByteArray &bytes)
{
    if (m_socket->state() != QAbstractSocket::ConnectedState)
        return;
    m_socket->write(bytes);
    // At once, so that pieces ordered apart arrive apart.
    m_socket->flush();
}

TcpPort::TcpPort()
{
    m_server.setProxy(QNetworkProxy::NoProxy);
    connect(&m_server, &QTcpServer::newConnection, this, [this] {
        while (QTcpSocket *socket = m_server.nextPendingConnection()) {
            auto *stream = new TcpStream(socket, this);
            Q_EMIT opened(*stream);
            Q_EMIT stream->opened();
        }
    });
}

bool TcpPort::listen(quint16 preferred)
{
    const bool listening = m_server.listen(QHostAddress::LocalHost, preferred) ||
                           m_server.listen(QHostAddress::LocalHost, 0);
    if (listening)
        m_port = m_server.serverPort();
    return listening;
}

void TcpPort::unplug()
{
    m_server.close();
    const auto streams = findChildren<TcpStream *>();
    for (TcpStream *stream : streams)
        stream->dropPeer();
}

bool TcpPort::replug()
{
    return isPlugged() || m_server.listen(QHostAddress::LocalHost, m_port);
}

QString TcpPort::state() const
{
    return u"%1 connected"_s.arg(findChildren<TcpStream *>().size());
}

} // namespace corvane::bench
