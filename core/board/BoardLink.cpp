// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/board/BoardLink.h"

#include "core/board/BoardTexts.h"
#include "core/channels/ChannelSet.h"
#include "core/text/Latin1.h"
#include "core/text/LineEnds.h"
#include "devices/GpibControl.h"
#include "devices/PlatformError.h"
#include "devices/SerialPort.h"
#include "devices/TcpClient.h"

#include <QScopeGuard>

#include <algorithm>

namespace corvane {

namespace {

constexpr qint16 beforeSendMs = 25;
constexpr qint16 afterSendMs = 100;
constexpr qint16 secondReadMs = 200;
/// An answer that has not come this long after its command does not come any more.
constexpr qint16 lateAnswerMs = 1500;
/// On the bus it waits to be read for as long as the device takes.
constexpr qint32 lateOnBusMs = 15'000;

/// An answer is a line; what a device that never stops has sent beyond is none.
QString answerText(const QByteArray &bytes)
{
    constexpr qsizetype longest = 65536;
    return QString::fromLatin1(bytes.first(std::min(bytes.size(), longest)));
}

} // namespace

BoardLink::BoardLink(ChannelSet &channels, WaitGroup &waits, QObject *parent)
    : QObject(parent)
    , m_channels(channels)
    , m_waits(waits)
{
}

void BoardLink::setMethod(int method)
{
    if (method < Rs232 || method > TcpIp)
        return;
    m_method = static_cast<Method>(method);
    Q_EMIT channelsChanged();
}

int BoardLink::channel() const
{
    return channelOf(m_method);
}

int BoardLink::channelOf(Method method)
{
    return channels::rs232 + method;
}

ChannelSession &BoardLink::sentOver() const
{
    return m_channels.at(channelOf(m_sentBy));
}

GpibControl &BoardLink::control() const
{
    return m_channels.gpib().control();
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
    return operation(control());
}

void BoardLink::OutputToSbc(QString &command, const Clock::Condition &isCancelled)
{
    const auto isEnded = [&] { return isStopped() || isCancelled(); };
    m_fault.clear();
    m_isSent = false;
    m_droppedLate = false;
    m_mayBeLate = false;
    m_isCut = false;
    Q_EMIT commandShown(QString());
    Q_EMIT replyShown(QString(), QString());
    PauseMS(beforeSendMs, isCancelled);
    if (isEnded())
        return;
    Q_EMIT commandShown(QString(command).remove(u'\r'));
    if (!command.contains(u'\r'))
        command += u'\r';
    m_sentBy = m_method;
    Q_EMIT channelsChanged();
    try {
        dropLateAnswers(isEnded);
        if (isEnded()) {
            Q_EMIT commandShown(QString());
            return;
        }
        send(command);
        m_isSent = true;
        Q_EMIT channelsChanged(); // the method may have been changed while it waited
        if (command.contains(u'?'))
            expectLateAnswer(); // until it is read
    } catch (const PlatformError &error) {
        fail(Exchange::Send, error.description());
    }
    PauseMS(afterSendMs);
}

void BoardLink::fail(Exchange half, const QString &cause)
{
    m_fault = cause;
    Q_EMIT replyShown(boardTexts::noResponse, cause);
    Q_EMIT exchangeFailed(channelOf(m_sentBy), half, cause);
}

/// Where the last command went, as far as an answer can come from there.
QString BoardLink::route() const
{
    return m_sentBy == Ieee ? gpibConnectString() : QString::number(m_sentBy);
}

void BoardLink::expectLateAnswer()
{
    Unanswered &route = m_unanswered[this->route()];
    if (route.count++ == 0)
        route.sinceMs = m_waits.clock().MS_TIMER();
}

void BoardLink::settle(const QString &route)
{
    if (const auto found = m_unanswered.find(route);
        found != m_unanswered.end() && --found->count <= 0)
        m_unanswered.erase(found);
}

bool BoardLink::isLateOn(const QString &route) const
{
    const auto found = m_unanswered.find(route);
    return found != m_unanswered.end() &&
           static_cast<qint32>(m_waits.clock().MS_TIMER() - found->sinceMs) < lateOnBusMs;
}

/// On a receive box it is enough to wait: the box is cleared before the command goes. A device on
/// the bus keeps its answer until it is read.
void BoardLink::dropLateAnswers(const Clock::Condition &isEnded)
{
    const auto found = m_unanswered.find(route());
    if (found == m_unanswered.end())
        return;
    const Unanswered unanswered = *found;
    if (m_sentBy == Ieee) {
        const auto read = [this] {
            return onGpib([](GpibControl &control) { return control.read(); });
        };
        const bool wasLate = isLateOn(route());
        for (int i = 0; i < unanswered.count && !isEnded() && !read().isEmpty(); ++i) {
            m_droppedLate = true;
            settle(route());
        }
        if (!wasLate && !isEnded())
            m_unanswered.remove(route()); // it does not come any more
        m_mayBeLate = isLateOn(route());
    } else {
        m_unanswered.erase(found);
        const auto waited = static_cast<qint32>(m_waits.clock().MS_TIMER() - unanswered.sinceMs);
        if (waited < lateAnswerMs)
            PauseMS(static_cast<qint16>(lateAnswerMs - std::max(waited, 0)), isEnded);
        m_droppedLate = !sentOver().response().bytes().isEmpty();
        if (isEnded())
            m_unanswered.insert(route(), unanswered); // what has not come yet may still come
    }
}

void BoardLink::send(const QString &text)
{
    if (!latin1::fits(text))
        throw PlatformError(boardTexts::notSendable);
    ChannelSession &session = sentOver();
    if (const QString inUse = m_channels.users().refusal(session.index(), ChannelUse::Board);
        !inUse.isEmpty())
        throw PlatformError(inUse);
    const QByteArray bytes = text.toLatin1();
    switch (m_sentBy) {
    case Rs232: {
        SerialPort &port = m_channels.serial(session.index()).port();
        port.input();
        session.clearResponse();
        port.output(bytes);
        break;
    }
    case Ieee:
        onGpib([&](GpibControl &control) { control.write(bytes); });
        break;
    case TcpIp: {
        TcpSession &tcp = m_channels.tcp(session.index());
        tcp.client().getData();
        tcp.clearResponse();
        tcp.forgetArrivals();
        tcp.client().sendData(bytes);
        break;
    }
    }
}

void BoardLink::InputFromSbc(QString &reply)
{
    reply.clear();
    if (isStopped())
        return;
    Q_EMIT replyShown(QString(), QString());
    reply = readReply();
    if (reply.isEmpty()) {
        PauseMS(secondReadMs);
        reply = readReply();
    }
    if (!reply.isEmpty()) {
        settle(route());
        if (m_sentBy == Ieee)
            passLateAnswers(reply);
        else
            awaitRest(reply);
    }
    if (isStopped())
        return;
    QString note = m_fault;
    if (note.isEmpty() && m_isCut)
        note = boardTexts::cutAnswer;
    else if (note.isEmpty() && m_droppedLate)
        note = boardTexts::lateAnswer;
    Q_EMIT replyShown(reply.isEmpty() ? boardTexts::noResponse : reply, note);
}

void BoardLink::passLateAnswers(QString &reply)
{
    while (m_mayBeLate && m_unanswered.contains(route())) {
        const QString next = readReply();
        if (next.isEmpty())
            return;
        settle(route());
        reply = next;
        m_droppedLate = true;
    }
}

bool BoardLink::isCut() const
{
    return m_endsLines.contains(route()) && !sentOver().endsLine();
}

void BoardLink::awaitRest(QString &reply)
{
    if (sentOver().endsLine())
        m_endsLines.insert(route());
    if (!isCut())
        return;
    PauseMS(lateAnswerMs, [this] { return !isCut() || !sentOver().isOpen(); });
    m_isCut = isCut();
    reply = readReply();
}

QString BoardLink::ask(QString command, qint16 beforeReadMs, const Clock::Condition &isCancelled)
{
    OutputToSbc(command, isCancelled);
    if (!m_isSent && isCancelled())
        return {};
    if (m_isSent && !command.contains(u'?'))
        expectLateAnswer(); // the other command set asks without a mark
    PauseMS(beforeReadMs);
    QString reply;
    InputFromSbc(reply);
    return reply;
}

/// What the box holds. That of TCP/IP-1 drops the pieces before the newest.
QByteArray BoardLink::received() const
{
    const QByteArray &shown = sentOver().response().bytes();
    if (m_sentBy != TcpIp)
        return shown;
    QByteArray whole = m_channels.tcp(channelOf(m_sentBy)).arrivals();
    whole.replace("\r\n", "");
    return whole.endsWith(shown) ? whole : shown;
}

/// The answer comes from where the last command went: the method may have been changed since. To a
/// command that did not go out there is none: what a receive box holds answers another one.
QString BoardLink::readReply()
{
    if (isStopped() || !m_isSent)
        return {};
    QString reply;
    try {
        reply = answerText(m_sentBy == Ieee
                               ? onGpib([](GpibControl &control) { return control.read(); })
                               : received());
    } catch (const PlatformError &error) {
        fail(Exchange::Read, error.description());
    }
    return lineEnds::removed(reply).isEmpty() ? QString() : reply;
}

void BoardLink::PauseMS(qint16 ms, const Clock::Condition &endEarly)
{
    m_waits.waitUntil(endEarly, std::max<int>(ms, 0));
}

QString BoardLink::readMeter(int address, const Clock::Condition &isCancelled)
{
    const QString route = u"GPIB0::%1"_s.arg(address);
    const bool isLate = isLateOn(route);
    const auto earlier = isLate ? EarlierReading::Unanswered : EarlierReading::Answered;
    if (!isLate) // however this reading ends
        m_unanswered[route] = {.count = 1, .sinceMs = m_waits.clock().MS_TIMER()};
    const QByteArray reply = onGpib([&](GpibControl &control) {
        return askMeter(control, m_waits, address, earlier, isCancelled);
    });
    if (!reply.isEmpty() && !isLate)
        m_unanswered.remove(route);
    return answerText(reply);
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
    return control().connectString();
}

void BoardLink::setGpibConnectString(const QString &text)
{
    control().setConnectString(text);
}

void BoardLink::stop()
{
    m_waits.close();
    if (m_gpibCalls > 0)
        control().cancel();
}

void BoardLink::forgetAnswer()
{
    m_isSent = false;
    Q_EMIT channelsChanged();
}

} // namespace corvane
