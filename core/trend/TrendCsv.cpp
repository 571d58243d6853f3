// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/trend/TrendCsv.h"

#include "core/text/Csv.h"
#include "core/traffic/TrafficEvents.h"
#include "core/trend/TrendSeries.h"

#include <QTimeZone>

#include <charconv>

namespace corvane {

namespace {

constexpr qint64 second = 1'000'000;

/// The wall clock of times that follow each other: its seconds are written out once each.
class WallClock
{
public:
    explicit WallClock(const QDateTime &began)
        : m_began(began.toMSecsSinceEpoch() * 1000)
    {
    }
    [[nodiscard]] QByteArray text(qint64 time)
    {
        const qint64 wall = m_began + time;
        if (const qint64 seconds = wall / second; std::exchange(m_second, seconds) != seconds)
            m_text = QDateTime::fromSecsSinceEpoch(seconds, QTimeZone::utc())
                         .toString(u"yyyy-MM-ddTHH:mm:ss."_s)
                         .toLatin1();
        return m_text + QByteArray::number(wall % second / 1000).rightJustified(3, '0') + 'Z';
    }

private:
    const qint64 m_began;
    qint64 m_second = -1;
    QByteArray m_text;
};

void append(QByteArray &row, double value)
{
    std::array<char, 32> digits; // the shortest that reads back as the same
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value).ptr;
    row.append(digits.data(), end - digits.data());
}

} // namespace

QByteArray trendCsv::text(const TrendSeries &series)
{
    QByteArray rows = QByteArray("Time (s),Wall clock,Channel,Command,Value") + csv::rowEnd.data();
    for (const TrendCurve &curve : series.curves()) {
        const TrendSource &source = curve.source();
        const QByteArray names =
            (u',' + csv::cell(source.place()) + u',' + csv::cell(source.question()) + u',')
                .toUtf8();
        WallClock wall(series.events().began());
        for (qsizetype index = 0; index < curve.size(); ++index) {
            const TrendPoint &point = curve.at(index);
            rows += QByteArray::number(point.time / second) + '.' +
                    QByteArray::number(point.time % second).rightJustified(6, '0') + ',' +
                    wall.text(point.time) + names;
            append(rows, point.value);
            rows += csv::rowEnd.data();
        }
    }
    return csv::file(std::move(rows));
}

} // namespace corvane
