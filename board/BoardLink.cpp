#include "board/BoardLink.h"

#include "board/BoardChannels.h"
#include "board/BoardTexts.h"
#include "common/MeterReading.h"
#include "platform/GpibControl.h"
#include "platform/PlatformError.h"
#include "platform/SerialPort.h"
#include "platform/TcpClient.h"

#include <QScopeGuard>

#include <algorithm>

namespace corvane {

namespace {

constexpr qint16 beforeSendMs = 25;
constexpr qint16 afterSendMs = 100;
constexpr qint16 secondReadMs = 200;

} // namespace

BoardLink::BoardLink(BoardChannels &channels, WaitGroup &waits, QObject *parent)
    : QObject(parent)
    , m_channels(channels)
    , m_waits(waits)
{
}

void BoardLink::setMethod(int method)
{
    if (method >= Rs232 && method <= TcpIp)
        m_method = static_cast<Method>(method);
}

int BoardLink::channel() const
{
    return channelOf(m_method);
}

int BoardLink::channelOf(Method method)
{
    switch (method) {
    case Rs232:
        return channels::rs232;
    case TcpIp:
        return channels::tcpIp1;
    case Ieee:
        break;
    }
    return channels::ieee488;
}

bool BoardLink::usesChannel(int channel) const
{
    return channel == channelOf(m_method) || (m_isSent && channel == channelOf(m_sentBy));
}

/// Marks a call that may block on the bus, so that stop knows whether to end it.
template <class Operation>
auto BoardLink::onGpib(Operation operation) const
{
    ++m_gpibCalls;
    const auto done = qScopeGuard([this] { --m_gpibCalls; });
    return operation(m_channels.QBXControl1());
}

void BoardLink::OutputToSbc(QString &command)
{
    m_fault.clear();
    m_isSent = false;
    Q_EMIT commandShown(QString());
    Q_EMIT replyShown(QString(), QString());
    PauseMS(beforeSendMs);
    if (isStopped())
        return;
    Q_EMIT commandShown(QString(command).remove(u'\r'));
    if (!command.contains(u'\r'))
        command += u'\r';
    m_sentBy = m_method;
    try {
        send(command);
        m_isSent = true;
    } catch (const PlatformError &error) {
        m_fault = error.description();
        Q_EMIT replyShown(boardTexts::noResponse, m_fault);
    }
    PauseMS(afterSendMs);
}

void BoardLink::send(const QString &text)
{
    if (!isSendable(text))
        throw PlatformError(boardTexts::notSendable);
    const ChannelUse use = m_channels.channelUse(channel());
    if (use != ChannelUse::Free)
        throw PlatformError(boardTexts::channelInUse(channel(), use));
    const QByteArray bytes = text.toLatin1();
    switch (m_sentBy) {
    case Rs232:
        m_channels.MSComm1().input();
        m_channels.clearResponse(channels::rs232);
        m_channels.MSComm1().output(bytes);
        break;
    case Ieee:
        onGpib([&](GpibControl &control) { control.write(bytes); });
        break;
    case TcpIp:
        m_channels.clearResponse(channels::tcpIp1);
        m_channels.tcpClient1().sendData(bytes);
        break;
    }
}

void BoardLink::InputFromSbc(QString &reply)
{
    Q_EMIT replyShown(QString(), QString());
    reply = readReply();
    if (reply.isEmpty()) {
        PauseMS(secondReadMs);
        reply = readReply();
    }
    if (!isStopped())
        Q_EMIT replyShown(reply.isEmpty() ? boardTexts::noResponse : reply, m_fault);
}

QString BoardLink::ask(QString command, qint16 beforeReadMs)
{
    OutputToSbc(command);
    PauseMS(beforeReadMs);
    QString reply;
    InputFromSbc(reply);
    return reply;
}

/// The answer comes from where the last command went: the method may have been changed since. To a
/// command that did not go out there is none: what a receive box holds answers another one.
QString BoardLink::readReply()
{
    if (isStopped() || !m_isSent)
        return {};
    switch (m_sentBy) {
    case Rs232:
        return m_channels.responseText(channels::rs232);
    case TcpIp:
        return m_channels.responseText(channels::tcpIp1);
    case Ieee:
        break;
    }
    try {
        return QString::fromLatin1(onGpib([](GpibControl &control) { return control.read(); }));
    } catch (const PlatformError &error) {
        m_fault = error.description();
        return {};
    }
}

void BoardLink::PauseMS(qint16 ms, const Clock::Condition &endEarly)
{
    m_waits.waitUntil(endEarly, std::max<int>(ms, 0));
}

float BoardLink::readMeter(int address)
{
    return onGpib([&](GpibControl &control) { return ReadMeterValue(control, m_waits, address); });
}

void BoardLink::addressGpib(const QString &connectString)
{
    onGpib([&](GpibControl &control) {
        control.setConnectString(connectString);
        control.open();
    });
}

QString BoardLink::gpibConnectString() const
{
    return m_channels.QBXControl1().connectString();
}

void BoardLink::setGpibConnectString(const QString &text)
{
    m_channels.QBXControl1().setConnectString(text);
}

void BoardLink::stop()
{
    m_waits.close();
    if (m_gpibCalls > 0)
        m_channels.QBXControl1().cancel();
}

bool BoardLink::isSendable(const QString &text)
{
    return std::all_of(text.begin(), text.end(), [](QChar c) { return c.unicode() <= 0xFF; });
}

QString BoardLink::oneLine(const QString &reply)
{
    return QString(reply).remove(u'\r').remove(u'\n');
}

} // namespace corvane
