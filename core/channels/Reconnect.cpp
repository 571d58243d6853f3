// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/channels/Reconnect.h"

#include "core/channels/ChannelSession.h"

namespace corvane {

Reconnect::Reconnect(ChannelSession &session)
    : QObject(&session)
    , m_session(session)
{
    m_tmrTry.setInterval(intervalMs);
    connect(&m_tmrTry, &QTimer::timeout, this, &Reconnect::tmrTry_Timer);
    connect(&session, &ChannelSession::openChanged, this, &Reconnect::openChanged);
    connect(&session, &ChannelSession::closing, this, &Reconnect::stop);
}

void Reconnect::setOn(bool on)
{
    if (std::exchange(m_isOn, on) == on)
        return;
    if (on)
        m_session.setQuiet(m_session.isOpen());
    else
        stop();
    Q_EMIT changed(on);
}

/// The connection is not wanted any more, or nobody shall see to it.
void Reconnect::stop()
{
    m_tmrTry.stop();
    m_tries = 0;
    m_session.setQuiet(false);
    Q_EMIT noted({});
}

void Reconnect::openChanged(bool open)
{
    if (!m_isOn)
        return;
    const QString now = QTime::currentTime().toString();
    if (open) {
        m_session.setQuiet(true);
        if (m_tmrTry.isActive())
            Q_EMIT noted(u"%1: connected again at %2"_s.arg(m_session.caption(), now));
        m_tmrTry.stop();
        m_tries = 0;
    } else if (m_session.isQuiet() && !m_tmrTry.isActive()) { // it was open, and nobody closed it
        m_lostAt = QTime::currentTime();
        Q_EMIT noted(u"%1: connection lost at %2, trying again"_s.arg(m_session.caption(), now));
        m_tmrTry.start();
    }
}

void Reconnect::tmrTry_Timer()
{
    if (m_session.isOpen() || m_session.isConnecting())
        return; // one at a time
    Q_EMIT noted(u"%1: connection lost at %2, trying again (%3)"_s
                     .arg(m_session.caption(), m_lostAt.toString())
                     .arg(++m_tries));
    m_session.reopen();
}

} // namespace corvane
