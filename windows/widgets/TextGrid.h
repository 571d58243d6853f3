#pragma once

#include "core/text/TextTable.h"

#include <QTableView>

namespace corvane {

class TextGridModel;

/// The toolkit's text grid: text cells by (row, column), both from 0, with row 0 shown as the
/// header, a current cell, a marked row and verdicts. It shows and navigates; what an edit does is
/// its owner's: the grid only asks for it.
///
/// A cell outside the grid reads as empty and is not written. Appending a row and setting a cell
/// take the same time however long the grid is.
class TextGrid : public QTableView
{
    Q_OBJECT

public:
    enum class Verdict : quint8 { None, Passed, Failed };

    explicit TextGrid(QWidget *parent = nullptr);
    ~TextGrid() override;

    /// All rows, the header too.
    [[nodiscard]] int rowCount() const;
    [[nodiscard]] int colCount() const;
    /// New rows and columns are empty. A count below 1 is ignored: the header stays.
    void setRowCount(int rows);
    void setColCount(int columns);

    [[nodiscard]] QString text(int row, int column) const;
    [[nodiscard]] qsizetype textLength(int row, int column) const;
    /// Takes the cell's verdict away as well.
    void setText(int row, int column, const QString &text);
    /// The cell's first `keep` characters stand, then `tail` follows; the work is the tail's.
    void replaceTail(int row, int column, qsizetype keep, QLatin1StringView tail);
    /// Empties the column in every row below the header.
    void clearColumn(int column);
    /// Empties every cell below the header.
    void clear();
    /// Removes a row below the header.
    void removeRow(int row);
    /// Takes over all cells at once, the header row first. Nothing is marked or judged afterwards.
    void setTable(TextTable table);
    [[nodiscard]] const TextTable &table() const;

    /// The current cell; row 0: no cell is selected.
    [[nodiscard]] int currentRow() const { return m_currentRow; }
    [[nodiscard]] int currentCol() const { return m_currentCol; }
    /// Selects the cell and scrolls to it. A cell outside the grid is ignored.
    void setCurrentCell(int row, int column);

    /// The row that a run is at; 0: none.
    [[nodiscard]] int markedRow() const;
    void setMarkedRow(int row);

    /// At most one cell a row carries a verdict, the last one given.
    [[nodiscard]] Verdict verdict(int row, int column) const;
    void setVerdict(int row, int column, Verdict verdict);

    /// What is wrong with the cell: it stands out, and its tool tip tells. setText takes it away.
    [[nodiscard]] QString remark(int row, int column) const;
    void setRemark(int row, int column, const QString &remark);

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
    TextGridModel *m_model;
    int m_currentRow = 0;
    int m_currentCol = 0;
};

} // namespace corvane
