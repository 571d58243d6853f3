// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/channels/Reconnect.h"

#include "core/channels/ChannelSession.h"

namespace corvane {

Reconnect::Reconnect(ChannelSession &session, const ChannelUsers &users)
    : QObject(&session)
    , m_session(session)
    , m_users(users)
{
    m_tmrTry.setInterval(intervalMs);
    connect(&m_tmrTry, &QTimer::timeout, this, &Reconnect::tmrTry_Timer);
    connect(&session, &ChannelSession::openChanged, this, &Reconnect::openChanged);
    connect(&session, &ChannelSession::closing, this, &Reconnect::stop);
    connect(&session, &ChannelSession::connectFailed, this, [this](const QString &reason) {
        if (m_tmrTry.isActive())
            say(trying() + u": "_s + reason);
        else if (m_isOn)
            Q_EMIT noted(u"%1: %2; tried again by itself only after it has been connected"_s.arg(
                m_session.caption(), reason));
    });
}

void Reconnect::setOn(bool on)
{
    if (std::exchange(m_isOn, on) == on)
        return;
    if (on && isLost())
        begin();
    else if (!on && m_tmrTry.isActive())
        giveUp();
    Q_EMIT changed(on);
}

void Reconnect::giveUp()
{
    if (m_session.isConnecting())
        m_session.close();
    m_tmrTry.stop();
    Q_EMIT noted({});
}

bool Reconnect::isLost() const
{
    return m_isWanted && !m_session.isOpen();
}

void Reconnect::stop()
{
    m_tmrTry.stop();
    m_isWanted = false;
    Q_EMIT noted({});
}

void Reconnect::openChanged(bool open)
{
    if (open) {
        if (m_tmrTry.isActive())
            say(u"connected again at "_s + QTime::currentTime().toString());
        else
            Q_EMIT noted({});
        m_tmrTry.stop();
        m_isWanted = true;
    } else if (m_isWanted && !m_tmrTry.isActive()) {
        m_lostAt = QTime::currentTime();
        if (m_isOn)
            begin();
    }
}

void Reconnect::begin()
{
    m_tries = 0;
    m_tmrTry.start();
    say(trying());
}

void Reconnect::tmrTry_Timer()
{
    if (m_session.isOpen())
        return;
    if (m_session.isConnecting()) { // one at a time
        say(trying() + u": no answer yet"_s);
        return;
    }
    if (m_users.isUsed(m_session.index(), ChannelUse::Board)) {
        say(u"tried again when the VXM250E window has finished"_s);
        return;
    }
    ++m_tries;
    say(trying());
    m_session.reopen();
}

QString Reconnect::trying() const
{
    const QString again = u"trying again"_s;
    return m_tries == 0 ? again : again + u" (%1)"_s.arg(m_tries);
}

void Reconnect::say(const QString &what)
{
    Q_EMIT noted(
        u"%1: connection lost at %2, %3"_s.arg(m_session.caption(), m_lostAt.toString(), what));
}

} // namespace corvane
