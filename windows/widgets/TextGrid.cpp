// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/widgets/TextGrid.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QPainter>
#include <QStyledItemDelegate>

namespace corvane {

namespace {

struct Shade
{
    QColor ink;
    QColor paper;
};

// Ink and paper always together, so that they stay readable on a dark desktop too.
const Shade &passedShade()
{
    static const Shade shade{QColor(0x0b, 0x50, 0x1c), QColor(0xd5, 0xf2, 0xdb)};
    return shade;
}

const Shade &failedShade()
{
    static const Shade shade{QColor(0x8a, 0x0a, 0x0a), QColor(0xfb, 0xdc, 0xdc)};
    return shade;
}

const Shade &markedShade()
{
    static const Shade shade{QColor(0x20, 0x20, 0x20), QColor(0xff, 0xf0, 0xb8)};
    return shade;
}

/// Verdicts, remarks and the marked row in colours, never by their colour alone.
class CellPainter : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    [[nodiscard]] static const Shade *shadeOf(const QModelIndex &index)
    {
        const auto verdict =
            static_cast<GridModel::Verdict>(index.data(GridModel::VerdictRole).toInt());
        if (verdict == GridModel::Verdict::Passed)
            return &passedShade();
        if (verdict == GridModel::Verdict::Failed ||
            !index.data(GridModel::RemarkRole).toString().isEmpty())
            return &failedShade();
        return index.data(GridModel::MarkedRole).toBool() ? &markedShade() : nullptr;
    }

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override
    {
        QStyledItemDelegate::initStyleOption(option, index);
        if (const Shade *shade = shadeOf(index)) {
            option->font.setBold(true);
            option->backgroundBrush = shade->paper;
            option->palette.setColor(QPalette::Text, shade->ink);
        } else if (index.column() == 0) {
            option->backgroundBrush = option->palette.button();
            option->palette.setColor(QPalette::Text, option->palette.buttonText().color());
        }
    }
};

/// The titles in their own font: QHeaderView measures in bold, for the title of the current column,
/// which is never marked here.
class TitleRow : public QHeaderView
{
public:
    explicit TitleRow(QWidget *parent)
        : QHeaderView(Qt::Horizontal, parent)
    {
        setSectionsClickable(true);
        setHighlightSections(false);
        setMinimumSectionSize(fontMetrics().horizontalAdvance(u'0') * 4);
    }

protected:
    /// Flat, without the style's gradient: a wide section's would start the toolkit's painting
    /// threads.
    void paintSection(QPainter *painter, const QRect &rect, int section) const override
    {
        constexpr int margin = 3;
        painter->fillRect(rect, palette().button());
        const QBrush line = palette().mid();
        painter->fillRect(rect.right(), rect.top(), 1, rect.height(), line);
        painter->fillRect(rect.left(), rect.bottom(), rect.width(), 1, line);
        style()->drawItemText(painter, rect.adjusted(margin, 0, -margin, 0),
                              Qt::AlignLeft | Qt::AlignVCenter, palette(), isEnabled(),
                              model()->headerData(section, Qt::Horizontal).toString(),
                              QPalette::ButtonText);
    }

    [[nodiscard]] QSize sectionSizeFromContents(int section) const override
    {
        const QString title = model()->headerData(section, Qt::Horizontal).toString();
        const int margin = 2 * style()->pixelMetric(QStyle::PM_HeaderMargin, nullptr, this);
        return fontMetrics().size(0, title) + QSize(margin, margin);
    }
};

} // namespace

TextGrid::TextGrid(GridModel &model, QWidget *parent)
    : QTableView(parent)
    , m_model(model)
{
    setHorizontalHeader(new TitleRow(this));
    setModel(&m_model);
    setItemDelegate(new CellPainter(this));
    connect(&m_model, &GridModel::currentCellSet, this, &TextGrid::showCurrentCell);
    setEditTriggers(NoEditTriggers);
    setSelectionMode(SingleSelection);
    setTabKeyNavigation(false);
    setWordWrap(false);
    verticalHeader()->hide();
    // One height for all rows: nothing is measured however many there are.
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 8);
    connect(horizontalHeader(), &QHeaderView::sectionResized, this, &TextGrid::acted);
    showCurrentCell(m_model.currentRow(), m_model.currentCol());
}

TextGrid::~TextGrid()
{
    // The header may still be laid out after this object is no grid any more.
    horizontalHeader()->disconnect(this);
}

void TextGrid::showCurrentCell(int row, int column)
{
    if (row == 0) {
        clearSelection();
        setCurrentIndex({});
        return;
    }
    const QModelIndex index = m_model.index(row - 1, column);
    // A run that walks down goes on by pages: the view would paint all of itself at every row.
    if (visualRect(index).bottom() >= viewport()->height())
        scrollTo(index, PositionAtTop);
    setCurrentIndex(index);
}

void TextGrid::currentChanged(const QModelIndex &current, const QModelIndex &previous)
{
    QTableView::currentChanged(current, previous);
    Q_EMIT acted();
    if (current.isValid() &&
        (current.row() + 1 != m_model.currentRow() || current.column() != m_model.currentCol()))
        m_model.setCurrentCell(current.row() + 1, current.column());
}

QRect TextGrid::cellRect(int row, int column) const
{
    return visualRect(m_model.index(row - 1, column));
}

void TextGrid::keyPressEvent(QKeyEvent *event)
{
    const auto held =
        event->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
    // Some keyboards type with both Control and Alt held.
    const bool types = !held || held == (Qt::ControlModifier | Qt::AltModifier);
    const int key = event->key();
    const QString typed = event->text();
    if (event->matches(QKeySequence::Copy)) {
        QGuiApplication::clipboard()->setText(
            m_model.text(m_model.currentRow(), m_model.currentCol()));
    } else if (key == Qt::Key_F2 || key == Qt::Key_Return || key == Qt::Key_Enter) {
        Q_EMIT editRequested({});
    } else if (types && !typed.isEmpty() && typed.front().isPrint()) {
        Q_EMIT editRequested(typed);
    } else {
        Q_EMIT acted();
        QTableView::keyPressEvent(event);
    }
}

void TextGrid::mousePressEvent(QMouseEvent *event)
{
    Q_EMIT acted();
    QTableView::mousePressEvent(event);
}

void TextGrid::mouseDoubleClickEvent(QMouseEvent *event)
{
    QTableView::mouseDoubleClickEvent(event);
    if (indexAt(event->position().toPoint()).isValid())
        Q_EMIT editRequested({});
}

void TextGrid::scrollContentsBy(int dx, int dy)
{
    QTableView::scrollContentsBy(dx, dy);
    Q_EMIT acted();
}

} // namespace corvane
