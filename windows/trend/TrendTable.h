// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QTableWidget>

namespace corvane {

class TrendCurve;
class TrendPlot;
class TrendSeries;

/// The curves of a series, a row each: whether it is shown, how it is drawn, and what is known of
/// its numbers.
class TrendTable : public QTableWidget
{
    Q_OBJECT

public:
    enum Column { Shown, Channel, Command, Last, Lowest, Highest, Mean, Count, Unit };
    /// As many curves are shown from the beginning; more would hide each other.
    static constexpr int shownAtFirst = 12;

    /// Both must outlive the table.
    TrendTable(const TrendSeries &series, TrendPlot &plot, QWidget *parent = nullptr);

    /// Takes over what the series has got since.
    void refresh();

protected:
    bool event(QEvent *event) override;

private:
    void addRow(const TrendCurve &curve);
    void fillRow(int row, const TrendCurve &curve);
    void showLines();
    void cellChecked(const QTableWidgetItem *item);

    const TrendSeries &m_series;
    TrendPlot &m_plot;
    quint64 m_shown = 0; ///< the series' version
};

} // namespace corvane
