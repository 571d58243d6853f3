// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/board/BoardSession.h"

#include "core/board/BoardTexts.h"
#include "core/channels/ChannelSet.h"
#include "core/channels/ChannelTexts.h"
#include "core/text/Latin1.h"

#include <QScopeGuard>

namespace corvane {

namespace {

/// What the Channel's own exchange says when it fails.
QString faultText(const ChannelSession &session, Exchange half, const QString &cause)
{
    if (session.isClosed())
        return session.traits().notConnected;
    return (half == Exchange::Send ? channelTexts::sendError : channelTexts::readError) +
           u"\r\n"_s + cause;
}

} // namespace

BoardSession::BoardSession(BoardLink &link, ChannelSet &channels, Dialogs &dialogs, QObject *window)
    : m_link(link)
    , m_channels(channels)
    , m_dialogs(dialogs)
    , m_window(window)
{
    connect(&link, &BoardLink::exchangeFailed, this, &BoardSession::fail);
    connect(&link, &BoardLink::channelsChanged, this, &BoardSession::claimChannels);
    for (const ChannelSession *each : channels.all()) {
        connect(each, &ChannelSession::openChanged, this,
                [this, channel = each->index()](bool open) {
                    if (!open)
                        channelClosed(channel);
                });
    }
    // Disconnect leaves the GPIB control configured, so its Channel never closes; it ends an
    // operation all the same.
    connect(&channels.gpib(), &GpibSession::disconnected, this,
            [this] { channelClosed(channels::ieee488); });
}

BoardSession::Operation BoardSession::begin(Uses uses)
{
    if (m_running || m_shut)
        return nullptr;
    m_uses = uses;
    m_running = true;
    Q_EMIT runningChanged(true);
    Operation operation(this);
    if (!mayUse(m_link.channel()))
        return nullptr;
    if (uses == Uses::BoardAndMeter && !mayUse(channels::ieee488))
        return nullptr;
    m_granted = true;
    claimChannels();
    return operation;
}

/// While an operation runs, whichever Channels its commands and answers go over are its own.
void BoardSession::claimChannels()
{
    for (int channel = 0; channel < channelCount; ++channel)
        m_channels.users().claim(channel, ChannelUse::Board, usesChannel(channel));
}

bool BoardSession::usesChannel(int channel) const
{
    return m_granted && (m_link.usesChannel(channel) ||
                         (m_uses == Uses::BoardAndMeter && channel == channels::ieee488));
}

/// The Channels are the main window's again while the box tells why; another operation waits.
void BoardSession::endOperation()
{
    m_granted = false;
    m_link.forgetAnswer(); // releases the Channels
    if (!m_shut)
        m_link.resume();
    if (const QString fault = std::exchange(m_fault, {}); !fault.isEmpty())
        say(fault);
    if (!m_shut)
        m_link.resume();
    m_running = false;
    Q_EMIT runningChanged(false);
}

void BoardSession::channelClosed(int channel)
{
    if (usesChannel(channel))
        fail(channel, Exchange::Send, boardTexts::channelClosed);
}

/// The first fault counts: what follows is its consequence.
void BoardSession::fail(int channel, Exchange half, const QString &cause)
{
    if (!m_granted || isStopped())
        return;
    m_fault = faultText(m_channels.at(channel), half, cause);
    stop();
}

bool BoardSession::mayUse(int channel)
{
    const QString inUse = m_channels.users().refusal(channel, ChannelUse::Board);
    if (!inUse.isEmpty())
        say(inUse);
    return inUse.isEmpty();
}

bool BoardSession::isStopped() const
{
    return m_link.isStopped();
}

void BoardSession::interrupt()
{
    if (m_running)
        stop();
}

void BoardSession::shut()
{
    m_shut = true;
    stop();
}

void BoardSession::stop()
{
    m_link.stop();
    if (m_openBoxes > 0)
        m_dialogs.dismissAll();
}

Dialogs::Answer BoardSession::ask(const Dialogs::MessageBox &box)
{
    if (isStopped())
        return Dialogs::Answer::Dismissed;
    ++m_openBoxes;
    const auto closed = qScopeGuard([this] { --m_openBoxes; });
    return m_dialogs.showMessage(m_window, box);
}

bool BoardSession::checkSendable(const QString &text)
{
    if (latin1::fits(text))
        return true;
    say(boardTexts::notSendable);
    return false;
}

} // namespace corvane
