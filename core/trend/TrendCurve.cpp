// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/trend/TrendCurve.h"

#include "core/channels/ChannelTraits.h"

#include <QHash>

#include <algorithm>

namespace corvane {

namespace {

/// The lowest and the highest of some points that follow each other.
class Extremes
{
public:
    explicit Extremes(const TrendPoint &point)
        : m_lowest(point)
        , m_highest(point)
    {
    }
    void add(const TrendPoint &point)
    {
        if (point.value < m_lowest.value)
            m_lowest = point;
        if (point.value > m_highest.value)
            m_highest = point;
    }
    /// In the order of their times; once when they are one.
    void appendTo(std::vector<TrendPoint> &points) const
    {
        const bool isRising = m_lowest.time <= m_highest.time;
        points.push_back(isRising ? m_lowest : m_highest);
        if (m_lowest != m_highest)
            points.push_back(isRising ? m_highest : m_lowest);
    }

private:
    TrendPoint m_lowest;
    TrendPoint m_highest;
};

} // namespace

QString TrendSource::place() const
{
    return address.isEmpty() ? channelCaption(channel) : channelCaption(channel) + u' ' + address;
}

QString TrendSource::question() const
{
    return field == 0 ? command : u"%1 [%2]"_s.arg(command, QString::number(field));
}

size_t qHash(const TrendSource &source, size_t seed)
{
    return qHashMulti(seed, source.channel, source.address, source.command, source.field);
}

TrendCurve::TrendCurve(TrendSource source)
    : m_source(std::move(source))
{
}

void TrendCurve::add(const TrendPoint &point, const QString &unit)
{
    if (m_count == 0)
        m_unit = unit;
    m_hasOneUnit = m_hasOneUnit && unit == m_unit;
    addStatistics(point.value);
    if (m_size == mostPoints)
        dropOldest();
    const qsizetype place = m_size % blockSize;
    if (place == 0)
        m_blocks.emplace_back();
    Block &last = m_blocks.back();
    last.points[static_cast<size_t>(place)] = point;
    if (point.value < last.points[last.lowest].value)
        last.lowest = static_cast<quint8>(place);
    if (point.value > last.points[last.highest].value)
        last.highest = static_cast<quint8>(place);
    ++m_size;
}

/// The mean moves by the new number's share, in halves: the difference of two doubles may be
/// beyond what one holds.
void TrendCurve::addStatistics(double value)
{
    ++m_count;
    m_mean += (value / 2 - m_mean / 2) / static_cast<double>(m_count) * 2;
    m_lowest = m_count == 1 ? value : std::min(m_lowest, value);
    m_highest = m_count == 1 ? value : std::max(m_highest, value);
}

qsizetype TrendCurve::dropOldest()
{
    const qsizetype dropped = std::min(m_size, blockSize);
    if (!m_blocks.empty())
        m_blocks.pop_front();
    m_size -= dropped;
    while (!m_interruptions.empty() && (m_size == 0 || m_interruptions.front() < first().time))
        m_interruptions.pop_front();
    return dropped;
}

void TrendCurve::interrupt(qint64 time)
{
    if (m_size > 0 && (m_interruptions.empty() || m_interruptions.back() < last().time))
        m_interruptions.push_back(std::max(time, last().time));
}

bool TrendCurve::isInterrupted(qint64 from, qint64 to) const
{
    const auto next = std::ranges::lower_bound(m_interruptions, from);
    return next != m_interruptions.end() && *next < to;
}

const TrendPoint &TrendCurve::at(qsizetype index) const
{
    return block(index).points[static_cast<size_t>(index % blockSize)];
}

qsizetype TrendCurve::from(qint64 time) const
{
    // The last block that begins before the time: the others are before or after it as a whole.
    const auto after = std::ranges::partition_point(
        m_blocks, [time](const Block &each) { return each.points.front().time < time; });
    if (after == m_blocks.begin())
        return 0;
    const auto begin = (after - m_blocks.begin() - 1) * blockSize;
    const auto size = std::min(blockSize, m_size - begin);
    const auto points = std::prev(after)->points.begin();
    return begin +
           (std::partition_point(points, points + size,
                                 [time](const TrendPoint &point) { return point.time < time; }) -
            points);
}

const TrendPoint &TrendCurve::nearest(qint64 time) const
{
    const qsizetype after = std::min(from(time), m_size - 1);
    const qsizetype before = std::max<qsizetype>(after - 1, 0);
    return time - at(before).time < at(after).time - time ? at(before) : at(after);
}

std::vector<TrendPoint> TrendCurve::reduced(qint64 fromTime, qint64 toTime, int columns) const
{
    std::vector<TrendPoint> points;
    const qsizetype begin = std::max<qsizetype>(from(fromTime) - 1, 0);
    const qsizetype end = std::min(from(toTime) + 1, m_size);
    if (end - begin <= 2 * qsizetype{columns}) {
        for (qsizetype index = begin; index < end; ++index)
            points.push_back(at(index));
        return points;
    }
    points.reserve(2 * static_cast<size_t>(columns) + 6);
    points.push_back(at(begin));
    // Columns lie at multiples of their width, so that a picture that moves on does not flicker.
    const qint64 width = std::max<qint64>((toTime - fromTime) / columns, 1);
    for (qsizetype index = begin + 1; index < end - 1;) {
        Extremes extremes(at(index));
        const qint64 columnEnd = (at(index).time / width + 1) * width;
        while (index < end - 1 && at(index).time < columnEnd) {
            const Block &whole = block(index);
            if (index % blockSize == 0 && index + blockSize < end &&
                whole.points.back().time < columnEnd) {
                extremes.add(whole.points[whole.lowest]);
                extremes.add(whole.points[whole.highest]);
                index += blockSize;
            } else {
                extremes.add(at(index++));
            }
        }
        extremes.appendTo(points);
    }
    points.push_back(at(end - 1));
    return points;
}

} // namespace corvane
