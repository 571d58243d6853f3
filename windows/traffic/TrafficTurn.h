// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/traffic/TrafficEvent.h"

#include <QElapsedTimer>

namespace corvane {

/// One turn of a work over many events: the window answers between the turns.
class TrafficTurn
{
public:
    TrafficTurn() { m_time.start(); }

    /// True once the turn has lasted long enough; to be asked after each event.
    [[nodiscard]] bool isOver(const TrafficEvent &event)
    {
        m_work += workAnEvent + event.content.size();
        if (m_work < workALook)
            return false;
        m_work = 0;
        return m_time.hasExpired(turnMs);
    }

private:
    static constexpr qint64 turnMs = 8;
    /// What an event costs besides its content, and how often the clock is looked at, both as so
    /// many bytes of content.
    static constexpr qsizetype workAnEvent = 64;
    static constexpr qsizetype workALook = qsizetype{32} << 10;

    QElapsedTimer m_time;
    qsizetype m_work = 0;
};

} // namespace corvane
