// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QTime>
#include <QTimer>

namespace corvane {

class ChannelSession;

/// Connects a Channel again whose device went away, while it is switched on: once a second, without
/// a message box, until it is back or somebody disconnects. A Channel that never was connected is
/// left alone.
class Reconnect : public QObject
{
    Q_OBJECT

public:
    static constexpr int intervalMs = 1000;

    explicit Reconnect(ChannelSession &session);

    [[nodiscard]] bool isOn() const { return m_isOn; }
    void setOn(bool on);

Q_SIGNALS:
    void changed(bool on);
    /// What it is at, and when the device came back; empty: nothing to be said.
    void noted(const QString &note);

private:
    void openChanged(bool open);
    void stop();
    void tmrTry_Timer();

    ChannelSession &m_session;
    QTimer m_tmrTry;
    bool m_isOn = false;
    QTime m_lostAt;
    int m_tries = 0;
};

} // namespace corvane
