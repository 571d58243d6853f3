#include "board/BoardSession.h"

#include "board/BoardChannels.h"
#include "board/BoardLink.h"
#include "board/BoardTexts.h"

#include <QScopeGuard>
#include <QWidget>

namespace corvane {

BoardSession::Operation::Operation(BoardSession &session)
    : m_session(&session)
{
    session.m_running = true;
    Q_EMIT session.runningChanged(true);
}

BoardSession::Operation::Operation(Operation &&other) noexcept
    : m_session(std::exchange(other.m_session, nullptr))
{
}

BoardSession::Operation::~Operation()
{
    if (!m_session)
        return;
    m_session->m_running = false;
    m_session->m_granted = false;
    m_session->m_link.forgetAnswer();
    if (!m_session->m_shut)
        m_session->m_link.resume();
    Q_EMIT m_session->runningChanged(false);
}

BoardSession::BoardSession(BoardLink &link, BoardChannels &channels, Dialogs &dialogs,
                           QWidget *window)
    : m_link(link)
    , m_channels(channels)
    , m_dialogs(dialogs)
    , m_window(window)
{
}

std::optional<BoardSession::Operation> BoardSession::begin(Uses uses)
{
    if (m_running || m_shut)
        return std::nullopt;
    m_uses = uses;
    std::optional<Operation> operation(std::in_place, *this);
    if (!mayUse(m_link.channel()))
        return std::nullopt;
    if (uses == Uses::BoardAndMeter && !mayUse(channels::ieee488))
        return std::nullopt;
    m_granted = true;
    return operation;
}

bool BoardSession::usesChannel(int channel) const
{
    return m_granted && (m_link.usesChannel(channel) ||
                         (m_uses == Uses::BoardAndMeter && channel == channels::ieee488));
}

bool BoardSession::mayUse(int channel)
{
    const ChannelUse use = m_channels.channelUse(channel);
    if (use == ChannelUse::Free)
        return true;
    say(boardTexts::channelInUse(channel, use));
    return false;
}

bool BoardSession::isStopped() const
{
    return m_link.isStopped();
}

void BoardSession::interrupt()
{
    if (!m_running)
        return;
    m_link.stop();
    if (m_openBoxes > 0)
        m_dialogs.dismissAll();
}

void BoardSession::shut()
{
    m_shut = true;
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
    if (BoardLink::isSendable(text))
        return true;
    say(boardTexts::notSendable);
    return false;
}

} // namespace corvane
