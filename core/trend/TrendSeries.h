// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/channels/ChannelTraits.h"
#include "core/trend/TrendCurve.h"

#include <QByteArray>
#include <QHash>
#include <QSet>

namespace corvane {

class TrafficEvents;
struct TrafficEvent;

/// The numbers in the replies of all Channels, as curves: follows what is recorded, from the oldest
/// event on that is still kept.
///
/// A reply is what is received on a Channel after a command, until the next command there. Its
/// numbers are taken when its first line has ended, when the next command follows, or when nothing
/// more has come for a while; what is received before any command is nobody's reply. Of a command
/// whose replies end their lines half a line is never taken: neither the half before the next
/// command nor the one behind it.
class TrendSeries
{
public:
    /// Curves at most; the numbers of further commands are counted only.
    static constexpr qsizetype mostCurves = 64;
    /// Points of all curves together at most (70 MB): beyond them the oldest of the longest curve
    /// make room.
    static constexpr qsizetype mostPoints = 4'000'000;
    /// A reply without a line end is taken after this silence.
    static constexpr qint64 silenceUs = 1'000'000;

    /// The events must outlive the series.
    explicit TrendSeries(const TrafficEvents &events);

    /// Takes over what has happened since the last call, a bounded amount of it. Returns true when
    /// more waits.
    bool follow();
    /// Forgets all curves and what has happened up to now.
    void clear();

    /// In the order of their first numbers; a curve keeps its place until all are cleared.
    [[nodiscard]] const std::deque<TrendCurve> &curves() const { return m_curves; }
    /// Moves on with every number.
    [[nodiscard]] quint64 version() const { return m_version; }
    /// What is to be known of the curves: events or numbers that are not in them; empty: nothing.
    [[nodiscard]] QString note() const;
    [[nodiscard]] const TrafficEvents &events() const { return m_events; }

private:
    struct Exchange
    {
        QString busAddress; ///< where the bus sends what follows
        TrendSource source;
        bool isAsked = false; ///< there is a command, and its reply has not been taken
        QByteArray reply;     ///< its beginning
        qint64 replyTime = 0;
        qint64 lastArrival = 0;
        bool isCut = false; ///< a line goes on that began before the command
    };

    void take(const TrafficEvent &event);
    void beginReply(Exchange &exchange, const TrafficEvent &sent) const;
    [[nodiscard]] bool isInLine(const Exchange &exchange) const;
    void addToReply(Exchange &exchange, const TrafficEvent &received);
    void endReply(Exchange &exchange);
    void takeSilent();
    void addPoint(const TrendSource &source, const TrendPoint &point, const QString &unit);
    void makeRoom();

    const TrafficEvents &m_events;
    quint64 m_next = 0; ///< the number of the event to take next
    std::array<Exchange, channelCount> m_exchanges;
    std::deque<TrendCurve> m_curves;
    QHash<TrendSource, qsizetype> m_places; ///< in m_curves
    QSet<TrendSource> m_lineEnders; ///< questions whose last reply had a line end; their field is 0
    qsizetype m_points = 0;         ///< of all curves
    bool m_dropped = false;         ///< points have made room
    quint64 m_missed = 0;           ///< events that were gone before they were read
    quint64 m_leftOut = 0;          ///< numbers that have no curve
    quint64 m_version = 0;
};

} // namespace corvane
