// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "devices/Literals.h"

#include <QLatin1StringView>
#include <QString>
#include <QStringView>

#include <memory>
#include <span>
#include <vector>

namespace corvane {

/// Text cells by (row, column), a row's cells in one text, so that a list of a million rows stays
/// small and loads fast. Knows nothing of a view. A cell outside the table reads as empty and is
/// not written.
class TextTable
{
public:
    TextTable() = default;
    TextTable(int rows, int columns);
    TextTable(TextTable &&) = default;
    TextTable &operator=(TextTable &&) = default;

    [[nodiscard]] int rowCount() const { return static_cast<int>(m_rows.size()); }
    [[nodiscard]] int columnCount() const { return m_columns; }
    [[nodiscard]] bool contains(int row, int column) const;

    /// The cell's text; valid until the row is next changed.
    [[nodiscard]] QStringView text(int row, int column) const;
    void setText(int row, int column, QStringView text);
    /// The cell's first `keep` characters stand, `tail` follows them. Takes as long as the tail is,
    /// whatever stands before it.
    void replaceTail(int row, int column, qsizetype keep, QLatin1StringView tail);

    /// Adds a row at the end; cells that are not given are empty, those too many are dropped.
    void appendRow(std::span<const QLatin1StringView> cells);
    void removeRow(int row);
    /// New rows are empty; those beyond the count are dropped.
    void setRowCount(int rows);
    void reserve(int rows);

private:
    [[nodiscard]] std::size_t end(int row, int column) const;
    [[nodiscard]] qsizetype begin(int row, int column) const;
    void moveEnds(int row, int fromColumn, qsizetype by);
    QChar *room(qsizetype size);

    /// A block that the texts of appended rows lie in. A row that is changed gets a text of its
    /// own.
    struct Block
    {
        std::unique_ptr<QChar[]> characters;
        qsizetype size = 0;
        qsizetype used = 0;
    };

    int m_columns = 0;
    std::vector<Block> m_blocks;
    std::vector<QString> m_rows; // the cells' texts, one after the other
    std::vector<quint32> m_ends; // where each cell ends in its row's text
};

} // namespace corvane
