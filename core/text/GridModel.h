// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/text/TextTable.h"

#include <QAbstractTableModel>
#include <QHash>

#include <optional>

namespace corvane {

/// Text cells by (row, column), both from 0, with the verdicts, remarks, marked row and current
/// cell that a view shows. Row 0 is the header, so Qt's row n is row n + 1 here; all calls but Qt's
/// own count so. A cell outside reads as empty and is not written.
class GridModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    /// A cell shows this many characters at most: laying out a reply of megabytes would stall the
    /// window, and no column is that wide.
    static constexpr qsizetype shownCharacters = 1000;

    enum class Verdict : quint8 { None, Passed, Failed };
    enum Role {
        VerdictRole = Qt::UserRole, ///< a Verdict, as int
        MarkedRole,                 ///< bool: the cell's row is the marked one
        RemarkRole                  ///< QString: what is wrong with the cell
    };

    explicit GridModel(QObject *parent = nullptr);

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                      int role) const override;

    [[nodiscard]] const TextTable &table() const { return m_table; }
    /// Takes over all cells at once, the header row first. Nothing is marked or judged afterwards.
    void setTable(TextTable table);
    [[nodiscard]] QString text(int row, int column) const;
    [[nodiscard]] qsizetype textLength(int row, int column) const;
    /// Takes the cell's verdict and remark away as well.
    void setText(int row, int column, QStringView text);
    /// The cell's first `keep` characters stand, then `tail` follows; the work is the tail's.
    void replaceTail(int row, int column, qsizetype keep, QLatin1StringView tail);
    /// Empties the column in every row below the header.
    void clearColumn(int column);
    /// Adds an empty row at the end.
    void appendRow();
    /// Removes a row below the header.
    void removeRow(int row);

    /// The current cell; row 0: no cell is selected.
    [[nodiscard]] int currentRow() const { return m_currentRow; }
    [[nodiscard]] int currentCol() const { return m_currentCol; }
    /// A cell outside the grid is ignored.
    void setCurrentCell(int row, int column);

    /// The row that a run is at; 0: none.
    [[nodiscard]] int markedRow() const { return m_markedRow; }
    void setMarkedRow(int row);
    /// At most one cell a row carries a verdict, the last one given.
    [[nodiscard]] Verdict verdict(int row, int column) const;
    void setVerdict(int row, int column, Verdict verdict);

    [[nodiscard]] QString remark(int row, int column) const
    {
        return m_remarks.value({row, column});
    }
    void setRemark(int row, int column, const QString &remark);

Q_SIGNALS:
    /// The current cell was set, to another one or to the same: it is to be in sight.
    void currentCellSet(int row, int column);

private:
    struct JudgedCell
    {
        quint8 column = 0;
        Verdict verdict = Verdict::None;
    };

    void cellChanged(int row, int column);
    void rowChanged(int row);

    TextTable m_table{1, 1};
    std::vector<JudgedCell> m_judged; // as long as the last judged row needs
    int m_markedRow = 0;
    int m_currentRow = 0;
    int m_currentCol = 0;
    QHash<std::pair<int, int>, QString> m_remarks; // few, in a grid that has any
};

} // namespace corvane
