#include "main/TcpChannel.h"

#include "main/ChannelTexts.h"
#include "platform/Dialogs.h"
#include "platform/PlatformError.h"
#include "platform/TcpClient.h"

#include <QScopedValueRollback>
#include <QTime>

namespace corvane {

namespace {

/// The port that a send on a closed socket goes back to, whatever the entry holds.
constexpr qint32 defaultPort = 5000;

} // namespace

TcpChannel::TcpChannel(int index, TcpClient &client, const ChannelContext &context, QWidget *parent)
    : Channel(index, context, parent)
    , m_client(client)
{
    txtAddress = new QLineEdit(QStringLiteral("255.255.255.0"), this);
    txtAddress->setMinimumWidth(120);
    txtPort = new QLineEdit(QString::number(defaultPort), this);
    txtPort->setMaximumWidth(70);
    addConnectionField(tr("&Host:"), txtAddress, QStringLiteral("txtAddress"));
    addConnectionField(tr("&Port:"), txtPort, QStringLiteral("txtPort"));
    reserveStatus(channelTexts::socketStates.back());

    connect(txtPort, &QLineEdit::textChanged, this, &TcpChannel::txtPort_Change);
    for (const QLineEdit *entry : {txtPort, txtAddress})
        connect(entry, &QLineEdit::returnPressed, this, &Channel::cmdConnect_Click);
    connect(&m_client, &TcpClient::stateChanged, this, [this] {
        if (!isOpen())
            dropRest(channelTexts::piecesUnsent.arg(tr("the connection has ended")));
        if (m_client.wasReset())
            m_context.host.reportFault(this->index(), channelTexts::wasReset.arg(caption()));
        refreshStatus();
    });
    connect(&m_client, &TcpClient::dataArrived, this, &TcpChannel::tcpClient_DataArrival);
    connect(&m_client, &TcpClient::errorOccurred, this, &TcpChannel::tcpClient_Error);
}

bool TcpChannel::isOpen() const
{
    return m_client.state() == SocketState::Connected;
}

QString TcpChannel::place() const
{
    return isOpen() ? m_place : enteredPlace();
}

QString TcpChannel::enteredPlace() const
{
    return QStringLiteral("%1 port %2")
        .arg(txtAddress->text().trimmed(), txtPort->text().trimmed());
}

void TcpChannel::closeUntilClosed()
{
    while (m_client.state() != SocketState::Closed)
        m_client.close();
}

void TcpChannel::openTransport()
{
    if (isOpen())
        return;
    const auto port = enteredPort();
    if (!port)
        throw PlatformError(
            tr("the port \"%1\" is not a number from 1 to 65535").arg(txtPort->text()));
    m_client.setRemoteHost(txtAddress->text());
    m_client.setRemotePort(*port);
    closeUntilClosed();
    m_place = enteredPlace();
    m_client.connectToPeer();
}

void TcpChannel::closeTransport()
{
    chkLoop->setChecked(false);
    forgetExchange();
    m_client.close();
}

void TcpChannel::txtPort_Change()
{
    if (isOpen())
        m_context.dialogs.showMessage(window(), channelTexts::alreadyConnected);
    else if (const auto port = enteredPort())
        m_client.setRemotePort(*port);
}

/// The port entry when it is a whole number.
std::optional<qint32> TcpChannel::enteredPort() const
{
    bool isNumber = false;
    const qint32 port = txtPort->text().trimmed().toInt(&isNumber);
    return isNumber ? std::optional(port) : std::nullopt;
}

void TcpChannel::send(const QByteArray &command)
{
    if (!isOpen()) {
        m_client.setRemoteHost(txtAddress->text());
        m_client.setRemotePort(defaultPort);
        closeUntilClosed();
        refuseNotConnected();
        return;
    }
    if (m_pieces.isEmpty() && !m_looping)
        m_context.host.clearFault(index());
    dropRest(m_looping ? channelTexts::loopBeganAnew.arg(QTime::currentTime().toString())
                       : channelTexts::piecesUnsent.arg(tr("another command followed")));
    m_answered = true;
    m_arrived = false;
    beginReply();
    m_pieces = index() == channels::tcpIp1 ? QList{command} : command.split(';');
    sendNextPiece();
}

/// The rest of a command waits for the reply to this piece, for as long as the device takes;
/// another command and the end of the connection drop it.
void TcpChannel::sendNextPiece()
{
    m_client.sendData(m_pieces.takeFirst() + '\r');
    TcpSegmentWait = !m_pieces.isEmpty();
    TimerTransfer->stop();
}

void TcpChannel::forgetExchange()
{
    m_pieces.clear();
    TcpSegmentWait = false;
}

void TcpChannel::dropRest(const QString &note)
{
    if (!m_pieces.isEmpty())
        m_context.host.reportFault(index(), note);
    forgetExchange();
}

void TcpChannel::tcpClient_DataArrival()
{
    const QByteArray arrival = m_client.getData();
    const bool showsNewestAlone = index() == channels::tcpIp1;
    if (showsNewestAlone)
        txtIn->setBytes({});
    m_answered = true;
    const bool isFirst = !std::exchange(m_arrived, true);
    appendReply(arrival, {.lineEnds = false, .sequence = "\r\n"},
                showsNewestAlone && !isFirst ? channelTexts::newestPieceAlone.arg(caption())
                                             : QString());
    if (!std::exchange(TcpSegmentWait, false))
        return;
    try {
        sendNextPiece();
    } catch (const PlatformError &error) {
        // Below this frame is the socket's own: the message waits until it has returned.
        TimerTransfer->stop();
        forgetExchange();
        m_context.host.reportFault(index(), error.description());
        QTimer::singleShot(0, this, [this] { refuseSend(channelTexts::sendError); });
    }
}

void TcpChannel::tcpClient_Error(int, const QString &description)
{
    m_context.dialogs.showMessage(window(), channelTexts::socketError + description);
    closeUntilClosed();
    refreshStatus();
    Q_EMIT connectFailed(description);
}

void TcpChannel::poll()
{
    refreshStatus();
    const QScopedValueRollback looping(m_looping, true);
    if (!isOpen())
        shpComm->setBright(false);
    else if (m_pieces.isEmpty() || !m_answered) // a loop lets its command finish, if it does
        loopOnce();
    m_answered = false;
}

/// What an earlier loop has lost is known by now.
void TcpChannel::chkLoop_Click()
{
    Channel::chkLoop_Click();
    if (isOpen() && chkLoop->isChecked())
        m_context.host.clearFault(index());
}

std::optional<QString> TcpChannel::statusText() const
{
    const auto state = static_cast<size_t>(m_client.state());
    if (state >= channelTexts::socketStates.size())
        return std::nullopt;
    return channelTexts::socketStates.at(state);
}

} // namespace corvane
