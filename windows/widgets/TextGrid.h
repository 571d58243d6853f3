// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/text/GridModel.h"

#include <QTableView>

namespace corvane {

/// The toolkit's text grid: shows a GridModel, its row 0 as the header, and navigates; what an edit
/// does is its owner's: the grid only asks for it.
///
/// Appending a row and setting a cell take the same time however long the grid is.
class TextGrid : public QTableView
{
    Q_OBJECT

public:
    /// The model must outlive the grid.
    explicit TextGrid(GridModel &model, QWidget *parent = nullptr);
    ~TextGrid() override;

    [[nodiscard]] GridModel &cells() const { return m_model; }
    /// Where the cell is shown, in coordinates of the viewport.
    [[nodiscard]] QRect cellRect(int row, int column) const;

Q_SIGNALS:
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
    void showCurrentCell(int row, int column);

    GridModel &m_model;
};

} // namespace corvane
