// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/channels/TcpSession.h"

#include "core/channels/ChannelTexts.h"
#include "core/channels/Reconnect.h"
#include "core/text/LineEnds.h"
#include "devices/PlatformError.h"
#include "devices/TcpClient.h"
#include "devices/WholeNumber.h"

#include <QScopedValueRollback>
#include <QTime>

#include <algorithm>

namespace corvane {

TcpSession::TcpSession(int index, TcpClient &client, const ChannelContext &context)
    : ChannelSession(index, client, context)
    , m_client(client)
{
    connect(&m_client, &TcpClient::stateChanged, this, [this] {
        if (!isOpen())
            dropRest(channelTexts::piecesUnsent.arg(channelTexts::connectionEnded));
        if (m_client.wasReset())
            tellFault(channelTexts::wasReset.arg(caption()));
        refreshStatus();
    });
    connect(&m_client, &TcpClient::dataArrived, this, &TcpSession::tcpClient_DataArrival);
    connect(&m_client, &TcpClient::errorOccurred, this, &TcpSession::tcpClient_Error);
}

bool TcpSession::isOpen() const
{
    return m_client.state() == SocketState::Connected;
}

bool TcpSession::isConnecting() const
{
    const SocketState state = m_client.state();
    return state >= SocketState::ConnectionPending && state <= SocketState::Connecting;
}

QString TcpSession::place() const
{
    return isOpen() ? m_place : enteredPlace();
}

QString TcpSession::enteredPlace() const
{
    return u"%1 port %2"_s.arg(m_host.trimmed(), m_portEntry.trimmed());
}

void TcpSession::setHost(const QString &host)
{
    if (std::exchange(m_host, host) != host)
        Q_EMIT entriesChanged();
}

void TcpSession::setPortEntry(const QString &entry)
{
    if (std::exchange(m_portEntry, entry) == entry)
        return;
    if (isOpen())
        showMessage(channelTexts::alreadyConnected);
    else if (const auto port = wholeNumber(m_portEntry))
        m_client.setRemotePort(*port);
    Q_EMIT entriesChanged();
}

void TcpSession::fillIn(const ChannelEntries &entries)
{
    refuseEntry(u"address"_s, entries.address);
    refuseEntry(u"settings"_s, entries.settings);
    if (!entries.host.isEmpty())
        setHost(entries.host);
    if (!entries.port.isEmpty())
        setPortEntry(entries.port);
}

void TcpSession::closeUntilClosed()
{
    while (m_client.state() != SocketState::Closed)
        m_client.close();
}

void TcpSession::openTransport()
{
    if (isOpen())
        return;
    const auto port = wholeNumber(m_portEntry);
    if (!port)
        throw PlatformError(channelTexts::noTcpPort.arg(m_portEntry));
    m_openedHost = m_host;
    m_openedPort = *port;
    m_place = enteredPlace();
    reopenTransport();
}

void TcpSession::reopenTransport()
{
    m_client.setRemoteHost(m_openedHost);
    m_client.setRemotePort(m_openedPort);
    closeUntilClosed();
    m_client.connectToPeer();
}

void TcpSession::closeTransport()
{
    setLooping(false);
    forgetExchange();
    m_client.close();
}

/// What an earlier loop has lost is known by now.
void TcpSession::setLooping(bool on)
{
    ChannelSession::setLooping(on);
    if (isOpen() && isLooping())
        tellFault({});
}

void TcpSession::transmit(const QByteArray &command)
{
    if (!isOpen()) {
        m_client.setRemoteHost(m_host);
        m_client.setRemotePort(defaultPort);
        closeUntilClosed();
        refuseNotConnected();
        return;
    }
    if (m_pieces.isEmpty() && !m_inLoop)
        tellFault({});
    dropRest(m_inLoop ? channelTexts::loopBeganAnew.arg(QTime::currentTime().toString())
                      : channelTexts::piecesUnsent.arg(channelTexts::anotherFollowed));
    m_answered = true;
    forgetArrivals();
    beginReply();
    m_pieces = traits().sendsPieces ? command.split(';') : QList{command};
    sendNextPiece();
}

/// The rest of a command waits for the reply to this piece, for as long as the device takes;
/// another command and the end of the connection drop it.
void TcpSession::sendNextPiece()
{
    m_client.sendData(m_pieces.takeFirst() + '\r');
    TcpSegmentWait = !m_pieces.isEmpty();
    TimerTransfer->stop();
}

void TcpSession::forgetExchange()
{
    m_pieces.clear();
    TcpSegmentWait = false;
}

void TcpSession::dropRest(const QString &fault)
{
    if (!m_pieces.isEmpty())
        tellFault(fault);
    forgetExchange();
}

void TcpSession::tcpClient_DataArrival()
{
    const QByteArray arrival = m_client.getData();
    m_answered = true;
    const bool isFirst = m_arrivals.isEmpty();
    if (constexpr qsizetype most = 65536; m_arrivals.size() < most)
        m_arrivals += arrival.first(std::min(arrival.size(), most - m_arrivals.size()));
    // The line's end may come by itself: it ends what stands there.
    const bool isEnd = !isFirst && std::ranges::all_of(arrival, lineEnds::isOne);
    const bool isNewest = traits().showsNewestAlone && !isEnd;
    if (isNewest)
        setResponse({});
    const QString alone = isFirst ? QString() : channelTexts::newestPieceAlone.arg(caption());
    appendReply(arrival, {.lineEnds = false, .sequence = "\r\n"}, isNewest ? alone : note());
    if (!std::exchange(TcpSegmentWait, false))
        return;
    try {
        sendNextPiece();
    } catch (const PlatformError &error) {
        // Below this frame is the socket's own: the message waits until it has returned.
        TimerTransfer->stop();
        forgetExchange();
        tellFault(error.description());
        QTimer::singleShot(0, this, [this] { refuseSend(channelTexts::sendError); });
    }
}

void TcpSession::tcpClient_Error(int, const QString &description)
{
    tellConnectFault(description, channelTexts::socketError);
    closeUntilClosed();
    refreshStatus();
}

void TcpSession::poll()
{
    refreshStatus();
    const QScopedValueRollback inLoop(m_inLoop, true);
    if (!isOpen())
        dimLight();
    else if (m_pieces.isEmpty() || !m_answered)
        loopOnce(); // a loop lets its command finish, if it does
    m_answered = false;
}

/// Of a state without a text the last one stands.
QString TcpSession::statusText() const
{
    const auto state = static_cast<size_t>(m_client.state());
    return state < channelTexts::socketStates.size() ? channelTexts::socketStates.at(state)
                                                     : status();
}

} // namespace corvane
