#include "windows/widgets/TextGridModel.h"

#include <QColor>
#include <QFont>
#include <QGuiApplication>
#include <QPalette>

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

} // namespace

TextGridModel::TextGridModel(QObject *parent)
    : QAbstractTableModel(parent)
{
}

int TextGridModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_table.rowCount() - 1;
}

int TextGridModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_table.columnCount();
}

QVariant TextGridModel::data(const QModelIndex &index, int role) const
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
        return remark.isEmpty() ? text : (text + QStringLiteral(" !")).trimmed();
    }
    case Qt::ToolTipRole:
        return remark.isEmpty() ? QVariant() : remark;
    case Qt::AccessibleTextRole:
        return remark.isEmpty() ? QVariant()
                                : QStringLiteral("%1, %2").arg(m_table.text(row, column), remark);
    case Qt::BackgroundRole:
    case Qt::ForegroundRole:
        return colour(row, column, role);
    case Qt::FontRole:
        if (row == m_markedRow || !remark.isEmpty() ||
            verdict(row, column) != TextGrid::Verdict::None) {
            QFont font = QGuiApplication::font();
            font.setBold(true);
            return font;
        }
        return {};
    default:
        return {};
    }
}

QVariant TextGridModel::colour(int row, int column, int role) const
{
    const auto judged = verdict(row, column);
    const bool isFailed = judged == TextGrid::Verdict::Failed || m_remarks.contains({row, column});
    const Shade *shade = judged == TextGrid::Verdict::Passed ? &passedShade()
                         : isFailed                          ? &failedShade()
                         : row == m_markedRow                ? &markedShade()
                                                             : nullptr;
    if (shade)
        return role == Qt::ForegroundRole ? shade->ink : shade->paper;
    if (column == 0)
        return QGuiApplication::palette().color(role == Qt::ForegroundRole ? QPalette::ButtonText
                                                                           : QPalette::Button);
    return {};
}

QVariant TextGridModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    return m_table.text(0, section).toString();
}

void TextGridModel::setTable(TextTable table)
{
    beginResetModel();
    m_table = std::move(table);
    m_judged = {};
    m_remarks.clear();
    m_markedRow = 0;
    endResetModel();
}

void TextGridModel::setText(int row, int column, QStringView text)
{
    setVerdict(row, column, TextGrid::Verdict::None);
    m_remarks.remove({row, column});
    m_table.setText(row, column, text);
    cellChanged(row, column);
}

void TextGridModel::replaceTail(int row, int column, qsizetype keep, QLatin1StringView tail)
{
    setVerdict(row, column, TextGrid::Verdict::None);
    m_table.replaceTail(row, column, keep, tail);
    cellChanged(row, column);
}

void TextGridModel::clearColumns(int first, int last)
{
    for (int row = 1; row < m_table.rowCount(); ++row) {
        for (int column = first; column <= last; ++column)
            m_table.setText(row, column, {});
    }
    for (JudgedCell &judged : m_judged) {
        if (judged.column >= first && judged.column <= last)
            judged = {};
    }
    if (rowCount() > 0)
        Q_EMIT dataChanged(index(0, first), index(rowCount() - 1, last));
}

void TextGridModel::setRowTotal(int rows)
{
    const int old = m_table.rowCount();
    if (rows > old) {
        beginInsertRows({}, old - 1, rows - 2);
        m_table.setRowCount(rows);
        endInsertRows();
    } else if (rows < old) {
        beginRemoveRows({}, rows - 1, old - 2);
        m_table.setRowCount(rows);
        m_judged.resize(std::min(m_judged.size(), static_cast<std::size_t>(rows)));
        endRemoveRows();
    }
    if (m_markedRow >= rows)
        m_markedRow = 0;
}

void TextGridModel::setColumnTotal(int columns)
{
    if (columns == m_table.columnCount())
        return;
    beginResetModel();
    m_table.setColumnCount(columns);
    endResetModel();
}

void TextGridModel::removeRow(int row)
{
    beginRemoveRows({}, row - 1, row - 1);
    m_table.removeRow(row);
    if (static_cast<std::size_t>(row) < m_judged.size())
        m_judged.erase(m_judged.begin() + row);
    m_markedRow = 0;
    endRemoveRows();
}

void TextGridModel::setMarkedRow(int row)
{
    const int old = std::exchange(m_markedRow, row);
    if (old == row)
        return;
    rowChanged(old);
    rowChanged(row);
}

TextGrid::Verdict TextGridModel::verdict(int row, int column) const
{
    const auto at = static_cast<std::size_t>(row);
    if (at >= m_judged.size() || m_judged[at].column != column)
        return TextGrid::Verdict::None;
    return m_judged[at].verdict;
}

void TextGridModel::setVerdict(int row, int column, TextGrid::Verdict verdict)
{
    if (!m_table.contains(row, column) || this->verdict(row, column) == verdict)
        return;
    const auto at = static_cast<std::size_t>(row);
    if (at >= m_judged.size())
        m_judged.resize(at + 1);
    m_judged[at] = {static_cast<quint8>(column), verdict};
    cellChanged(row, column);
}

void TextGridModel::setRemark(int row, int column, const QString &remark)
{
    if (remark.isEmpty())
        m_remarks.remove({row, column});
    else if (m_table.contains(row, column))
        m_remarks.insert({row, column}, remark);
    cellChanged(row, column);
}

void TextGridModel::cellChanged(int row, int column)
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

void TextGridModel::rowChanged(int row)
{
    if (row > 0 && row < m_table.rowCount())
        Q_EMIT dataChanged(index(row - 1, 0), index(row - 1, columnCount() - 1));
}

} // namespace corvane
