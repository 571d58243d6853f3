// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/trend/TrendPlot.h"

#include "core/trend/TrendSeries.h"
#include "windows/trend/Plotting.h"
#include "windows/trend/TrendColours.h"
#include "windows/widgets/Naming.h"

#include <QScopedValueRollback>
#include <QStyleOption>

#include <cmath>

namespace corvane {

namespace {

/// Seconds in sight while following: at the start at most, and at least.
constexpr double firstSpan = 300;
constexpr double leastSpan = 1;
/// As much of them stays free behind the newest.
constexpr double headroom = 0.02;
constexpr double zoomStep = 0.8;
constexpr double moveStep = 0.1;
constexpr int focusRoom = 3; // for the frame of the focus
/// In sight, so that a double still tells neighbouring pixels apart.
constexpr double leastTime = 1e-5; // s
constexpr double mostTime = 1e9;
constexpr double mostValues = 1e200;
constexpr double leastShare = 1e-12; ///< of the largest value in sight

void keepSpan(QCPAxis &axis, double least, double most)
{
    const QCPRange range = axis.range();
    const double span = std::clamp(range.size(), least, most);
    if (span != range.size())
        axis.setRange(range.center(), span, Qt::AlignCenter);
}

} // namespace

TrendPlot::TrendPlot(const TrendSeries &series, QWidget *parent)
    : QWidget(parent)
    , m_plot(new QCustomPlot(this))
    , m_picture(std::make_unique<TrendPicture>(series, *m_plot))
    , m_series(series)
    , m_span(firstSpan)
{
    m_plot->setFocusPolicy(Qt::NoFocus);
    m_plot->setInteractions(QCP::iRangeDrag);
    m_plot->setNoAntialiasingOnDrag(true);
    m_plot->axisRect()->setRangeDrag(Qt::Horizontal);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(focusRoom, focusRoom, focusRoom, focusRoom);
    layout->addWidget(m_plot);
    connectPlot();
    setFocusPolicy(Qt::StrongFocus);
    setMinimumSize(300, 160);
    setAccessibleDescription(
        u"Arrow keys move, plus and minus zoom, with Ctrl the values; Home shows all, End follows "
        "the newest."_s);
    usePalette();
}

TrendPlot::~TrendPlot() = default;

void TrendPlot::connectPlot()
{
    using Plot = QCustomPlot;
    connect(m_plot, &Plot::beforeReplot, this, &TrendPlot::prepare);
    connect(m_plot, &Plot::mousePress, this, &TrendPlot::pressed);
    connect(m_plot, &Plot::mouseWheel, this, &TrendPlot::turned);
    connect(m_plot, &Plot::mouseDoubleClick, this, &TrendPlot::showAll);
    connect(m_plot, &Plot::mouseMove, this,
            [this](const QMouseEvent *event) { point(event->position()); });
    // What the user drags or frames stays as it is then.
    connect(m_plot->xAxis, qOverload<const QCPRange &>(&QCPAxis::rangeChanged), this,
            [this](const QCPRange &range) {
                if (m_isPlacing)
                    return;
                m_span = range.size();
                setFollowing(false);
            });
    connect(m_plot->yAxis, qOverload<const QCPRange &>(&QCPAxis::rangeChanged), this, [this] {
        if (!m_isPlacing)
            setFitting(false);
    });
}

void TrendPlot::refresh()
{
    if (m_painted != m_series.version())
        repaintCurves();
}

void TrendPlot::repaintCurves()
{
    m_plot->replot();
}

void TrendPlot::prepare()
{
    const QScopedValueRollback placing(m_isPlacing, true);
    m_painted = m_series.version();
    m_picture->takeCurves();
    keepSpans();
    if (m_isFollowing)
        placeNewest();
    m_picture->takePoints();
    if (m_isFitting)
        m_picture->fitValues();
    m_picture->styleLines();
    m_picture->labelAxes();
}

void TrendPlot::keepSpans()
{
    m_span = std::clamp(m_span, leastTime, mostTime);
    keepSpan(*m_plot->xAxis, leastTime, mostTime);
    const QCPRange values = m_plot->yAxis->range();
    const double largest = std::max(std::abs(values.lower), std::abs(values.upper));
    keepSpan(*m_plot->yAxis, std::max(largest * leastShare, 1 / mostValues), mostValues);
}

/// From the first point on until the span is full, then on with the newest.
void TrendPlot::placeNewest()
{
    const auto times = m_picture->times(true);
    if (!times)
        return;
    const double most = m_span * (1 - headroom);
    const double begin = std::max(times->first, times->last - most);
    const double width = std::max(times->last - begin, std::min(leastSpan, most));
    m_plot->xAxis->setRange(m_picture->origin() + begin,
                            m_picture->origin() + begin + width / (1 - headroom));
}

void TrendPlot::setShown(qsizetype curve, bool shown)
{
    m_picture->setShown(curve, shown);
    repaintCurves();
}

QPen TrendPlot::line(qsizetype curve) const
{
    return TrendColours::of(palette()).line(curve);
}

void TrendPlot::setFollowing(bool following)
{
    if (std::exchange(m_isFollowing, following) == following)
        return;
    if (following)
        repaintCurves();
    Q_EMIT followingChanged(following);
}

void TrendPlot::setFitting(bool fitting)
{
    if (std::exchange(m_isFitting, fitting) == fitting)
        return;
    // What fits by itself is not dragged up and down.
    m_plot->axisRect()->setRangeDrag(fitting ? Qt::Horizontal : Qt::Horizontal | Qt::Vertical);
    if (fitting)
        repaintCurves();
    Q_EMIT fittingChanged(fitting);
}

void TrendPlot::setWallClock(bool on)
{
    const QScopedValueRollback placing(m_isPlacing, true);
    m_picture->setWallClock(on);
    repaintCurves();
}

void TrendPlot::showAll()
{
    const auto times = m_picture->times(false);
    if (!times)
        return;
    setFollowing(false);
    {
        const QScopedValueRollback placing(m_isPlacing, true);
        m_plot->xAxis->setRange(m_picture->origin() + times->first,
                                m_picture->origin() +
                                    std::max(times->last, times->first + leastSpan));
    }
    m_span = m_plot->xAxis->range().size();
    setFitting(true);
    repaintCurves();
}

TrendPlot::Sight TrendPlot::sight() const
{
    const QCPRange times = m_plot->xAxis->range();
    const QCPRange values = m_plot->yAxis->range();
    return {times.lower - m_picture->origin(), times.upper - m_picture->origin(), values.lower,
            values.upper};
}

void TrendPlot::zoom(bool values, double factor, double anchor)
{
    if (values) {
        setFitting(false);
        m_plot->yAxis->scaleRange(factor, anchor);
    } else {
        const QScopedValueRollback placing(m_isPlacing, true);
        m_plot->xAxis->scaleRange(factor, anchor); // while it follows, the newest stays anyway
        m_span = m_plot->xAxis->range().size();
    }
    repaintCurves();
}

void TrendPlot::zoomTime(double factor)
{
    zoom(false, factor, m_plot->xAxis->range().center());
}

void TrendPlot::zoomValues(double factor)
{
    zoom(true, factor, m_plot->yAxis->range().center());
}

void TrendPlot::moveTime(double share)
{
    m_plot->xAxis->moveRange(m_plot->xAxis->range().size() * share);
    repaintCurves();
}

void TrendPlot::moveValues(double share)
{
    m_plot->yAxis->moveRange(m_plot->yAxis->range().size() * share);
    repaintCurves();
}

void TrendPlot::point(QPointF place)
{
    const QString text = m_picture->markAt(place);
    m_picture->repaintMark();
    Q_EMIT pointed(text);
}

QByteArray TrendPlot::png()
{
    return onPaper([this] { return m_picture->png(); });
}

QByteArray TrendPlot::pdf(const QString &title)
{
    return onPaper([this, &title] { return m_picture->pdf(title); });
}

QByteArray TrendPlot::onPaper(const std::function<QByteArray()> &draw)
{
    m_picture->paintIn(TrendColours::paper(), font());
    QByteArray bytes = draw();
    usePalette();
    return bytes;
}

void TrendPlot::usePalette()
{
    m_picture->paintIn(TrendColours::of(palette()), font());
    repaintCurves();
}

bool TrendPlot::event(QEvent *event)
{
    const bool done = QWidget::event(event);
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::FontChange)
        usePalette();
    return done;
}

void TrendPlot::paintEvent(QPaintEvent *)
{
    if (!hasFocus())
        return;
    QStyleOptionFocusRect option;
    option.initFrom(this);
    option.backgroundColor = palette().color(QPalette::Window);
    QPainter painter(this);
    style()->drawPrimitive(QStyle::PE_FrameFocusRect, &option, &painter, this);
}

void TrendPlot::pressed(QMouseEvent *event)
{
    setFocus(Qt::MouseFocusReason);
    const bool isFrame =
        event->button() == Qt::RightButton ||
        (event->button() == Qt::LeftButton && event->modifiers().testFlag(Qt::ShiftModifier));
    m_plot->setSelectionRectMode(isFrame ? QCP::srmZoom : QCP::srmNone);
}

void TrendPlot::turned(QWheelEvent *event)
{
    constexpr double aStep = 120;
    const double factor = std::pow(zoomStep, event->angleDelta().y() / aStep);
    const QPointF place = event->position();
    if (event->modifiers().testFlag(Qt::ControlModifier))
        zoom(true, factor, m_plot->yAxis->pixelToCoord(place.y()));
    else
        zoom(false, factor, m_plot->xAxis->pixelToCoord(place.x()));
    event->accept();
}

void TrendPlot::keyPressEvent(QKeyEvent *event)
{
    const auto zoomBy = [this, event](double factor) {
        if (event->modifiers().testFlag(Qt::ControlModifier))
            zoomValues(factor);
        else
            zoomTime(factor);
    };
    switch (event->key()) {
    case Qt::Key_Left:
        return moveTime(-moveStep);
    case Qt::Key_Right:
        return moveTime(moveStep);
    case Qt::Key_Up:
        return moveValues(moveStep);
    case Qt::Key_Down:
        return moveValues(-moveStep);
    case Qt::Key_Plus:
    case Qt::Key_Equal:
        return zoomBy(zoomStep);
    case Qt::Key_Minus:
        return zoomBy(1 / zoomStep);
    case Qt::Key_Home:
        return showAll();
    case Qt::Key_End:
        return setFollowing(true);
    default:
        QWidget::keyPressEvent(event);
    }
}

} // namespace corvane
