// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/main/BenchWindow.h"

#include "bench/Bench.h"
#include "windows/main/OrderEntry.h"
#include "windows/widgets/Controls.h"
#include "windows/widgets/ScrollPage.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QScreen>
#include <QShortcut>
#include <QTimer>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace corvane {

using namespace controls;
using bench::BoardAnalog;
using bench::Fault;
using bench::OrderText;

namespace {

constexpr int stateEveryMs = 300;
/// What a window manager puts around a window, at most.
constexpr int frameWidth = 12;

enum Column { Place, Device, State };

const QString connectorWord = u"connector"_s;
const QString sensorWord = u"sensor"_s;

/// The orders that have no control of their own here.
std::vector<OrderText> otherOrders(bench::Desk &desk)
{
    std::vector<OrderText> texts;
    for (const bench::DeskOrder &order : desk.ownOrders()) {
        if (order.text.word != connectorWord && order.text.word != sensorWord)
            texts.push_back(order.text);
    }
    return texts;
}

QString faultPresets(const QString &word)
{
    const auto fault = Fault::parse(word);
    return fault ? fault->toString().section(u' ', 1) : QString();
}

} // namespace

BenchWindow::BenchWindow(bench::Desk &desk, bench::Bench *bench)
    : m_desk(desk)
    , m_bench(bench)
{
    setObjectName(u"BenchWindow"_s);
    setWindowTitle(u"Simulated bench"_s);
    lblState = note(u"lblState"_s, u"State of the bench"_s);
    lblAnswer = note(u"lblAnswer"_s, u"The bench's answer"_s);
    for (QLabel *label : {lblState, lblAnswer})
        label->setTextFormat(Qt::PlainText);
    auto *rows = new QVBoxLayout(this);
    rows->addWidget(createFaults(), 1);
    rows->addWidget(createOrders());
    rows->addWidget(lblAnswer);
    ScrollPage::wrap(*this);
    connect(new QShortcut(Qt::Key_Escape, this), &QShortcut::activated, this, &QWidget::close);
    tmrState = new QTimer(this);
    tmrState->setInterval(stateEveryMs);
    connect(tmrState, &QTimer::timeout, this, &BenchWindow::tmrState_Timer);
    tmrState_Timer();
}

QWidget *BenchWindow::createFaults()
{
    lstPlaces = named(new QTreeWidget, u"lstPlaces"_s, u"Places of the bench"_s);
    lstPlaces->setHeaderLabels({u"Place"_s, u"Device"_s, u"Fault, and who is connected"_s});
    lstPlaces->setRootIsDecorated(false);
    lstPlaces->setUniformRowHeights(true);
    fillPlaces();
    fault = new OrderEntry(u"Fault"_s, u"Fault"_s, Fault::choices(), faultPresets);
    cmdFault = button(u"&Order"_s, u"cmdFault"_s, u"Order the fault at the selected place"_s, this,
                      &BenchWindow::cmdFault_Click);
    cmdClear = button(u"C&lear All"_s, u"cmdClear"_s, u"Clear all faults"_s, this,
                      &BenchWindow::cmdClear_Click);
    auto *box = new QGroupBox(u"Faults: select a place and order one"_s);
    auto *grid = new QGridLayout(box);
    grid->addWidget(lstPlaces, 0, 0, 1, 3);
    grid->addWidget(fault, 1, 0);
    grid->addWidget(cmdFault, 1, 1, Qt::AlignTop);
    grid->addWidget(cmdClear, 1, 2, Qt::AlignTop);
    grid->setColumnStretch(0, 1);
    return box;
}

void BenchWindow::fillPlaces()
{
    for (const bench::Bench::Place &place : m_desk.places()) {
        auto *row = new QTreeWidgetItem(lstPlaces, {place.name, place.what});
        for (const int column : {Place, Device, State})
            row->setToolTip(column, place.where);
    }
    lstPlaces->setCurrentItem(lstPlaces->topLevelItem(0));
    for (const int column : {Place, Device})
        lstPlaces->resizeColumnToContents(column);
    const int rows = lstPlaces->topLevelItemCount() + 1;
    lstPlaces->setMinimumHeight(rows * (fontMetrics().height() + 3));
}

QWidget *BenchWindow::createOrders()
{
    auto *box = new QGroupBox(m_bench ? u"Board and meter"_s : u"Replayed recording"_s);
    order = new OrderEntry(u"Order"_s, u"Order"_s, otherOrders(m_desk));
    cmdOrder =
        button(u"O&rder"_s, u"cmdOrder"_s, u"Give the order"_s, this, &BenchWindow::cmdOrder_Click);
    auto *second = new QHBoxLayout;
    second->addWidget(order, 1);
    second->addWidget(cmdOrder, 0, Qt::AlignTop);
    auto *rows = new QVBoxLayout(box);
    if (m_bench)
        rows->addLayout(createBoard());
    rows->addLayout(second);
    rows->addWidget(lblState);
    return box;
}

QLayout *BenchWindow::createBoard()
{
    chkConnector = named(new QCheckBox(u"Loop-back &connector fitted"_s), u"chkConnector"_s);
    cboSensor = named(new QComboBox, u"cboSensor"_s, u"The meter's sensor"_s);
    cboSensor->addItem(u"follows the board's DACs"_s);
    for (int channel = 0; channel < BoardAnalog::channelCount; ++channel)
        cboSensor->addItem(u"stays on channel %1"_s.arg(channel));
    auto *sensorLabel = new QLabel(u"Meter's &sensor:"_s);
    sensorLabel->setBuddy(cboSensor);
    connect(chkConnector, &QCheckBox::clicked, this, &BenchWindow::chkConnector_Click);
    connect(cboSensor, &QComboBox::activated, this, &BenchWindow::cboSensor_Click);
    return row({chkConnector, nullptr, sensorLabel, cboSensor});
}

void BenchWindow::openBeside(const QWidget &main)
{
    const QRect screen = main.screen()->availableGeometry();
    const QRect taken = main.frameGeometry();
    const int width = sizeHint().width() + frameWidth;
    const bool right = screen.right() - taken.right() >= width;
    if (!right && taken.left() - screen.left() < width)
        return;
    move(right ? taken.right() + 1 : taken.left() - width, taken.top());
    setAttribute(Qt::WA_ShowWithoutActivating);
    show();
    setAttribute(Qt::WA_ShowWithoutActivating, false);
}

void BenchWindow::chkConnector_Click()
{
    give(connectorWord + (chkConnector->isChecked() ? u" on"_s : u" off"_s));
}

void BenchWindow::cboSensor_Click()
{
    const int channel = cboSensor->currentIndex() - 1;
    give(sensorWord + u' ' + (channel < 0 ? u"follow"_s : QString::number(channel)));
}

void BenchWindow::cmdFault_Click()
{
    give(lstPlaces->currentItem()->text(Place) + u' ' + fault->text());
}

void BenchWindow::cmdClear_Click()
{
    give(u"clear"_s);
}

void BenchWindow::cmdOrder_Click()
{
    give(order->text());
}

void BenchWindow::give(const QString &text)
{
    lblAnswer->setText(u"%1: %2"_s.arg(text, m_desk.order(text)));
    tmrState_Timer();
}

void BenchWindow::tmrState_Timer()
{
    for (int row = 0; row < lstPlaces->topLevelItemCount(); ++row)
        lstPlaces->topLevelItem(row)->setText(State,
                                              m_desk.places().at(static_cast<size_t>(row)).state());
    lblState->setText(m_desk.state());
    if (!m_bench)
        return;
    const bench::Meter &meter = m_bench->meter();
    chkConnector->setChecked(m_bench->board().ports().connector());
    cboSensor->setCurrentIndex(meter.isSensorPinned() ? meter.sensorChannel() + 1 : 0);
}

void BenchWindow::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    tmrState_Timer();
    tmrState->start();
}

void BenchWindow::hideEvent(QHideEvent *event)
{
    tmrState->stop();
    QWidget::hideEvent(event);
}

} // namespace corvane
