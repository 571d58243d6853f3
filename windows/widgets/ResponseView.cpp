// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/widgets/ResponseView.h"

#include "devices/Literals.h"

#include <QAccessible>
#include <QApplication>
#include <QClipboard>
#include <QFontDatabase>
#include <QKeyEvent>
#include <QMenu>
#include <QPainter>
#include <QScrollBar>

#include <algorithm>
#include <limits>
#include <utility>

namespace corvane {

namespace {

constexpr int margin = 4;
constexpr int leastWidth = 120;
constexpr int preferredRows = 5;
constexpr int leastRows = 2;

/// One row as it is drawn: control characters, and the hyphen that has no width, as dots.
QString drawable(QByteArrayView row)
{
    constexpr char16_t softHyphen = 0xAD;
    QString shown = QString::fromLatin1(row);
    for (QChar &c : shown) {
        if (c.unicode() < 32 || (c.unicode() >= 127 && c.unicode() < 160) || c == softHyphen)
            c = QChar(0xB7);
    }
    return shown;
}

bool isWordByte(char byte)
{
    return byte != ' ' && byte != ',' && byte != ';' && byte != '"';
}

} // namespace

ResponseView::ResponseView(const ResponseText &text, QWidget *parent)
    : QAbstractScrollArea(parent)
    , m_text(text)
{
    setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    setFocusPolicy(Qt::StrongFocus);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    viewport()->setBackgroundRole(QPalette::Base);
    viewport()->setCursor(Qt::IBeamCursor);
    m_repaint.setTimerType(Qt::PreciseTimer);
    m_repaint.setSingleShot(true);
    m_repaint.setInterval(repaintIntervalMs);
    connect(&m_repaint, &QTimer::timeout, this, [this] {
        updateScrollBar();
        viewport()->update();
        if (QAccessible::isActive())
            tellReaders();
    });
}

/// Of a reply of any length its beginning, which is what one reads.
void ResponseView::tellReaders()
{
    constexpr qsizetype longestTold = 4096;
    const QString before = std::exchange(
        m_told,
        QString::fromLatin1(m_text.bytes().first(std::min(m_text.bytes().size(), longestTold))));
    if (m_told == before)
        return;
    if (!before.isEmpty() && !m_told.startsWith(before)) {
        QAccessibleTextRemoveEvent removed(this, 0, before);
        QAccessible::updateAccessibility(&removed);
    }
    const qsizetype stands = m_told.startsWith(before) ? before.size() : 0;
    if (m_told.size() > stands) {
        QAccessibleTextInsertEvent inserted(this, static_cast<int>(stands), m_told.sliced(stands));
        QAccessible::updateAccessibility(&inserted);
    }
}

void ResponseView::textReplaced()
{
    m_anchor = m_cursor = 0;
    m_dropped = m_text.dropped();
    textChanged();
}

void ResponseView::textAppended()
{
    if (const qsizetype dropped = m_text.dropped() - std::exchange(m_dropped, m_text.dropped());
        dropped > 0)
        followDropped(dropped);
    textChanged();
}

/// What was selected and what was in sight stay so, as far as they are still there.
void ResponseView::followDropped(qsizetype dropped)
{
    m_anchor = std::max<qsizetype>(0, m_anchor - dropped);
    m_cursor = std::max<qsizetype>(0, m_cursor - dropped);
    QScrollBar *bar = verticalScrollBar();
    if (bar->value() < bar->maximum())
        bar->setValue(bar->value() - static_cast<int>(dropped / columns()));
}

void ResponseView::textChanged()
{
    m_anchor = std::min(m_anchor, m_text.bytes().size());
    m_cursor = std::min(m_cursor, m_text.bytes().size());
    if (!m_repaint.isActive())
        m_repaint.start();
}

QString ResponseView::selectedText() const
{
    const auto [from, to] = selection();
    return QString::fromLatin1(m_text.bytes().sliced(from, to - from));
}

void ResponseView::selectAll()
{
    m_anchor = 0;
    m_cursor = m_text.bytes().size();
    viewport()->update();
}

void ResponseView::copy() const
{
    const QString selected = selectedText();
    if (!selected.isEmpty())
        QApplication::clipboard()->setText(selected);
}

QSize ResponseView::sizeHint() const
{
    return sizeOfRows(preferredRows);
}

QSize ResponseView::minimumSizeHint() const
{
    return sizeOfRows(leastRows);
}

/// Measured in the window's font. The fixed font is loaded with the first text, so that the start
/// of the program does not wait for it.
QSize ResponseView::sizeOfRows(int rows) const
{
    const int lineSpacing = QFontMetrics(QApplication::font()).lineSpacing();
    return {leastWidth, rows * lineSpacing + 2 * margin + 2 * frameWidth()};
}

/// The width of a column as text is drawn: seldom a whole number of pixels.
qreal ResponseView::pitch() const
{
    return std::max(1.0, QFontMetricsF(font()).horizontalAdvance(u'0'));
}

qsizetype ResponseView::columns() const
{
    const int width = viewport()->width() - 2 * margin;
    return std::max(1, qFloor(width / pitch()));
}

int ResponseView::visibleRows() const
{
    return std::max(1, (viewport()->height() - 2 * margin) / fontMetrics().lineSpacing());
}

std::pair<qsizetype, qsizetype> ResponseView::selection() const
{
    return std::minmax(m_anchor, m_cursor);
}

void ResponseView::updateScrollBar()
{
    QScrollBar *bar = verticalScrollBar();
    if (m_text.bytes().isEmpty()) {
        bar->setRange(0, 0);
        return;
    }
    const bool atEnd = bar->value() == bar->maximum();
    const qsizetype rows = (m_text.bytes().size() + columns() - 1) / columns();
    const qsizetype hidden =
        std::clamp<qsizetype>(rows - visibleRows(), 0, std::numeric_limits<int>::max());
    bar->setPageStep(visibleRows());
    bar->setRange(0, static_cast<int>(hidden));
    if (atEnd)
        bar->setValue(bar->maximum());
}

void ResponseView::paintEvent(QPaintEvent *)
{
    QPainter painter(viewport());
    const int first = verticalScrollBar()->value();
    const int rows = m_text.bytes().isEmpty() ? 0 : visibleRows() + 1;
    for (int row = 0; row < rows; ++row)
        drawRow(painter, first + row, margin + row * fontMetrics().lineSpacing());
    if (hasFocus()) {
        painter.setPen(palette().color(QPalette::Highlight));
        painter.drawRect(viewport()->rect().adjusted(0, 0, -1, -1));
    }
}

void ResponseView::drawRow(QPainter &painter, qsizetype row, int y) const
{
    const qsizetype from = row * columns();
    if (from >= m_text.bytes().size())
        return;
    const auto bytes = QByteArrayView(m_text.bytes()).sliced(from);
    const QByteArrayView shown = bytes.first(std::min(bytes.size(), columns()));
    const QFontMetrics metrics = fontMetrics();
    const auto x = [pitch = pitch()](qsizetype column) {
        return margin + static_cast<qreal>(column) * pitch;
    };

    const auto selected = selection();
    const qsizetype selectedFrom = std::clamp<qsizetype>(selected.first - from, 0, shown.size());
    const qsizetype selectedTo = std::clamp<qsizetype>(selected.second - from, 0, shown.size());
    const auto draw = [&](qsizetype begin, qsizetype end, QPalette::ColorRole colour) {
        painter.setPen(palette().color(colour));
        painter.drawText(QPointF(x(begin), y + metrics.ascent()),
                         drawable(shown.sliced(begin, end - begin)));
    };
    draw(0, selectedFrom, QPalette::Text);
    if (selectedFrom < selectedTo) {
        painter.fillRect(
            QRectF(x(selectedFrom), y, x(selectedTo) - x(selectedFrom), metrics.lineSpacing()),
            palette().highlight());
        draw(selectedFrom, selectedTo, QPalette::HighlightedText);
    }
    draw(selectedTo, shown.size(), QPalette::Text);
}

void ResponseView::resizeEvent(QResizeEvent *event)
{
    QAbstractScrollArea::resizeEvent(event);
    updateScrollBar();
}

void ResponseView::changeEvent(QEvent *event)
{
    QAbstractScrollArea::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        updateScrollBar();
}

void ResponseView::focusInEvent(QFocusEvent *event)
{
    QAbstractScrollArea::focusInEvent(event);
    viewport()->update();
}

void ResponseView::focusOutEvent(QFocusEvent *event)
{
    QAbstractScrollArea::focusOutEvent(event);
    viewport()->update();
}

/// The keys of the view are no shortcuts of the window while it has the focus.
bool ResponseView::event(QEvent *event)
{
    if (event->type() == QEvent::ShortcutOverride) {
        const auto *key = static_cast<QKeyEvent *>(event);
        if (key->matches(QKeySequence::Copy) || key->matches(QKeySequence::SelectAll)) {
            event->accept();
            return true;
        }
    }
    return QAbstractScrollArea::event(event);
}

void ResponseView::keyPressEvent(QKeyEvent *event)
{
    QScrollBar *bar = verticalScrollBar();
    if (event->matches(QKeySequence::Copy))
        copy();
    else if (event->matches(QKeySequence::SelectAll))
        selectAll();
    else if (event->matches(QKeySequence::MoveToStartOfLine) ||
             event->matches(QKeySequence::MoveToStartOfDocument))
        bar->setValue(0);
    else if (event->matches(QKeySequence::MoveToEndOfLine) ||
             event->matches(QKeySequence::MoveToEndOfDocument))
        bar->setValue(bar->maximum());
    else
        QAbstractScrollArea::keyPressEvent(event);
}

qsizetype ResponseView::positionAt(QPoint point) const
{
    const int row = std::max(0, point.y() - margin) / fontMetrics().lineSpacing();
    const int column = qRound(std::max(0, point.x() - margin) / pitch());
    const qsizetype position =
        (verticalScrollBar()->value() + row) * columns() + std::min<qsizetype>(column, columns());
    return std::min(position, m_text.bytes().size());
}

void ResponseView::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton)
        return;
    m_cursor = positionAt(event->pos());
    if (!event->modifiers().testFlag(Qt::ShiftModifier))
        m_anchor = m_cursor;
    viewport()->update();
}

void ResponseView::mouseMoveEvent(QMouseEvent *event)
{
    if (!event->buttons().testFlag(Qt::LeftButton))
        return;
    QScrollBar *bar = verticalScrollBar();
    if (event->pos().y() < 0)
        bar->setValue(bar->value() - 1);
    else if (event->pos().y() > viewport()->height())
        bar->setValue(bar->value() + 1);
    m_cursor = positionAt(event->pos());
    viewport()->update();
}

void ResponseView::mouseDoubleClickEvent(QMouseEvent *event)
{
    const QByteArray &bytes = m_text.bytes();
    m_anchor = m_cursor = positionAt(event->pos());
    while (m_anchor > 0 && isWordByte(bytes[m_anchor - 1]))
        --m_anchor;
    while (m_cursor < bytes.size() && isWordByte(bytes[m_cursor]))
        ++m_cursor;
    viewport()->update();
}

void ResponseView::contextMenuEvent(QContextMenuEvent *event)
{
    auto *menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->addAction(u"&Copy"_s, QKeySequence::Copy, this, &ResponseView::copy)
        ->setEnabled(!selectedText().isEmpty());
    menu->addAction(u"Select &All"_s, QKeySequence::SelectAll, this, &ResponseView::selectAll);
    menu->popup(event->globalPos());
}

} // namespace corvane
