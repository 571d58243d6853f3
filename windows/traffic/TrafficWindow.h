// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/channels/ChannelTraits.h"
#include "core/traffic/TrafficFilter.h"
#include "windows/traffic/TrafficModel.h"
#include "windows/widgets/ControlArray.h"

#include <QWidget>

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QTableView;

namespace corvane {

class Dialogs;
class TrafficRecorder;
class TrafficSave;

/// What went over all Channels, newest at the end, followed until the user scrolls up. Recording
/// goes on whether it is open or not; it only shows.
class TrafficWindow : public QWidget
{
    Q_OBJECT

public:
    static constexpr int refreshMs = 50;
    /// Rows that can be copied at once.
    static constexpr int mostCopied = 10'000;

    /// All that is given must outlive the window.
    TrafficWindow(TrafficRecorder &recorder, Dialogs &dialogs, QWidget *parent = nullptr);
    ~TrafficWindow() override;

    void tmrRefresh_Timer();
    /// Any control of the filter was changed.
    void filter_Change();
    void cboShow_Change();
    void cboTime_Change();
    void cmdFindNext_Click() { find(true); }
    void cmdFindPrevious_Click() { find(false); }
    void cmdPause_Click();
    void cmdMark_Click();
    void cmdNextMark_Click();
    void cmdCopy_Click();
    void cmdClear_Click();
    void cmdSave_Click();

    ControlArray<QCheckBox, channelCount> chkChannel{};
    QCheckBox *chkSent = nullptr;
    QCheckBox *chkReceived = nullptr;
    QCheckBox *chkOthers = nullptr;
    QLineEdit *txtFilter = nullptr;
    QLineEdit *txtFind = nullptr;
    QComboBox *cboShow = nullptr;
    QComboBox *cboTime = nullptr;
    QPushButton *cmdFindNext = nullptr;
    QPushButton *cmdFindPrevious = nullptr;
    QPushButton *cmdPause = nullptr;
    QPushButton *cmdMark = nullptr;
    QPushButton *cmdNextMark = nullptr;
    QPushButton *cmdCopy = nullptr;
    QPushButton *cmdClear = nullptr;
    QPushButton *cmdSave = nullptr;
    QTableView *tblTraffic = nullptr;
    QLabel *lblState = nullptr;

protected:
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    void makeControls();
    void layOut();
    void makeTable();
    void addShortcuts();
    void find(bool below);
    void saved(const QString &fault);
    void findTurn();
    void goTo(int row);
    void showState();
    void say(const QString &text);
    [[nodiscard]] int currentRow() const;

    TrafficRecorder &m_recorder;
    Dialogs &m_dialogs;
    TrafficModel m_model;
    QTimer m_refresh;
    QString m_said; ///< what the last action came to
    std::unique_ptr<TrafficSave> m_save;

    /// A search that goes on in several turns of the event loop.
    TrafficSearch m_search;
    QString m_searched; ///< as it was typed
    QTimer m_findTurn;
    quint64 m_findAt = 0; ///< events from it on are still to be looked at, or those before it
    bool m_findBelow = true;
};

} // namespace corvane
