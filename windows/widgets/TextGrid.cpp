#include "windows/widgets/TextGrid.h"

#include "windows/widgets/TextGridModel.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QPainter>

namespace corvane {

namespace {

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

TextGrid::TextGrid(QWidget *parent)
    : QTableView(parent)
    , m_model(new TextGridModel(this))
{
    setHorizontalHeader(new TitleRow(this));
    setModel(m_model);
    setEditTriggers(NoEditTriggers);
    setSelectionMode(SingleSelection);
    setTabKeyNavigation(false);
    setWordWrap(false);
    verticalHeader()->hide();
    // One height for all rows: nothing is measured however many there are.
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 8);
    connect(horizontalHeader(), &QHeaderView::sectionResized, this, &TextGrid::acted);
}

TextGrid::~TextGrid()
{
    // The header may still be laid out after this object is no grid any more.
    horizontalHeader()->disconnect(this);
}

int TextGrid::rowCount() const
{
    return table().rowCount();
}

int TextGrid::colCount() const
{
    return table().columnCount();
}

void TextGrid::setRowCount(int rows)
{
    if (rows < 1)
        return;
    m_model->setRowTotal(rows);
    if (m_currentRow >= rows)
        setCurrentCell(0, m_currentCol);
}

void TextGrid::setColCount(int columns)
{
    if (columns < 1)
        return;
    m_model->setColumnTotal(columns);
    setCurrentCell(0, 0);
}

QString TextGrid::text(int row, int column) const
{
    return table().text(row, column).toString();
}

qsizetype TextGrid::textLength(int row, int column) const
{
    return table().text(row, column).size();
}

void TextGrid::setText(int row, int column, const QString &text)
{
    m_model->setText(row, column, text);
}

void TextGrid::replaceTail(int row, int column, qsizetype keep, QLatin1StringView tail)
{
    m_model->replaceTail(row, column, keep, tail);
}

void TextGrid::clearColumn(int column)
{
    if (column >= 0 && column < colCount())
        m_model->clearColumns(column, column);
}

void TextGrid::clear()
{
    m_model->clearColumns(0, colCount() - 1);
}

void TextGrid::removeRow(int row)
{
    if (row < 1 || row >= rowCount())
        return;
    m_model->removeRow(row);
    setCurrentCell(std::min(row, rowCount() - 1), m_currentCol);
}

void TextGrid::setTable(TextTable table)
{
    if (table.rowCount() < 1 || table.columnCount() < 1)
        return;
    m_model->setTable(std::move(table));
    setCurrentCell(0, 0);
}

const TextTable &TextGrid::table() const
{
    return m_model->table();
}

void TextGrid::setCurrentCell(int row, int column)
{
    if (!table().contains(row, column))
        return;
    const bool moved = row != m_currentRow || column != m_currentCol;
    m_currentRow = row;
    m_currentCol = column;
    if (row == 0) {
        clearSelection();
        setCurrentIndex({});
    } else {
        const QModelIndex index = m_model->index(row - 1, column);
        // A run that walks down goes on by pages: the view would paint all of itself at every row.
        if (visualRect(index).bottom() >= viewport()->height())
            scrollTo(index, PositionAtTop);
        setCurrentIndex(index);
    }
    if (moved)
        Q_EMIT currentCellChanged(row, column);
}

void TextGrid::currentChanged(const QModelIndex &current, const QModelIndex &previous)
{
    QTableView::currentChanged(current, previous);
    Q_EMIT acted();
    if (current.isValid())
        setCurrentCell(current.row() + 1, current.column());
}

int TextGrid::markedRow() const
{
    return m_model->markedRow();
}

void TextGrid::setMarkedRow(int row)
{
    m_model->setMarkedRow(row);
}

TextGrid::Verdict TextGrid::verdict(int row, int column) const
{
    return m_model->verdict(row, column);
}

QString TextGrid::remark(int row, int column) const
{
    return m_model->remark(row, column);
}

void TextGrid::setRemark(int row, int column, const QString &remark)
{
    m_model->setRemark(row, column, remark);
}

void TextGrid::setVerdict(int row, int column, Verdict verdict)
{
    m_model->setVerdict(row, column, verdict);
}

QRect TextGrid::cellRect(int row, int column) const
{
    return visualRect(m_model->index(row - 1, column));
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
        QGuiApplication::clipboard()->setText(text(m_currentRow, m_currentCol));
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
