#pragma once

#include "core/text/GridModel.h"

#include <QTableView>

namespace corvane {

/// The toolkit's text grid: shows a GridModel, its row 0 as the header, and navigates; what an edit
/// does is its owner's: the grid only asks for it. Most of its calls are the model's.
///
/// Appending a row and setting a cell take the same time however long the grid is.
class TextGrid : public QTableView
{
    Q_OBJECT

public:
    using Verdict = GridModel::Verdict;

    /// Shows the model, which must outlive the grid; without one the grid has its own.
    explicit TextGrid(QWidget *parent = nullptr);
    explicit TextGrid(GridModel &model, QWidget *parent = nullptr);
    ~TextGrid() override;

    [[nodiscard]] GridModel &cells() const { return m_model; }
    /// All rows, the header too.
    [[nodiscard]] int rowCount() const { return table().rowCount(); }
    [[nodiscard]] int colCount() const { return table().columnCount(); }
    void setRowCount(int rows) { m_model.setRowTotal(rows); }
    void setColCount(int columns) { m_model.setColumnTotal(columns); }
    [[nodiscard]] QString text(int row, int column) const { return m_model.text(row, column); }
    [[nodiscard]] qsizetype textLength(int row, int column) const
    {
        return m_model.textLength(row, column);
    }
    void setText(int row, int column, const QString &text) { m_model.setText(row, column, text); }
    void replaceTail(int row, int column, qsizetype keep, QLatin1StringView tail)
    {
        m_model.replaceTail(row, column, keep, tail);
    }
    void clearColumn(int column);
    void clear() { m_model.clearColumns(0, colCount() - 1); }
    void removeRow(int row) { m_model.removeRow(row); }
    void setTable(TextTable table) { m_model.setTable(std::move(table)); }
    [[nodiscard]] const TextTable &table() const { return m_model.table(); }
    [[nodiscard]] int currentRow() const { return m_model.currentRow(); }
    [[nodiscard]] int currentCol() const { return m_model.currentCol(); }
    /// Selects the cell and scrolls to it.
    void setCurrentCell(int row, int column) { m_model.setCurrentCell(row, column); }
    [[nodiscard]] int markedRow() const { return m_model.markedRow(); }
    void setMarkedRow(int row) { m_model.setMarkedRow(row); }
    [[nodiscard]] Verdict verdict(int row, int column) const
    {
        return m_model.verdict(row, column);
    }
    void setVerdict(int row, int column, Verdict verdict)
    {
        m_model.setVerdict(row, column, verdict);
    }
    [[nodiscard]] QString remark(int row, int column) const { return m_model.remark(row, column); }
    void setRemark(int row, int column, const QString &remark)
    {
        m_model.setRemark(row, column, remark);
    }

    /// Where the cell is shown, in coordinates of the viewport.
    [[nodiscard]] QRect cellRect(int row, int column) const;

Q_SIGNALS:
    void currentCellChanged(int row, int column);
    /// The user wants to edit the current cell (F2, Enter, double click, or typing, which hands on
    /// the character). `typed` is empty unless the user typed.
    void editRequested(const QString &typed);
    /// The user did anything else on the grid, or it has scrolled or changed its columns: what lies
    /// over a cell no longer fits.
    void acted();

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void scrollContentsBy(int dx, int dy) override;
    void currentChanged(const QModelIndex &current, const QModelIndex &previous) override;

private:
    TextGrid(GridModel *model, GridModel *owned, QWidget *parent);
    void showCurrentCell(int row, int column);

    GridModel &m_model;
    int m_shownRow = 0;
    int m_shownCol = 0;
};

} // namespace corvane
