// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/channels/ChannelSession.h"

#include "core/channels/ChannelTexts.h"
#include "core/channels/Module1.h"
#include "core/channels/Reconnect.h"
#include "core/text/Dialogs.h"
#include "core/text/Latin1.h"
#include "core/text/LineEnds.h"
#include "devices/PlatformError.h"
#include "devices/WaitGroup.h"

#include <QScopedValueRollback>

#include <utility>

namespace corvane {

ChannelSession::ChannelSession(int index, Transport &transport, const ChannelContext &context)
    : Timer1(new QTimer(this))
    , TimerTransfer(new QTimer(this))
    , m_context(context)
    , m_traits(channelTraits().at(static_cast<size_t>(index)))
    , m_transport(transport)
    , m_command(channelTexts::idnCommand)
    , m_reconnect(new Reconnect(*this, context.users))
{
    for (QTimer *timer : {Timer1, TimerTransfer})
        timer->setTimerType(Qt::PreciseTimer);
    connect(Timer1, &QTimer::timeout, this, &ChannelSession::Timer1_Timer);
}

void ChannelSession::initialise()
{
    Timer1->start(m_periodMs);
    setLight(Light::Hidden);
    TimerTransfer->stop();
    TimerTransfer->setInterval(transferIntervalMs);
    m_context.module.TransferWaitCount.at(static_cast<size_t>(index())) = 0;
    refreshStatus();
}

void ChannelSession::stopTimers()
{
    Timer1->stop();
    TimerTransfer->stop();
    m_reconnect->stop();
}

// The connection

void ChannelSession::open()
{
    if (!isOpen())
        m_reconnect->stop();
    tryToOpen([this] { openTransport(); });
}

void ChannelSession::reopen()
{
    tryToOpen([this] { reopenTransport(); });
}

void ChannelSession::tryToOpen(const std::function<void()> &openIt)
{
    try {
        openIt();
        if (m_light == Light::Hidden)
            setLight(Light::Dark);
    } catch (const PlatformError &error) {
        tellConnectFault(error.description(), channelTexts::connectError + u"\r\n"_s);
    }
    refreshStatus();
}

void ChannelSession::tellConnectFault(const QString &description, const QString &message)
{
    if (!m_reconnect->isInCharge())
        showMessage(message + description);
    Q_EMIT connectFailed(description);
}

void ChannelSession::close()
{
    Q_EMIT closing();
    try {
        closeTransport();
    } catch (const PlatformError &error) {
        m_context.dialogs.showMessage(
            this, {.text = channelTexts::disconnectError + u"\r\n"_s + error.description(),
                   .title = channelTexts::disconnectErrorTitle});
    }
    refreshStatus();
}

void ChannelSession::refreshStatus()
{
    const QString status = std::exchange(m_status, statusText());
    const QString connection =
        std::exchange(m_connection, isOpen() ? channelTexts::connectedTo.arg(place()) : QString());
    if (m_status != status || m_connection != connection)
        Q_EMIT statusChanged();
    const bool isOpen = !m_connection.isEmpty();
    if (isOpen == !connection.isEmpty())
        return;
    if (isOpen)
        tellFault({});
    Q_EMIT openChanged(isOpen);
}

// Commands

void ChannelSession::setCommand(const QString &command)
{
    if (std::exchange(m_command, command) != command)
        Q_EMIT commandChanged(command);
}

QString ChannelSession::refusal() const
{
    return m_context.users.refusal(index(), ChannelUse::Send);
}

void ChannelSession::send()
{
    if (m_sending)
        return;
    const QScopedValueRollback sending(m_sending, true);
    if (const QString inUse = refusal(); !inUse.isEmpty()) {
        refuseSend(inUse);
        return;
    }
    const QString command = m_command;
    if (const QString refused = latin1::misfit(command); !refused.isEmpty()) {
        refuseSend(channelTexts::notSendable.arg(refused));
        return;
    }
    try {
        transmit(command.toLatin1());
    } catch (const PlatformError &error) {
        exchangeFailed(error, channelTexts::sendError);
    }
}

void ChannelSession::refuseNotConnected()
{
    tellRefusal(m_traits.notConnected);
}

void ChannelSession::refuseSend(const QString &message)
{
    setLooping(false);
    tellRefusal(message);
    if (!m_context.waits.isClosed())
        Q_EMIT sendFailed();
}

/// The Channel's run stands still from now on.
void ChannelSession::tellRefusal(const QString &message)
{
    TimerTransfer->stop();
    if (!m_context.waits.isClosed())
        showMessage(message);
}

void ChannelSession::showMessage(const QString &text)
{
    m_context.dialogs.showMessage(this, text);
}

void ChannelSession::exchangeFailed(const PlatformError &error, const QString &message)
{
    forgetExchange();
    tellFault(error.description());
    refuseSend(message);
}

/// A full history drops its oldest command first, and one that is there already stays where it is.
void ChannelSession::remember()
{
    if (m_history.size() >= historyLimit)
        m_history.removeFirst();
    if (!m_history.contains(m_command))
        m_history.append(m_command);
    Q_EMIT historyChanged();
}

// The reply

void ChannelSession::setResponse(const QByteArray &bytes)
{
    m_response.assign(bytes);
    Q_EMIT responseReplaced();
}

void ChannelSession::clearResponse()
{
    m_endsLine = false;
    setResponse({});
    setNote({});
}

void ChannelSession::beginReply()
{
    clearResponse();
    Q_EMIT commandSent(m_command);
    remember();
}

void ChannelSession::appendReply(QByteArrayView arrival, const ResponseText::Cleaning &cleaning,
                                 const QString &note)
{
    m_endsLine = !arrival.isEmpty() && lineEnds::isOne(arrival.back());
    const qsizetype keep = m_response.append(arrival, cleaning);
    Q_EMIT responseAppended(keep);
    setNote(m_response.dropped() > 0 ? channelTexts::oldestDropped.arg(caption()) : note);
    deliverReply(keep);
}

void ChannelSession::deliverReply(qsizetype keep)
{
    Module1 &module = m_context.module;
    module.ResponseReady = true;
    module.TransferWaitCount.at(static_cast<size_t>(index())) = 0;
    Q_EMIT replied(keep, QByteArrayView(m_response.bytes()).sliced(keep - m_response.dropped()));
}

void ChannelSession::tellFault(const QString &fault)
{
    Q_EMIT faultChanged(fault);
}

void ChannelSession::setNote(const QString &note)
{
    if (std::exchange(m_note, note) != note)
        Q_EMIT noteChanged(note);
}

// The loop

void ChannelSession::setLooping(bool on)
{
    const bool may = on && !m_context.module.transferRunning() && refusal().isEmpty();
    m_context.users.claim(index(), ChannelUse::Loop, may);
    if (!may)
        dimLight();
    Q_EMIT loopingChanged(may);
}

void ChannelSession::loopOnce()
{
    if (!isLooping())
        return;
    setLight(m_light == Light::Bright ? Light::Dark : Light::Bright);
    send();
}

void ChannelSession::setPeriod(int ms)
{
    if (ms < minPeriodMs || ms > maxPeriodMs)
        return;
    m_periodMs = ms;
    Q_EMIT periodChanged(ms);
    Timer1->setInterval(ms);
    if (m_traits.listFollowsLoop)
        TimerTransfer->setInterval(ms); // restarts it when it runs
}

void ChannelSession::setLogged(bool on)
{
    if (std::exchange(m_isLogged, on) != on)
        Q_EMIT loggedChanged(on);
}

void ChannelSession::setLight(Light light)
{
    if (std::exchange(m_light, light) != light)
        Q_EMIT lightChanged();
}

void ChannelSession::dimLight()
{
    if (m_light == Light::Bright)
        setLight(Light::Dark);
}

void ChannelSession::refuseEntry(const QString &entry, const QString &value) const
{
    if (!value.isEmpty())
        throw PlatformError(u"%1 has no %2 entry"_s.arg(caption(), entry));
}

void ChannelSession::Timer1_Timer()
{
    try {
        poll();
    } catch (const PlatformError &error) {
        exchangeFailed(error, channelTexts::readError + u"\r\n"_s + error.description());
    }
}

} // namespace corvane
