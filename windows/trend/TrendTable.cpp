// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/trend/TrendTable.h"

#include "core/trend/TrendSeries.h"
#include "windows/trend/TrendPlot.h"
#include "windows/widgets/Naming.h"

#include <QEvent>
#include <QHeaderView>
#include <QPainter>

namespace corvane {

namespace {

const QStringList titles{u"Shown"_s,   u"Channel"_s, u"Command"_s, u"Last"_s, u"Minimum"_s,
                         u"Maximum"_s, u"Mean"_s,    u"Count"_s,   u"Unit"_s};
constexpr QSize lineSize{44, 12};

QString number(double value)
{
    constexpr int digits = 8;
    return QString::number(value, 'g', digits);
}

} // namespace

TrendTable::TrendTable(const TrendSeries &series, TrendPlot &plot, QWidget *parent)
    : QTableWidget(0, static_cast<int>(titles.size()), parent)
    , m_series(series)
    , m_plot(plot)
{
    setHorizontalHeaderLabels(titles);
    verticalHeader()->hide();
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 6);
    setSelectionBehavior(SelectRows);
    setSelectionMode(SingleSelection);
    setEditTriggers(NoEditTriggers);
    setTabKeyNavigation(false);
    setIconSize(lineSize);
    setWordWrap(false);
    const int digits = fontMetrics().horizontalAdvance(u"-0.00000000e+00"_s);
    for (const int column : {Last, Lowest, Highest, Mean})
        setColumnWidth(column, digits);
    setColumnWidth(Shown, lineSize.width() + 36);
    setColumnWidth(Channel, fontMetrics().horizontalAdvance(u"IEEE 488 GPIB0::12 "_s) + 8);
    setColumnWidth(Count, fontMetrics().horizontalAdvance(u"10000000"_s) + 8);
    setColumnWidth(Unit, fontMetrics().horizontalAdvance(u"00000000"_s));
    horizontalHeader()->setSectionResizeMode(Command, QHeaderView::Stretch);
    connect(this, &QTableWidget::itemChanged, this, &TrendTable::cellChecked);
}

void TrendTable::refresh()
{
    if (std::exchange(m_shown, m_series.version()) == m_series.version())
        return;
    const QSignalBlocker quiet(this);
    const auto &curves = m_series.curves();
    if (rowCount() > std::ssize(curves))
        setRowCount(0);
    const int before = rowCount();
    while (rowCount() < std::ssize(curves))
        addRow(curves[static_cast<size_t>(rowCount())]);
    for (int row = 0; row < rowCount(); ++row)
        fillRow(row, curves[static_cast<size_t>(row)]);
    if (rowCount() != before)
        showLines();
    viewport()->update();
}

void TrendTable::addRow(const TrendCurve &curve)
{
    const int row = rowCount();
    insertRow(row);
    for (int column = 0; column < columnCount(); ++column) {
        auto *cell = new QTableWidgetItem;
        const bool isNumber = column >= Last && column <= Count;
        cell->setTextAlignment((isNumber ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
        setItem(row, column, cell);
    }
    item(row, Channel)->setText(curve.source().place());
    item(row, Command)->setText(curve.source().question());
    item(row, Command)->setToolTip(curve.source().question());
    const bool shown = row < shownAtFirst;
    item(row, Shown)->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
    item(row, Shown)->setCheckState(shown ? Qt::Checked : Qt::Unchecked);
    item(row, Shown)
        ->setData(Qt::AccessibleTextRole,
                  u"Show %1 %2"_s.arg(curve.source().place(), curve.source().question()));
    if (!shown)
        m_plot.setShown(row, false);
}

void TrendTable::fillRow(int row, const TrendCurve &curve)
{
    const QString count = QString::number(curve.count());
    if (item(row, Count)->text() == count)
        return;
    item(row, Count)->setText(count);
    item(row, Last)->setText(number(curve.last().value));
    item(row, Lowest)->setText(number(curve.lowest()));
    item(row, Highest)->setText(number(curve.highest()));
    item(row, Mean)->setText(number(curve.mean()));
    item(row, Unit)->setText(curve.unit());
}

/// The piece of line in front of each row.
void TrendTable::showLines()
{
    const qreal ratio = devicePixelRatioF();
    for (int row = 0; row < rowCount(); ++row) {
        QPixmap picture(lineSize * ratio);
        picture.setDevicePixelRatio(ratio);
        picture.fill(Qt::transparent);
        QPainter painter(&picture);
        QPen pen = m_plot.line(row);
        pen.setWidthF(2);
        painter.setPen(pen);
        painter.drawLine(0, lineSize.height() / 2, lineSize.width(), lineSize.height() / 2);
        painter.end();
        item(row, Shown)->setIcon(picture);
    }
}

void TrendTable::cellChecked(const QTableWidgetItem *item)
{
    if (item->column() == Shown)
        m_plot.setShown(item->row(), item->checkState() == Qt::Checked);
}

bool TrendTable::event(QEvent *event)
{
    if (event->type() == QEvent::PaletteChange) {
        const QSignalBlocker quiet(this);
        showLines();
    }
    return QTableWidget::event(event);
}

} // namespace corvane
