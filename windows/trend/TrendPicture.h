// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QPen>
#include <QPointF>
#include <QString>

#include <functional>
#include <optional>
#include <vector>

class QCPGraph;
class QCPItemTracer;
class QCPLayer;
class QCustomPlot;

namespace corvane {

class TrendSeries;
struct TrendColours;

/// Draws a series on a plot's axes as they are: a line a curve, of which it takes no more points
/// than the pixels show; the axes' names and numbers; and the mark on the point in question. What
/// part is in sight is its owner's.
class TrendPicture
{
public:
    /// In seconds since the recording began.
    struct Times
    {
        double first = 0;
        double last = 0;
    };

    /// Both must outlive the picture.
    TrendPicture(const TrendSeries &series, QCustomPlot &plot);

    /// A line for every curve that the series has by now; none for those that were cleared.
    void takeCurves();
    /// The points of the time that is in sight.
    void takePoints();
    /// The value axis goes as far as the points in sight.
    void fitValues();
    /// How the points in sight are joined.
    void styleLines();
    void labelAxes();

    [[nodiscard]] qsizetype count() const { return std::ssize(m_graphs); }
    void setShown(qsizetype curve, bool shown);
    [[nodiscard]] bool isShown(qsizetype curve) const;
    /// From the first to the last point of the curves, of those shown alone; nothing when there is
    /// none.
    [[nodiscard]] std::optional<Times> times(bool shownOnly) const;

    /// Times are shown as the wall clock had them; else in seconds since the recording began.
    void setWallClock(bool on);
    /// The time axis' number of the recording's begin.
    [[nodiscard]] double origin() const { return m_origin; }

    /// What the curve nearest to this place of the plot has there, which gets the mark; empty:
    /// nothing is near.
    QString markAt(QPointF place);
    /// Paints the mark alone.
    void repaintMark();

    void paintIn(const TrendColours &colours, const QFont &font);
    /// The picture as it stands, with the names of the curves, in the colours last set.
    [[nodiscard]] QByteArray png();
    [[nodiscard]] QByteArray pdf(const QString &title);

private:
    void withNames(const std::function<void()> &draw);
    [[nodiscard]] QString unit() const;
    [[nodiscard]] double rise(const QCPGraph &graph) const;

    const TrendSeries &m_series;
    QCustomPlot &m_plot;
    QCPLayer *m_markLayer;
    QCPItemTracer *m_mark;
    std::vector<QCPGraph *> m_graphs; ///< by curve
    std::function<QPen(qsizetype)> m_line;
    bool m_isWallClock = false;
    double m_origin = 0;
};

} // namespace corvane
