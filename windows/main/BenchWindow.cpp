#include "windows/main/BenchWindow.h"

#include "bench/Bench.h"
#include "bench/BenchOrders.h"
#include "windows/main/OrderEntry.h"
#include "windows/widgets/Naming.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QTimer>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace corvane {

using bench::BenchOrders;
using bench::BoardAnalog;
using bench::Fault;
using bench::OrderText;

namespace {

constexpr int stateEveryMs = 300;
/// What a window manager puts around a window, at most.
constexpr int frameWidth = 12;

enum Column { Place, Device, State };

const QString connectorWord = QStringLiteral("connector");
const QString sensorWord = QStringLiteral("sensor");
const QString clearWord = QStringLiteral("clear");

/// The orders that have no control of their own here.
std::vector<OrderText> otherOrders()
{
    std::vector<OrderText> orders = BenchOrders::choices();
    std::erase_if(orders, [](const OrderText &order) {
        return order.word == connectorWord || order.word == sensorWord || order.word == clearWord;
    });
    return orders;
}

QString faultPresets(const QString &word)
{
    const auto fault = Fault::parse(word);
    return fault ? fault->toString().section(u' ', 1) : QString();
}

} // namespace

BenchWindow::BenchWindow(bench::Bench &bench)
    : m_bench(bench)
{
    setObjectName(QStringLiteral("BenchWindow"));
    setWindowTitle(tr("Simulated bench"));
    lblState = named(new QLabel, QStringLiteral("lblState"), tr("State of the bench"));
    lblAnswer = named(new QLabel, QStringLiteral("lblAnswer"), tr("The bench's answer"));
    for (QLabel *label : {lblState, lblAnswer}) {
        label->setWordWrap(true);
        label->setTextFormat(Qt::PlainText);
        label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    }
    auto *rows = new QVBoxLayout(this);
    rows->addWidget(createFaults(), 1);
    rows->addWidget(createBoard());
    rows->addWidget(lblAnswer);
    tmrState = new QTimer(this);
    tmrState->setInterval(stateEveryMs);
    connect(tmrState, &QTimer::timeout, this, &BenchWindow::tmrState_Timer);
    tmrState_Timer();
}

QWidget *BenchWindow::createFaults()
{
    lstPlaces = named(new QTreeWidget, QStringLiteral("lstPlaces"), tr("Places of the bench"));
    lstPlaces->setHeaderLabels({tr("Place"), tr("Device"), tr("Fault, and who is connected")});
    lstPlaces->setRootIsDecorated(false);
    lstPlaces->setUniformRowHeights(true);
    fillPlaces();
    fault = new OrderEntry(QStringLiteral("Fault"), tr("Fault"), Fault::choices(), faultPresets);
    cmdFault = named(new QPushButton(tr("&Order")), QStringLiteral("cmdFault"),
                     tr("Order the fault at the selected place"));
    cmdClear = named(new QPushButton(tr("C&lear All")), QStringLiteral("cmdClear"),
                     tr("Clear all faults"));
    auto *frame = new QGroupBox(tr("Faults: select a place and order one"));
    auto *grid = new QGridLayout(frame);
    grid->addWidget(lstPlaces, 0, 0, 1, 3);
    grid->addWidget(fault, 1, 0);
    grid->addWidget(cmdFault, 1, 1, Qt::AlignTop);
    grid->addWidget(cmdClear, 1, 2, Qt::AlignTop);
    grid->setColumnStretch(0, 1);
    connect(cmdFault, &QPushButton::clicked, this, &BenchWindow::cmdFault_Click);
    connect(cmdClear, &QPushButton::clicked, this, &BenchWindow::cmdClear_Click);
    return frame;
}

void BenchWindow::fillPlaces()
{
    for (const bench::Bench::Place &place : m_bench.places()) {
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

QWidget *BenchWindow::createBoard()
{
    chkConnector =
        named(new QCheckBox(tr("Loop-back &connector fitted")), QStringLiteral("chkConnector"));
    cboSensor = named(new QComboBox, QStringLiteral("cboSensor"), tr("The meter's sensor"));
    cboSensor->addItem(tr("follows the board's DACs"));
    for (int channel = 0; channel < BoardAnalog::channelCount; ++channel)
        cboSensor->addItem(tr("stays on channel %1").arg(channel));
    auto *sensorLabel = new QLabel(tr("Meter's &sensor:"));
    sensorLabel->setBuddy(cboSensor);
    order = new OrderEntry(QStringLiteral("Order"), tr("Order"), otherOrders());
    cmdOrder =
        named(new QPushButton(tr("O&rder")), QStringLiteral("cmdOrder"), tr("Give the order"));
    auto *frame = new QGroupBox(tr("Board and meter"));
    auto *first = new QHBoxLayout;
    first->addWidget(chkConnector);
    first->addStretch();
    first->addWidget(sensorLabel);
    first->addWidget(cboSensor);
    auto *second = new QHBoxLayout;
    second->addWidget(order, 1);
    second->addWidget(cmdOrder, 0, Qt::AlignTop);
    auto *rows = new QVBoxLayout(frame);
    rows->addLayout(first);
    rows->addLayout(second);
    rows->addWidget(lblState);
    connect(chkConnector, &QCheckBox::clicked, this, &BenchWindow::chkConnector_Click);
    connect(cboSensor, &QComboBox::activated, this, &BenchWindow::cboSensor_Click);
    connect(cmdOrder, &QPushButton::clicked, this, &BenchWindow::cmdOrder_Click);
    return frame;
}

void BenchWindow::openWindow()
{
    show();
    raise();
    activateWindow();
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
    give(connectorWord +
         (chkConnector->isChecked() ? QStringLiteral(" on") : QStringLiteral(" off")));
}

void BenchWindow::cboSensor_Click()
{
    const int channel = cboSensor->currentIndex() - 1;
    give(sensorWord + u' ' + (channel < 0 ? QStringLiteral("follow") : QString::number(channel)));
}

void BenchWindow::cmdFault_Click()
{
    give(lstPlaces->currentItem()->text(Place) + u' ' + fault->text());
}

void BenchWindow::cmdClear_Click()
{
    give(clearWord);
}

void BenchWindow::cmdOrder_Click()
{
    give(order->text());
}

void BenchWindow::give(const QString &text)
{
    lblAnswer->setText(QStringLiteral("%1: %2").arg(text, m_bench.order(text)));
    tmrState_Timer();
}

void BenchWindow::tmrState_Timer()
{
    for (int row = 0; row < lstPlaces->topLevelItemCount(); ++row)
        lstPlaces->topLevelItem(row)->setText(
            State, m_bench.places().at(static_cast<size_t>(row)).state());
    const bench::Meter &meter = m_bench.meter();
    chkConnector->setChecked(m_bench.board().ports().connector());
    cboSensor->setCurrentIndex(meter.isSensorPinned() ? meter.sensorChannel() + 1 : 0);
    lblState->setText(m_bench.state());
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
