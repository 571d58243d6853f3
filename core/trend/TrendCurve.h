// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <array>
#include <deque>
#include <vector>

namespace corvane {

/// Which numbers make one curve.
struct TrendSource
{
    int channel = 0;
    QString address; ///< of the device on a bus; empty: there is one device
    QString command;
    int field = 0; ///< 0: the leading number of the replies, else the place in a list of them

    bool operator==(const TrendSource &) const = default;
    /// "RS-485 05"
    [[nodiscard]] QString place() const;
    /// "MEAS? [2]"
    [[nodiscard]] QString question() const;
};
size_t qHash(const TrendSource &source, size_t seed = 0);

struct TrendPoint
{
    qint64 time = 0; ///< µs since the recording began
    double value = 0;

    bool operator==(const TrendPoint &) const = default;
};

/// The numbers that one command was answered with: the newest of them as points, and what is to be
/// known of all. A point takes about 17 bytes.
class TrendCurve
{
public:
    /// Points kept at most: beyond them the oldest make room.
    static constexpr qsizetype mostPoints = 1'000'000;

    explicit TrendCurve(TrendSource source);

    /// Adds a number; its time is not before the last one's.
    void add(const TrendPoint &point, const QString &unit);
    /// The next number does not follow the last one: its Channel was closed at this time.
    void interrupt(qint64 time);
    /// Drops the oldest points, a block of them. Returns how many those were.
    qsizetype dropOldest();

    [[nodiscard]] const TrendSource &source() const { return m_source; }
    /// What stands behind every number; empty when that is not the same for all.
    [[nodiscard]] QString unit() const { return m_hasOneUnit ? m_unit : QString(); }

    // Of all numbers, also those whose points have made room

    [[nodiscard]] qint64 count() const { return m_count; }
    [[nodiscard]] double lowest() const { return m_lowest; }
    [[nodiscard]] double highest() const { return m_highest; }
    [[nodiscard]] double mean() const { return m_mean; }

    // The points that are kept

    [[nodiscard]] qsizetype size() const { return m_size; }
    [[nodiscard]] const TrendPoint &at(qsizetype index) const;
    [[nodiscard]] const TrendPoint &first() const { return at(0); }
    [[nodiscard]] const TrendPoint &last() const { return at(m_size - 1); }
    /// The point whose time is nearest; there must be one.
    [[nodiscard]] const TrendPoint &nearest(qint64 time) const;
    /// True when the Channel was closed between the times of two points.
    [[nodiscard]] bool isInterrupted(qint64 from, qint64 to) const;
    /// What a picture from one time to another needs whose columns are as many pixels: the lowest
    /// and the highest point of each column, and the points next to the picture on either side. Far
    /// fewer points are looked at than there are.
    [[nodiscard]] std::vector<TrendPoint> reduced(qint64 from, qint64 to, int columns) const;

private:
    static constexpr qsizetype blockSize = 64;
    /// All but the last one are full.
    struct Block
    {
        std::array<TrendPoint, blockSize> points;
        quint8 lowest = 0; ///< which of the points
        quint8 highest = 0;
    };

    [[nodiscard]] const Block &block(qsizetype index) const
    {
        return m_blocks[static_cast<size_t>(index / blockSize)];
    }
    /// The index of the first point at the time or after it.
    [[nodiscard]] qsizetype from(qint64 time) const;
    void addStatistics(double value);

    TrendSource m_source;
    QString m_unit;
    bool m_hasOneUnit = true;
    qint64 m_count = 0;
    double m_lowest = 0;
    double m_highest = 0;
    double m_mean = 0;
    qsizetype m_size = 0;
    std::deque<Block> m_blocks;
    std::deque<qint64> m_interruptions; ///< times, at most one between two points that are kept
};

} // namespace corvane
