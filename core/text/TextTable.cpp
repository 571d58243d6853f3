// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/text/TextTable.h"

#include <algorithm>

namespace corvane {

namespace {

constexpr qsizetype usualBlock = qsizetype{32} * 1024;

} // namespace

TextTable::TextTable(int rows, int columns)
    : m_columns(std::max(columns, 0))
{
    setRowCount(rows);
}

bool TextTable::contains(int row, int column) const
{
    return row >= 0 && row < rowCount() && column >= 0 && column < m_columns;
}

std::size_t TextTable::end(int row, int column) const
{
    return static_cast<std::size_t>(row) * static_cast<std::size_t>(m_columns) +
           static_cast<std::size_t>(column);
}

qsizetype TextTable::begin(int row, int column) const
{
    return column == 0 ? 0 : m_ends[end(row, column - 1)];
}

void TextTable::moveEnds(int row, int fromColumn, qsizetype by)
{
    for (int column = fromColumn; column < m_columns; ++column) {
        quint32 &cellEnd = m_ends[end(row, column)];
        cellEnd = static_cast<quint32>(cellEnd + by);
    }
}

QStringView TextTable::text(int row, int column) const
{
    if (!contains(row, column))
        return {};
    const qsizetype from = begin(row, column);
    return QStringView(m_rows[static_cast<std::size_t>(row)])
        .mid(from, m_ends[end(row, column)] - from);
}

void TextTable::setText(int row, int column, QStringView text)
{
    if (!contains(row, column))
        return;
    const qsizetype old = this->text(row, column).size();
    // A copy first: the text may be a view of this very row.
    m_rows[static_cast<std::size_t>(row)].replace(begin(row, column), old, text.toString());
    moveEnds(row, column, text.size() - old);
}

void TextTable::replaceTail(int row, int column, qsizetype keep, QLatin1StringView tail)
{
    if (!contains(row, column))
        return;
    const qsizetype old = text(row, column).size();
    const qsizetype kept = std::clamp<qsizetype>(keep, 0, old);
    m_rows[static_cast<std::size_t>(row)].replace(begin(row, column) + kept, old - kept,
                                                  QString(tail));
    moveEnds(row, column, kept + tail.size() - old);
}

QChar *TextTable::room(qsizetype size)
{
    if (m_blocks.empty() || m_blocks.back().size - m_blocks.back().used < size) {
        const qsizetype blockSize = std::max(size, usualBlock);
        m_blocks.push_back(
            {std::make_unique<QChar[]>(static_cast<std::size_t>(blockSize)), blockSize, 0});
    }
    Block &block = m_blocks.back();
    return block.characters.get() + std::exchange(block.used, block.used + size);
}

void TextTable::appendRow(std::span<const QLatin1StringView> cells)
{
    const auto used = cells.first(std::min(cells.size(), static_cast<std::size_t>(m_columns)));
    qsizetype size = 0;
    for (const QLatin1StringView cell : used)
        size += cell.size();
    QChar *const start = room(size);
    QChar *at = start;
    for (const QLatin1StringView cell : used) {
        for (const char c : cell)
            *at++ = QLatin1Char(c);
        m_ends.push_back(static_cast<quint32>(at - start));
    }
    m_ends.resize(m_ends.size() + static_cast<std::size_t>(m_columns) - used.size(),
                  static_cast<quint32>(size));
    m_rows.push_back(QString::fromRawData(start, size)); // copied when the row is first changed
}

void TextTable::removeRow(int row)
{
    if (row < 0 || row >= rowCount())
        return;
    m_rows.erase(m_rows.begin() + row);
    const auto first = m_ends.begin() + static_cast<std::ptrdiff_t>(end(row, 0));
    m_ends.erase(first, first + m_columns);
}

void TextTable::setRowCount(int rows)
{
    const auto count = static_cast<std::size_t>(std::max(rows, 0));
    m_rows.resize(count);
    m_ends.resize(count * static_cast<std::size_t>(m_columns), 0);
}

void TextTable::reserve(int rows)
{
    m_rows.reserve(static_cast<std::size_t>(rows));
    m_ends.reserve(end(rows, 0));
}

} // namespace corvane
