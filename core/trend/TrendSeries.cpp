// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/trend/TrendSeries.h"

#include "core/text/LineEnds.h"
#include "core/traffic/TrafficEvents.h"
#include "core/trend/ReplyValues.h"

#include <algorithm>

namespace corvane {

namespace {

/// As much of a reply is looked at for numbers.
constexpr qsizetype longestReply = 4096;
/// Some milliseconds of work.
constexpr quint64 eventsACall = 10'000;
constexpr qsizetype mostLineEnders = 1'000;

} // namespace

TrendSeries::TrendSeries(const TrafficEvents &events)
    : m_events(events)
    , m_next(events.first())
{
}

bool TrendSeries::follow()
{
    if (const quint64 first = m_events.first(); m_next < first) {
        m_missed += first - std::exchange(m_next, first);
        for (Exchange &exchange : m_exchanges)
            exchange.isAsked = false; // whose reply follows is not known
    }
    const quint64 end = std::min(m_events.end(), m_next + eventsACall);
    while (m_next < end)
        take(m_events.at(m_next++));
    if (m_next < m_events.end())
        return true;
    takeSilent();
    return false;
}

void TrendSeries::clear()
{
    m_next = m_events.end();
    for (Exchange &exchange : m_exchanges)
        exchange.isAsked = false;
    m_curves.clear();
    m_places.clear();
    m_lineEnders.clear();
    m_points = 0;
    m_dropped = false;
    m_missed = 0;
    m_leftOut = 0;
    ++m_version;
}

void TrendSeries::take(const TrafficEvent &event)
{
    if (!isChannel(event.channel))
        return;
    Exchange &exchange = m_exchanges.at(static_cast<size_t>(event.channel));
    switch (event.kind) {
    case TrafficKind::Sent:
        exchange.isCut = isInLine(exchange);
        if (exchange.isCut)
            m_lineEnders.remove(exchange.source); // perhaps it is one no more
        else
            endReply(exchange);
        beginReply(exchange, event);
        break;
    case TrafficKind::Received:
        addToReply(exchange, event);
        break;
    case TrafficKind::Addressed:
        exchange.busAddress = event.text();
        break;
    case TrafficKind::Connected:
    case TrafficKind::Disconnected:
        if (!isInLine(exchange))
            endReply(exchange);
        exchange.isAsked = false;
        m_lineEnders.clear(); // another device may follow
        for (TrendCurve &curve : m_curves) {
            if (curve.source().channel == event.channel)
                curve.interrupt(event.time);
        }
        break;
    case TrafficKind::Fault:
    case TrafficKind::TimedOut:
        break;
    }
}

void TrendSeries::beginReply(Exchange &exchange, const TrafficEvent &sent) const
{
    auto [address, text] = replyValues::command(sent.channel, sent.content);
    exchange.isAsked = !text.isEmpty();
    exchange.source = {sent.channel, address.isEmpty() ? exchange.busAddress : address, text};
    exchange.reply.clear();
}

/// Half a number is no number: what is known to come in lines is taken by whole ones.
bool TrendSeries::isInLine(const Exchange &exchange) const
{
    return exchange.isAsked && !exchange.reply.trimmed().isEmpty() &&
           m_lineEnders.contains(exchange.source);
}

void TrendSeries::addToReply(Exchange &exchange, const TrafficEvent &received)
{
    if (!exchange.isAsked)
        return;
    QByteArrayView content = received.content;
    if (exchange.isCut) {
        const auto end = std::ranges::find_if(content, lineEnds::isOne);
        exchange.isCut = end == content.end();
        content = content.sliced(end - content.begin());
    }
    if (content.isEmpty())
        return;
    if (exchange.reply.isEmpty())
        exchange.replyTime = received.time;
    exchange.lastArrival = received.time;
    exchange.reply += content.first(std::min(content.size(), longestReply - exchange.reply.size()));
    const bool isComplete = replyValues::isComplete(exchange.reply);
    if (isComplete && m_lineEnders.size() < mostLineEnders)
        m_lineEnders.insert(exchange.source);
    if (isComplete || exchange.reply.size() == longestReply)
        endReply(exchange);
}

void TrendSeries::endReply(Exchange &exchange)
{
    if (!std::exchange(exchange.isAsked, false))
        return;
    for (const replyValues::Value &each : replyValues::values(exchange.reply)) {
        exchange.source.field = each.field;
        addPoint(exchange.source, {exchange.replyTime, each.value}, each.unit);
    }
}

void TrendSeries::takeSilent()
{
    const qint64 now = m_events.now();
    for (Exchange &exchange : m_exchanges) {
        if (exchange.isAsked && !exchange.reply.isEmpty() && !isInLine(exchange) &&
            now - exchange.lastArrival >= silenceUs)
            endReply(exchange);
    }
}

void TrendSeries::addPoint(const TrendSource &source, const TrendPoint &point, const QString &unit)
{
    auto place = m_places.constFind(source);
    if (place == m_places.constEnd()) {
        if (std::ssize(m_curves) == mostCurves) {
            ++m_leftOut;
            return;
        }
        place = m_places.insert(source, std::ssize(m_curves));
        m_curves.emplace_back(source);
    }
    TrendCurve &curve = m_curves[static_cast<size_t>(*place)];
    const qsizetype before = curve.size();
    curve.add(point, unit);
    m_points += curve.size() - before;
    m_dropped = m_dropped || curve.size() <= before;
    ++m_version;
    if (m_points > mostPoints)
        makeRoom();
}

void TrendSeries::makeRoom()
{
    m_points -= std::ranges::max_element(m_curves, {}, &TrendCurve::size)->dropOldest();
    m_dropped = true;
}

QString TrendSeries::note() const
{
    QStringList notes;
    if (m_missed > 0)
        notes += u"%1 events had been dropped before they were read."_s.arg(m_missed);
    if (m_dropped)
        notes += u"The oldest points have made room for new ones."_s;
    if (m_leftOut > 0)
        notes += u"%1 numbers are left out: there are %2 curves already; Clear makes room."_s
                     .arg(m_leftOut)
                     .arg(mostCurves);
    return notes.join(u' ');
}

} // namespace corvane
