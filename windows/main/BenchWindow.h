// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

class QCheckBox;
class QComboBox;
class QLabel;
class QLayout;
class QPushButton;
class QTimer;
class QTreeWidget;

namespace corvane {

namespace bench {
class Bench;
class Desk;
} // namespace bench
class OrderEntry;

/// The window of a demonstration's simulated bench: where each device is found and what is wrong
/// with it, and every order that the bench takes. It keeps no state: it gives orders as texts and
/// shows what the bench says of itself.
class BenchWindow : public QWidget
{
    Q_OBJECT

public:
    /// `bench` is the desk when it has a board and a meter, and null when it has none. The desk
    /// must outlive the window.
    BenchWindow(bench::Desk &desk, bench::Bench *bench);

    /// Shows the window beside `main`, which keeps the keys; not at all where the screen has no
    /// room for both.
    void openBeside(const QWidget &main);

    // Event handlers
    void chkConnector_Click();
    void cboSensor_Click();
    void cmdFault_Click();
    void cmdClear_Click();
    void cmdOrder_Click();
    /// What the bench says of itself: a fault that acts once goes by itself.
    void tmrState_Timer();

    QTreeWidget *lstPlaces = nullptr;
    OrderEntry *fault = nullptr;
    QPushButton *cmdFault = nullptr;
    QPushButton *cmdClear = nullptr;
    QCheckBox *chkConnector = nullptr; ///< null without a board
    QComboBox *cboSensor = nullptr;    ///< following, then the channels 0 to 7; null likewise
    OrderEntry *order = nullptr;
    QPushButton *cmdOrder = nullptr;
    QLabel *lblState = nullptr;
    QLabel *lblAnswer = nullptr;
    QTimer *tmrState = nullptr;

protected:
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    QWidget *createFaults();
    QWidget *createOrders();
    QLayout *createBoard();
    void fillPlaces();
    void give(const QString &text);

    bench::Desk &m_desk;
    bench::Bench *m_bench;
};

} // namespace corvane
