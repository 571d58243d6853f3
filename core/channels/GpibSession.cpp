// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/channels/GpibSession.h"

#include "core/channels/ChannelTexts.h"
#include "core/channels/Module1.h"
#include "core/text/LineEnds.h"
#include "core/text/Numbers.h"
#include "devices/GpibControl.h"
#include "devices/PlatformError.h"
#include "devices/WaitGroup.h"

#include <QScopeGuard>

#include <utility>

namespace corvane {

namespace {

constexpr double timeoutLimitMs = 60000;
const QString separator = u"::"_s;

} // namespace

GpibSession::GpibSession(GpibControl &control, const ChannelContext &context)
    : ChannelSession(channels::ieee488, control, context)
    , m_control(control)
{
    connect(&m_control, &GpibControl::adapterForgotten, this, [this](int board) {
        m_configured = m_configured && board != m_board;
        refreshStatus();
    });
}

void GpibSession::applyEntries()
{
    setEntries(m_boardEntry, m_addressEntry);
    GpibResponse.clear();
}

void GpibSession::setEntries(const QString &board, const QString &address)
{
    m_boardEntry = board;
    m_addressEntry = address;
    m_entriesWait = !refusal().isEmpty();
    if (!m_entriesWait)
        addressControl();
    Q_EMIT entriesChanged();
}

/// The entries that were changed while somebody else used the control.
void GpibSession::applyWaitingEntries()
{
    if (m_entriesWait)
        setEntries(m_boardEntry, m_addressEntry);
}

void GpibSession::addressControl()
{
    m_connectString = m_boardEntry.trimmed() + separator + m_addressEntry.trimmed();
    m_control.setConnectString(m_connectString);
    refreshStatus();
}

void GpibSession::showFound(const QString &board, const QString &address, const QByteArray &reply)
{
    m_boardEntry = board;
    m_addressEntry = address;
    addressControl();
    Q_EMIT entriesChanged();
    clearResponse(); // no reply stands under an address that it did not come from
    setResponse(reply);
}

void GpibSession::enterTimeout(const QString &text)
{
    const auto ms = numbers::numericValue(text);
    if (ms && *ms > 0 && *ms < timeoutLimitMs)
        m_control.setTimeout(std::max(1, static_cast<int>(*ms)));
}

void GpibSession::fillIn(const ChannelEntries &entries)
{
    refuseEntry(u"port"_s, entries.port);
    refuseEntry(u"host"_s, entries.host);
    refuseEntry(u"settings"_s, entries.settings);
    if (entries.address.isEmpty())
        return;
    const bool namesBoard = entries.address.contains(separator);
    (void)GpibAddress::parse(namesBoard ? entries.address
                                        : m_boardEntry + separator + entries.address);
    setEntries(namesBoard ? entries.address.section(separator, 0, 0) : m_boardEntry,
               entries.address.section(separator, namesBoard ? 1 : 0));
}

void GpibSession::openTransport()
{
    if (const QString inUse = refusal(); !inUse.isEmpty())
        throw PlatformError(inUse);
    applyWaitingEntries();
    openControl();
    const QString connectString = m_control.connectString();
    m_boardEntry = connectString.section(separator, 0, 0);
    m_addressEntry = connectString.section(separator, 1);
    addressControl();
    Q_EMIT entriesChanged();
    tellFault({});
}

/// A controller that is off takes seconds to be given up.
void GpibSession::openControl()
{
    m_configured = false;
    Q_EMIT progressChanged(channelTexts::connectingGpib.arg(m_control.connectString()));
    const auto ended = qScopeGuard([this] { Q_EMIT progressChanged({}); });
    m_control.open();
    m_configured = true;
    m_board = GpibAddress::parse(m_control.connectString()).board;
    m_adapter = m_control.adapterDescription(m_board);
}

void GpibSession::closeTransport()
{
    Q_EMIT disconnected();
    if (!m_context.waits.isClosed())
        tellFault(channelTexts::nothingToDisconnect);
}

void GpibSession::transmit(const QByteArray &command)
{
    applyWaitingEntries();
    GpibReadDone = false;
    setReadPending(true);
    beginReply();
    m_control.write(command + '\r');
    GpibResponse.clear();
    TimerTransfer->stop();
}

void GpibSession::setReadPending(bool pending)
{
    GpibReadPending = pending;
    m_context.users.claim(index(), ChannelUse::Reply, pending);
}

void GpibSession::poll()
{
    if (m_control.isBusy() || !refusal().isEmpty())
        return; // somebody else's exchange; the next tick goes on
    applyWaitingEntries();
    if (!GpibReadPending) {
        loopOnce();
        return;
    }
    GpibResponse = m_control.read();
    if (m_context.waits.isClosed())
        return;
    GpibReadDone = true;
    handleResponse();
    dimLight();
}

void GpibSession::handleResponse()
{
    setReadPending(false);
    if (GpibResponse.isEmpty()) {
        const Module1 &module = m_context.module;
        const bool isLoop = !module.transferRunning() && module.GpibLoopEnabled;
        const QString &text = isLoop ? channelTexts::loopTimedOut : channelTexts::timedOut;
        setResponse(text.arg(m_control.timeout()).toLatin1());
        m_timedOutAt = m_connectString;
        if (isLoop)
            setLooping(false);
        else
            Q_EMIT timedOut();
        return;
    }
    tellFault({});
    setResponse(lineEnds::removed(GpibResponse));
    const QString incomplete = m_control.incomplete();
    const bool mayBeLate = std::exchange(m_timedOutAt, {}) == m_connectString;
    QString note = mayBeLate ? channelTexts::mayBeLate.arg(caption()) : QString();
    if (!incomplete.isEmpty())
        note = caption() + u": "_s + incomplete;
    setNote(note);
    deliverReply(0);
}

void GpibSession::setLooping(bool on)
{
    ChannelSession::setLooping(on);
    m_context.module.GpibLoopEnabled = isLooping();
}

QString GpibSession::place() const
{
    if (!isOpen())
        return m_connectString;
    try {
        if (GpibAddress::parse(m_connectString).board == m_board)
            return channelTexts::placeThrough.arg(m_connectString, m_adapter);
    } catch (const PlatformError &) {
        // no address, said when it is used
    }
    return channelTexts::placeElsewhere.arg(m_board).arg(m_connectString);
}

} // namespace corvane
