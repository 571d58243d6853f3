// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "windows/trend/TrendPicture.h"

#include <QWidget>

namespace corvane {

/// The picture of a series and what is in sight of it: time to the right, values upwards. A paint
/// takes the time of its pixels, however many points there are.
///
/// Mouse: the wheel zooms the time, with Ctrl the values; dragging moves; the right button, or the
/// left one with Shift, draws a frame to zoom to; a double click shows all. Keys: the arrows move,
/// + and - zoom, with Ctrl the values; Home shows all, End follows the newest.
class TrendPlot : public QWidget
{
    Q_OBJECT

public:
    /// The series must outlive the plot.
    explicit TrendPlot(const TrendSeries &series, QWidget *parent = nullptr);
    ~TrendPlot() override;

    /// Takes over what the series has got since; paints only when that is anything.
    void refresh();
    /// Paints now.
    void repaintCurves();

    void setShown(qsizetype curve, bool shown);
    [[nodiscard]] bool isShown(qsizetype curve) const { return m_picture->isShown(curve); }
    /// The line of a curve as it is drawn.
    [[nodiscard]] QPen line(qsizetype curve) const;

    /// The newest stays in sight.
    void setFollowing(bool following);
    [[nodiscard]] bool isFollowing() const { return m_isFollowing; }
    /// The value axis goes as far as the values in sight.
    void setFitting(bool fitting);
    [[nodiscard]] bool isFitting() const { return m_isFitting; }
    /// Times are shown as the wall clock had them; else in seconds since the recording began.
    void setWallClock(bool on);
    /// All points are in sight, and the values fit; it follows no more.
    void showAll();

    struct Sight
    {
        double begin = 0; ///< seconds since the recording began
        double end = 0;
        double lowest = 0;
        double highest = 0;
    };
    [[nodiscard]] Sight sight() const;
    /// Above 1: more is in sight.
    void zoomTime(double factor);
    void zoomValues(double factor);
    /// By a share of what is in sight.
    void moveTime(double share);
    void moveValues(double share);
    /// The pointer is at a place of the plot.
    void point(QPointF place);

    /// The picture as it stands, on white, with the names of the curves.
    [[nodiscard]] QByteArray png();
    [[nodiscard]] QByteArray pdf(const QString &title);

Q_SIGNALS:
    void followingChanged(bool following);
    void fittingChanged(bool fitting);
    /// What is under the pointer; empty: nothing.
    void pointed(const QString &text);

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    void connectPlot();
    /// Before each paint.
    void prepare();
    void keepSpans();
    void placeNewest();
    void usePalette();
    void pressed(QMouseEvent *event);
    void turned(QWheelEvent *event);
    void zoom(bool values, double factor, double anchor);
    /// Draws on white, and is as before afterwards.
    [[nodiscard]] QByteArray onPaper(const std::function<QByteArray()> &draw);

    QCustomPlot *m_plot;
    std::unique_ptr<TrendPicture> m_picture;
    const TrendSeries &m_series;
    quint64 m_painted = 0; ///< the series' version
    bool m_isFollowing = true;
    bool m_isFitting = true;
    bool m_isPlacing = false; ///< the axes are moved by the plot, not by the user's mouse
    double m_span;            ///< seconds in sight while following, at most
};

} // namespace corvane
