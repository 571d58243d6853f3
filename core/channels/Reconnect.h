// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QTime>
#include <QTimer>

namespace corvane {

class ChannelSession;
class ChannelUsers;

/// Connects a Channel again whose device went away, while it is switched on: once a second, at the
/// place that it was connected to, without a message box, until it is back or its user connects or
/// disconnects. Not while the board window exchanges over it: that must not go on over another
/// connection than it began on.
class Reconnect : public QObject
{
    Q_OBJECT

public:
    static constexpr int intervalMs = 1000;

    Reconnect(ChannelSession &session, const ChannelUsers &users);

    [[nodiscard]] bool isOn() const { return m_isOn; }
    /// On is for a connection that is lost already as well; off gives it up.
    void setOn(bool on);
    /// It sees to the connection: faults of that are shown in no box.
    [[nodiscard]] bool isInCharge() const { return m_isOn && m_isWanted; }
    /// The user sees to the connection, or nobody does any more.
    void stop();

public Q_SLOTS:
    void tmrTry_Timer();

Q_SIGNALS:
    void changed(bool on);
    /// What it is at, and when the device came back; empty: nothing to be said.
    void noted(const QString &note);

private:
    void openChanged(bool open);
    void begin();
    void giveUp();
    void say(const QString &what);
    [[nodiscard]] QString trying() const;
    [[nodiscard]] bool isLost() const;

    ChannelSession &m_session;
    const ChannelUsers &m_users;
    QTimer m_tmrTry;
    bool m_isOn = false;
    bool m_isWanted = false; ///< it was connected, and nobody has disconnected it
    QTime m_lostAt;
    int m_tries = 0;
};

} // namespace corvane
