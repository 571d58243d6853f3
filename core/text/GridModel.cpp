// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/text/GridModel.h"

namespace corvane {

GridModel::GridModel(QObject *parent)
    : QAbstractTableModel(parent)
{
}

int GridModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_table.rowCount() - 1;
}

int GridModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_table.columnCount();
}

QVariant GridModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid())
        return {};
    const int row = index.row() + 1;
    const int column = index.column();
    const QString remark = this->remark(row, column);
    switch (role) {
    case Qt::DisplayRole: {
        const QString text = m_table.text(row, column).left(shownCharacters).toString();
        // Not by its colour alone.
        return remark.isEmpty() ? text : (text + u" !"_s).trimmed();
    }
    case Qt::ToolTipRole:
        return remark.isEmpty() ? QVariant() : remark;
    case Qt::AccessibleTextRole:
        return remark.isEmpty() ? QVariant() : u"%1, %2"_s.arg(m_table.text(row, column), remark);
    case VerdictRole:
        return static_cast<int>(verdict(row, column));
    case MarkedRole:
        return row == m_markedRow;
    case RemarkRole:
        return remark;
    default:
        return {};
    }
}

QVariant GridModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    return m_table.text(0, section).toString();
}

QString GridModel::text(int row, int column) const
{
    return m_table.text(row, column).toString();
}

qsizetype GridModel::textLength(int row, int column) const
{
    return m_table.text(row, column).size();
}

void GridModel::setCurrentCell(int row, int column)
{
    if (!m_table.contains(row, column))
        return;
    m_currentRow = row;
    m_currentCol = column;
    Q_EMIT currentCellSet(row, column);
}

void GridModel::setTable(TextTable table)
{
    if (table.rowCount() < 1 || table.columnCount() < 1)
        return;
    beginResetModel();
    m_table = std::move(table);
    m_judged = {};
    m_remarks.clear();
    m_markedRow = 0;
    endResetModel();
    setCurrentCell(0, 0);
}

void GridModel::setText(int row, int column, QStringView text)
{
    setVerdict(row, column, Verdict::None);
    m_remarks.remove({row, column});
    m_table.setText(row, column, text);
    cellChanged(row, column);
}

void GridModel::replaceTail(int row, int column, qsizetype keep, QLatin1StringView tail)
{
    setVerdict(row, column, Verdict::None);
    m_table.replaceTail(row, column, keep, tail);
    cellChanged(row, column);
}

void GridModel::clearColumn(int column)
{
    for (int row = 1; row < m_table.rowCount(); ++row)
        m_table.setText(row, column, {});
    for (JudgedCell &judged : m_judged) {
        if (judged.column == column)
            judged = {};
    }
    if (rowCount() > 0)
        Q_EMIT dataChanged(index(0, column), index(rowCount() - 1, column));
}

void GridModel::appendRow()
{
    beginInsertRows({}, rowCount(), rowCount());
    m_table.appendRow({});
    endInsertRows();
}

void GridModel::removeRow(int row)
{
    if (row < 1 || row >= m_table.rowCount())
        return;
    beginRemoveRows({}, row - 1, row - 1);
    m_table.removeRow(row);
    if (static_cast<std::size_t>(row) < m_judged.size())
        m_judged.erase(m_judged.begin() + row);
    m_markedRow = 0;
    endRemoveRows();
    setCurrentCell(std::min(row, m_table.rowCount() - 1), m_currentCol);
}

void GridModel::setMarkedRow(int row)
{
    const int old = std::exchange(m_markedRow, row);
    if (old == row)
        return;
    rowChanged(old);
    rowChanged(row);
}

GridModel::Verdict GridModel::verdict(int row, int column) const
{
    const auto at = static_cast<std::size_t>(row);
    if (at >= m_judged.size() || m_judged[at].column != column)
        return Verdict::None;
    return m_judged[at].verdict;
}

void GridModel::setVerdict(int row, int column, Verdict verdict)
{
    if (!m_table.contains(row, column) || this->verdict(row, column) == verdict)
        return;
    const auto at = static_cast<std::size_t>(row);
    if (at >= m_judged.size())
        m_judged.resize(at + 1);
    m_judged[at] = {static_cast<quint8>(column), verdict};
    cellChanged(row, column);
}

void GridModel::setRemark(int row, int column, const QString &remark)
{
    if (remark.isEmpty())
        m_remarks.remove({row, column});
    else if (m_table.contains(row, column))
        m_remarks.insert({row, column}, remark);
    cellChanged(row, column);
}

void GridModel::cellChanged(int row, int column)
{
    if (!m_table.contains(row, column))
        return;
    if (row == 0) {
        Q_EMIT headerDataChanged(Qt::Horizontal, column, column);
        return;
    }
    const QModelIndex changed = index(row - 1, column);
    Q_EMIT dataChanged(changed, changed);
}

void GridModel::rowChanged(int row)
{
    if (row > 0 && row < m_table.rowCount())
        Q_EMIT dataChanged(index(row - 1, 0), index(row - 1, columnCount() - 1));
}

} // namespace corvane
