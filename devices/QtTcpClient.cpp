// SPDX-License-Identifier: GPL-3.0-or-later
#include "devices/QtTcpClient.h"

#include "devices/PlatformError.h"

#include <QNetworkProxy>

#include <algorithm>
#include <utility>

namespace corvane {

namespace {

/// A failure as the sockets library numbers and a technician words it; "%1" is the peer.
struct Failure
{
    QAbstractSocket::SocketError error;
    int number;
    QLatin1String text;
};

constexpr Failure failures[] = {
    {QAbstractSocket::ConnectionRefusedError, 10061,
     "%1 refused the connection; is the port number right, and is the device ready?"_L1},
    {QAbstractSocket::HostNotFoundError, 11001,
     "%1: no such host; check the name or enter its IP address"_L1},
    {QAbstractSocket::TemporaryError, 11002,
     "%1: the name server does not answer; check the network or enter the device's "
     "IP address"_L1},
    {QAbstractSocket::SocketTimeoutError, 10060,
     "%1 does not answer; check its address, its power and the network cable"_L1},
    {QAbstractSocket::NetworkError, 10051,
     "%1 cannot be reached; check the network cable and this computer's address"_L1},
    {QAbstractSocket::SocketAccessError, 10013,
     "%1: this computer's rules do not permit the connection"_L1},
    {QAbstractSocket::AddressInUseError, 10048, "%1: the address is in use"_L1},
    {QAbstractSocket::SocketResourceError, 10024,
     "%1: this computer has no more sockets; close other programs"_L1},
    {QAbstractSocket::UnfinishedSocketOperationError, 10036,
     "%1: the previous operation is still running"_L1},
};

constexpr int otherFailures = 10000;

} // namespace

QtTcpClient::QtTcpClient(int connectTimeoutMs, hostLookup::Resolver resolver)
    : m_resolver(std::move(resolver))
{
    m_socket.setProxy(QNetworkProxy::NoProxy); // devices stand in the workshop, not behind a proxy
    m_socket.setReadBufferSize(mostAtOnce);
    m_connectLimit.setSingleShot(true);
    m_connectLimit.setTimerType(Qt::PreciseTimer);
    m_connectLimit.setInterval(connectTimeoutMs);
    connect(&m_connectLimit, &QTimer::timeout, this, [this] {
        m_lookup.forget();
        fail(m_state == SocketState::ResolvingHost ? QAbstractSocket::TemporaryError
                                                   : QAbstractSocket::SocketTimeoutError);
        m_socket.abort();
    });
    connect(&m_socket, &QAbstractSocket::stateChanged, this, &QtTcpClient::followSocket);
    connect(&m_socket, &QAbstractSocket::errorOccurred, this, &QtTcpClient::handleError);
    connect(&m_socket, &QIODevice::readyRead, this, [this] {
        if (m_state == SocketState::Connected)
            Q_EMIT dataArrived();
    });
}

QtTcpClient::~QtTcpClient()
{
    m_socket.disconnect(this);
    m_socket.abort();
}

void QtTcpClient::connectToPeer()
{
    const QString host = remoteHost().trimmed();
    if (m_state != SocketState::Closed)
        throw PlatformError(u"the socket is still in use; disconnect it first"_s);
    if (host.isEmpty())
        throw PlatformError(u"the host is empty; enter its name or IP address"_s);
    if (remotePort() < 1 || remotePort() > 65535)
        throw PlatformError(u"the port \"%1\" is not a number from 1 to 65535"_s.arg(remotePort()));
    const int attempt = ++m_attempt;
    m_peer = u"%1 port %2"_s.arg(host, QString::number(remotePort()));
    m_connectLimit.start();
    m_rest.clear();
    m_wasReset = false;
    setState(SocketState::ResolvingHost);
    if (attempt != m_attempt) // a receiver closed it
        return;
    if (const QHostAddress address(host); !address.isNull()) {
        connectToOneOf({address});
        return;
    }
    try {
        m_lookup.start([this, resolver = m_resolver, host] {
            return [this, addresses = resolver(host)] { connectToOneOf(addresses); };
        });
    } catch (const PlatformError &) {
        close();
        throw;
    }
}

/// Tries the addresses of the host one after the other until one takes the connection.
void QtTcpClient::connectToOneOf(QList<QHostAddress> addresses)
{
    if (addresses.isEmpty()) {
        fail(QAbstractSocket::HostNotFoundError);
        return;
    }
    const QHostAddress next = addresses.takeFirst();
    m_addresses = addresses;
    m_socket.abort();
    m_socket.connectToHost(next, static_cast<quint16>(remotePort()));
}

void QtTcpClient::close()
{
    ++m_attempt;
    m_connectLimit.stop();
    m_lookup.forget();
    m_addresses.clear();
    const bool wasOpen = m_state != SocketState::Closed;
    m_state = SocketState::Closed; // so that nothing of what follows counts
    m_wasReset = false;
    m_rest.clear();
    m_line.release();
    m_socket.abort();
    if (wasOpen)
        Q_EMIT stateChanged();
}

bool QtTcpClient::put(const QByteArray &bytes)
{
    if (m_state != SocketState::Connected)
        throw PlatformError(u"the socket is not connected"_s);
    if (m_socket.bytesToWrite() > mostUnsent)
        throw PlatformError(u"%1 takes no more data; disconnect it"_s.arg(m_peer));
    if (m_socket.write(bytes) != bytes.size())
        throw PlatformError(u"%1: cannot send: %2"_s.arg(m_peer, m_socket.errorString()));
    m_socket.flush(); // now, not after the paint that the event loop may have waiting
    return true;
}

QByteArray QtTcpClient::take()
{
    // To the end: only a read that finds nothing more lets a socket with a full buffer go on.
    QByteArray bytes = m_socket.isOpen() ? m_socket.readAll() : QByteArray();
    return bytes += std::exchange(m_rest, {});
}

bool QtTcpClient::isActive() const
{
    return m_state >= SocketState::ResolvingHost && m_state <= SocketState::Connected;
}

void QtTcpClient::setState(SocketState state)
{
    if (state == m_state)
        return;
    m_state = state;
    Q_EMIT stateChanged();
}

void QtTcpClient::followSocket(QAbstractSocket::SocketState state)
{
    if (!isActive())
        return;
    // Leaving these states is told by errors; the socket forgets too early why it left.
    if (state == QAbstractSocket::ConnectingState && m_state == SocketState::ResolvingHost) {
        setState(SocketState::HostResolved);
        if (isActive()) // a receiver may have closed it
            setState(SocketState::Connecting);
    } else if (state == QAbstractSocket::ConnectedState) {
        m_connectLimit.stop();
        m_line.hold(m_socket.socketDescriptor());
        m_socket.setSocketOption(QAbstractSocket::LowDelayOption, 1);
        m_socket.setSocketOption(QAbstractSocket::KeepAliveOption, 1);
        setState(SocketState::Connected);
    }
}

void QtTcpClient::handleError(QAbstractSocket::SocketError error)
{
    if (!isActive())
        return;
    if (error == QAbstractSocket::RemoteHostClosedError)
        peerClosed();
    else if (m_state != SocketState::Connected && !m_addresses.isEmpty())
        QMetaObject::invokeMethod( // this frame is the socket's own
            this,
            [this, attempt = m_attempt] {
                if (attempt == m_attempt && isActive())
                    connectToOneOf(m_addresses);
            },
            Qt::QueuedConnection);
    else
        fail(error);
}

void QtTcpClient::peerClosed()
{
    m_wasReset = m_line.wasReset();
    m_rest = m_line.takeRest();
    m_line.release();
    // What came before the end is handed out first; no other arrival will be signalled.
    if (m_socket.bytesAvailable() > 0 || !m_rest.isEmpty())
        Q_EMIT dataArrived();
    if (isActive())
        setState(SocketState::PeerClosing);
}

void QtTcpClient::fail(QAbstractSocket::SocketError error)
{
    m_connectLimit.stop();
    m_line.release();
    const auto known = std::ranges::find(failures, error, &Failure::error);
    const bool isKnown = known != std::end(failures);
    const int number = isKnown ? known->number : otherFailures + static_cast<int>(error);
    const QString description = isKnown ? QString(known->text).arg(m_peer)
                                        : u"%1: %2"_s.arg(m_peer, m_socket.errorString());
    const int attempt = m_attempt;
    setState(SocketState::Error);
    // Closed meanwhile: nobody asks any more.
    QMetaObject::invokeMethod(
        this,
        [this, number, description, attempt] {
            if (attempt == m_attempt)
                Q_EMIT errorOccurred(number, description);
        },
        Qt::QueuedConnection);
}

} // namespace corvane
