// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/channels/ChannelTraits.h"
#include "core/traffic/TrafficEvents.h"
#include "tests/support/Testing.h"

#include <deque>

namespace corvane {

/// Events as a test tells them, 10 ms apart.
class ScriptedEvents final : public TrafficEvents
{
public:
    void add(int channel, TrafficKind kind, QByteArrayView content)
    {
        pass(10'000);
        m_events.push_back({m_now, channel, kind, content.toByteArray()});
    }
    void sent(int channel, QByteArrayView bytes) { add(channel, TrafficKind::Sent, bytes); }
    void received(int channel, QByteArrayView bytes) { add(channel, TrafficKind::Received, bytes); }
    void addressed(QByteArrayView text) { add(channels::ieee488, TrafficKind::Addressed, text); }
    void pass(qint64 us) { m_now += us; }
    void dropBefore(quint64 number)
    {
        for (; m_first < number; ++m_first)
            m_events.pop_front();
    }

    [[nodiscard]] const QDateTime &began() const override { return m_began; }
    [[nodiscard]] qint64 now() const override { return m_now; }
    [[nodiscard]] quint64 first() const override { return m_first; }
    [[nodiscard]] quint64 end() const override { return m_first + m_events.size(); }
    [[nodiscard]] TrafficEvent at(quint64 number) const override
    {
        const Kept &kept = m_events.at(number - m_first);
        return {kept.time, kept.channel, kept.kind, kept.content};
    }

private:
    struct Kept
    {
        qint64 time;
        int channel;
        TrafficKind kind;
        QByteArray content;
    };

    const QDateTime m_began{{2026, 1, 2}, {3, 4, 5}, QTimeZone::utc()};
    qint64 m_now = 0;
    quint64 m_first = 0;
    std::deque<Kept> m_events;
};

} // namespace corvane
