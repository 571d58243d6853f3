#pragma once

#include "windows/widgets/TextGrid.h"

#include <QAbstractTableModel>
#include <QHash>

#include <optional>

namespace corvane {

/// The cells of a TextGrid for its view: the table, the verdicts and the marked row. The table's
/// row 0 is the model's header, so the model's row n is the table's row n + 1; all calls but Qt's
/// own count as the table does.
class TextGridModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    /// A cell shows this many characters at most: laying out a reply of megabytes would stall the
    /// window, and no column is that wide.
    static constexpr qsizetype shownCharacters = 1000;

    explicit TextGridModel(QObject *parent = nullptr);

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                      int role) const override;

    [[nodiscard]] const TextTable &table() const { return m_table; }
    void setTable(TextTable table);
    void setText(int row, int column, QStringView text);
    void replaceTail(int row, int column, qsizetype keep, QLatin1StringView tail);
    void clearColumns(int first, int last);
    void setRowTotal(int rows);
    void setColumnTotal(int columns);
    void removeRow(int row);

    [[nodiscard]] int markedRow() const { return m_markedRow; }
    void setMarkedRow(int row);
    [[nodiscard]] TextGrid::Verdict verdict(int row, int column) const;
    void setVerdict(int row, int column, TextGrid::Verdict verdict);

    [[nodiscard]] QString remark(int row, int column) const
    {
        return m_remarks.value({row, column});
    }
    void setRemark(int row, int column, const QString &remark);

private:
    struct JudgedCell
    {
        quint8 column = 0;
        TextGrid::Verdict verdict = TextGrid::Verdict::None;
    };

    [[nodiscard]] QVariant colour(int row, int column, int role) const;
    void cellChanged(int row, int column);
    void rowChanged(int row);

    TextTable m_table{1, 1};
    std::vector<JudgedCell> m_judged; // as long as the last judged row needs
    int m_markedRow = 0;
    QHash<std::pair<int, int>, QString> m_remarks; // few, in a grid that has any
};

} // namespace corvane
