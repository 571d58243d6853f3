// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/trend/TrendPicture.h"

#include "core/traffic/TrafficEvents.h"
#include "core/trend/TrendSeries.h"
#include "windows/trend/Plotting.h"
#include "windows/trend/TrendColours.h"

#include <QBuffer>
#include <QPdfWriter>

#include <cmath>
#include <limits>

namespace corvane {

namespace {

constexpr double second = 1e6; // of the events' µs
constexpr double nearPixels = 40;
/// What an axis can hold.
constexpr double largest = 1e200;
/// So far apart are points that get a dot each.
constexpr int dotPixels = 12;
constexpr double pointsAPixel = 0.75;
constexpr int namesARow = 3;
constexpr auto dots = QCPScatterStyle::ssDisc;
/// A line that goes up and down more than so many widths of the picture is dense.
constexpr double denseWidths = 5;

double toSeconds(qint64 time)
{
    return static_cast<double>(time) / second;
}

qint64 toTime(double seconds)
{
    return static_cast<qint64>(std::clamp(seconds * second, -1e18, 1e18));
}

/// A span that grows with what is put in.
struct Span
{
    double lowest = std::numeric_limits<double>::max();
    double highest = std::numeric_limits<double>::lowest();

    void add(double value)
    {
        lowest = std::min(lowest, value);
        highest = std::max(highest, value);
    }
    [[nodiscard]] bool isEmpty() const { return highest < lowest; }
};

/// With some room above and below; around a single value too.
QCPRange withMargin(const Span &span)
{
    const double size = std::max(std::abs(span.lowest), std::abs(span.highest));
    const double width = span.highest - span.lowest;
    const double aroundOne = size == 0 ? 1 : size * 0.02;
    const double margin = width > size * 1e-12 ? width * 0.06 : aroundOne;
    return {span.lowest - margin, span.highest + margin};
}

QDateTime wallClock(double seconds)
{
    return QDateTime::fromMSecsSinceEpoch(static_cast<qint64>(seconds * 1000));
}

/// "HH:mm:ss" and more of it, as what is in sight asks for.
QString clockFormat(const QCPRange &sight)
{
    const QString time = sight.size() < 10 ? u"HH:mm:ss.zzz"_s : u"HH:mm:ss"_s;
    const bool isOneDay = wallClock(sight.lower).date() == wallClock(sight.upper).date();
    return isOneDay ? time : u"yyyy-MM-dd\n"_s + time;
}

} // namespace

TrendPicture::TrendPicture(const TrendSeries &series, QCustomPlot &plot)
    : m_series(series)
    , m_plot(plot)
    , m_mark(new QCPItemTracer(&plot))
{
    // A stroke a pair of points: one stroke with smooth edges for all costs twenty times as much.
    m_plot.setPlottingHint(QCP::phFastPolylines);
    m_plot.axisRect()->setupFullAxesBox();
    for (QCPAxis *frame : {m_plot.xAxis2, m_plot.yAxis2}) {
        frame->setTicks(false);
        frame->setTickLabels(false);
    }
    m_plot.yAxis->setNumberFormat(u"g"_s);
    // A layer of its own, so that the mark moves without the curves being drawn again.
    m_plot.addLayer(u"mark"_s);
    m_markLayer = m_plot.layer(u"mark"_s);
    m_markLayer->setMode(QCPLayer::lmBuffered);
    m_mark->setLayer(m_markLayer);
    m_mark->setStyle(QCPItemTracer::tsCircle);
    m_mark->setSize(9);
    m_mark->setVisible(false);
    m_plot.legend->setVisible(false);
    m_plot.legend->setFillOrder(QCPLegend::foColumnsFirst);
    m_plot.legend->setWrap(namesARow);
    m_plot.legend->setBorderPen(Qt::NoPen);
    setWallClock(false);
    paintIn(TrendColours::paper(), m_plot.font());
}

void TrendPicture::takeCurves()
{
    const auto count = m_series.curves().size();
    if (m_graphs.size() > count) {
        m_plot.clearGraphs();
        m_graphs.clear();
        m_mark->setVisible(false);
    }
    while (m_graphs.size() < count) {
        const TrendSource &source = m_series.curves()[m_graphs.size()].source();
        QCPGraph *graph = m_plot.addGraph();
        graph->setAdaptiveSampling(false); // its points are reduced already
        graph->setName(source.place() + u"  "_s + source.question());
        m_graphs.push_back(graph);
    }
}

void TrendPicture::takePoints()
{
    const int columns = std::max(m_plot.axisRect()->width(), 100);
    const QCPRange range = m_plot.xAxis->range();
    for (size_t curve = 0; curve < m_graphs.size(); ++curve) {
        QVector<QCPGraphData> drawn;
        if (m_graphs[curve]->visible()) {
            const auto points = m_series.curves()[curve].reduced(
                toTime(range.lower - m_origin), toTime(range.upper - m_origin), columns);
            drawn.reserve(std::ssize(points));
            qint64 before = points.empty() ? 0 : points.front().time;
            for (const TrendPoint &point : points) {
                const double time = m_origin + toSeconds(point.time);
                if (m_series.curves()[curve].isInterrupted(before, point.time))
                    drawn.append({time, std::nan("")}); // a gap
                drawn.append({time, std::abs(point.value) < largest ? point.value : std::nan("")});
                before = point.time;
            }
        }
        // Where they are few, each is to be seen.
        m_graphs[curve]->setScatterStyle(
            drawn.size() * dotPixels < columns ? QCPScatterStyle(dots, 5) : QCPScatterStyle());
        m_graphs[curve]->data()->set(drawn, true);
    }
}

void TrendPicture::fitValues()
{
    Span values;
    const QCPRange range = m_plot.xAxis->range();
    for (const QCPGraph *graph : m_graphs) {
        for (const QCPGraphData &each : *graph->data()) {
            if (!std::isnan(each.value) && range.contains(each.key))
                values.add(each.value);
        }
    }
    if (!values.isEmpty())
        m_plot.yAxis->setRange(withMargin(values));
}

/// How far a line goes up and down within the axis, in pixels.
double TrendPicture::rise(const QCPGraph &graph) const
{
    const QCPRange values = m_plot.yAxis->range();
    double all = 0;
    double before = std::nan("");
    for (const QCPGraphData &each : *graph.data()) {
        const double value = std::clamp(each.value, values.lower, values.upper);
        if (const double step = std::abs(value - before); !std::isnan(step))
            all += step;
        before = value;
    }
    return all / values.size() * m_plot.axisRect()->height();
}

/// A dense line has no dashes: they would hide its peaks and cost most of the paint.
void TrendPicture::styleLines()
{
    for (qsizetype curve = 0; curve < count(); ++curve) {
        QCPGraph &graph = *m_graphs[static_cast<size_t>(curve)];
        QPen line = m_line(curve);
        if (rise(graph) > denseWidths * m_plot.axisRect()->width())
            line.setStyle(Qt::SolidLine);
        graph.setPen(line);
    }
}

void TrendPicture::labelAxes()
{
    const QString unit = this->unit();
    m_plot.yAxis->setLabel(unit.isEmpty() ? u"Value"_s : u"Value (%1)"_s.arg(unit));
    const QCPRange values = m_plot.yAxis->range();
    const double size = std::max(std::abs(values.lower), std::abs(values.upper));
    // As many digits as tell neighbouring numbers of the axis apart.
    m_plot.yAxis->setNumberPrecision(
        std::clamp(static_cast<int>(std::log10(size / values.size())) + 3, 6, 15));
    if (m_isWallClock)
        qSharedPointerCast<QCPAxisTickerDateTime>(m_plot.xAxis->ticker())
            ->setDateTimeFormat(clockFormat(m_plot.xAxis->range()));
}

/// That of all shown curves; empty when they have not all the same.
QString TrendPicture::unit() const
{
    QStringList units;
    for (size_t curve = 0; curve < m_graphs.size(); ++curve) {
        if (m_graphs[curve]->visible())
            units += m_series.curves()[curve].unit();
    }
    units.removeDuplicates();
    return units.size() == 1 ? units.front() : QString();
}

void TrendPicture::setShown(qsizetype curve, bool shown)
{
    takeCurves();
    if (curve < 0 || curve >= count())
        return;
    m_graphs[static_cast<size_t>(curve)]->setVisible(shown);
    m_mark->setVisible(false);
}

bool TrendPicture::isShown(qsizetype curve) const
{
    return curve < count() && m_graphs[static_cast<size_t>(curve)]->visible();
}

std::optional<TrendPicture::Times> TrendPicture::times(bool shownOnly) const
{
    Span span;
    for (size_t curve = 0; curve < m_graphs.size(); ++curve) {
        if (shownOnly && !m_graphs[curve]->visible())
            continue;
        span.add(toSeconds(m_series.curves()[curve].first().time));
        span.add(toSeconds(m_series.curves()[curve].last().time));
    }
    return span.isEmpty() ? std::nullopt : std::optional<Times>({span.lowest, span.highest});
}

void TrendPicture::setWallClock(bool on)
{
    const QCPRange range = m_plot.xAxis->range();
    const double before = m_origin;
    const auto began = static_cast<double>(m_series.events().began().toMSecsSinceEpoch());
    m_isWallClock = on;
    m_origin = on ? began / 1000 : 0;
    m_plot.xAxis->setTicker(on ? QSharedPointer<QCPAxisTicker>(new QCPAxisTickerDateTime)
                               : QSharedPointer<QCPAxisTicker>(new QCPAxisTicker));
    m_plot.xAxis->setLabel(on ? u"Wall clock"_s : u"Time (s)"_s);
    m_plot.xAxis->setRange(range.lower - before + m_origin, range.upper - before + m_origin);
    m_mark->setVisible(false);
}

QString TrendPicture::markAt(QPointF place)
{
    m_mark->setVisible(false);
    if (!m_plot.axisRect()->rect().contains(place.toPoint()))
        return {};
    double best = nearPixels;
    QString text;
    const qint64 time = toTime(m_plot.xAxis->pixelToCoord(place.x()) - m_origin);
    for (size_t curve = 0; curve < m_graphs.size(); ++curve) {
        if (!m_graphs[curve]->visible())
            continue;
        const TrendCurve &each = m_series.curves()[curve];
        const TrendPoint &point = each.nearest(time);
        const double key = m_origin + toSeconds(point.time);
        const double distance = std::hypot(m_plot.xAxis->coordToPixel(key) - place.x(),
                                           m_plot.yAxis->coordToPixel(point.value) - place.y());
        if (distance >= best)
            continue;
        best = distance;
        m_mark->position->setCoords(key, point.value);
        m_mark->setPen(QPen(m_graphs[curve]->pen().color(), 2));
        m_mark->setVisible(true);
        const QDateTime began = m_series.events().began().toLocalTime();
        const QDateTime wall = began.addMSecs(point.time / 1000);
        const QString clock =
            wall.date() == began.date() ? u"HH:mm:ss.zzz"_s : u"yyyy-MM-dd HH:mm:ss.zzz"_s;
        const QString number = QString::number(point.value, 'g', QLocale::FloatingPointShortest);
        text = u"%1  %2  =  %3  at %4 s (%5)"_s.arg(each.source().place(), each.source().question(),
                                                    u"%1 %2"_s.arg(number, each.unit()).trimmed(),
                                                    QString::number(toSeconds(point.time), 'f', 3),
                                                    wall.toString(clock));
    }
    return text;
}

void TrendPicture::repaintMark()
{
    m_markLayer->replot();
}

void TrendPicture::paintIn(const TrendColours &colours, const QFont &font)
{
    m_line = [colours](qsizetype curve) { return colours.line(curve); };
    m_plot.setBackground(colours.ground);
    for (QCPAxis *axis : {m_plot.xAxis, m_plot.yAxis, m_plot.xAxis2, m_plot.yAxis2}) {
        axis->setBasePen(colours.ink);
        axis->setTickPen(colours.ink);
        axis->setSubTickPen(colours.ink);
        axis->setLabelColor(colours.ink);
        axis->setTickLabelColor(colours.ink);
        axis->setTickLabelFont(font);
        axis->setLabelFont(font);
        axis->grid()->setPen(colours.grid);
        axis->grid()->setZeroLinePen(colours.grid);
    }
    m_plot.legend->setBrush(colours.ground);
    m_plot.legend->setTextColor(colours.ink);
    m_plot.legend->setFont(font);
    m_plot.selectionRect()->setPen(QPen(colours.ink, 0, Qt::DashLine));
    styleLines();
}

void TrendPicture::withNames(const std::function<void()> &draw)
{
    m_mark->setVisible(false);
    for (QCPGraph *graph : m_graphs) {
        if (graph->visible())
            graph->addToLegend();
        else
            graph->removeFromLegend();
    }
    // Below the curves, where it hides none of them, and afterwards back.
    QCPLayoutGrid *layout = m_plot.plotLayout();
    layout->addElement(1, 0, m_plot.legend);
    layout->setRowStretchFactor(1, 0.001);
    m_plot.legend->setVisible(true);
    draw();
    m_plot.legend->setVisible(false);
    m_plot.axisRect()->insetLayout()->addElement(m_plot.legend, Qt::AlignTop | Qt::AlignRight);
    layout->simplify();
}

QByteArray TrendPicture::png()
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    withNames([this, &buffer] { m_plot.toPixmap(0, 0, 2).save(&buffer, "PNG"); });
    return bytes;
}

QByteArray TrendPicture::pdf(const QString &title)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    withNames([this, &buffer, &title] {
        QPdfWriter writer(&buffer);
        writer.setTitle(title);
        writer.setResolution(96);
        const QPageSize size(QSizeF(m_plot.size()) * pointsAPixel, QPageSize::Point, {},
                             QPageSize::ExactMatch);
        writer.setPageLayout({size, QPageLayout::Portrait, {}});
        QCPPainter painter(&writer);
        painter.setMode(QCPPainter::pmVectorized);
        painter.setMode(QCPPainter::pmNoCaching);
        m_plot.toPainter(&painter, m_plot.width(), m_plot.height());
    });
    return bytes;
}

} // namespace corvane
