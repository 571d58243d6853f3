// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/channels/ChannelSet.h"
#include "core/setup/modWinsockAPI.h"
#include "devices/GpibAdapterChoice.h"

#include <QIcon>
#include <QMainWindow>

#include <array>
#include <functional>
#include <memory>

class QAction;
class QLineEdit;
class QMenu;
class QSettings;
class QSplitter;
class QTabWidget;

namespace corvane {

class BoardWindows;
class ChannelTab;
class GpibAdapterFactory;
class SetupWindows;
class StatusLine;
class SystemInfo;
class CommandList;
class CommandListArea;
class Dialogs;
class GpibTab;
class Led;
class SerialTab;
class TcpTab;
class TrafficLog;
class TrafficRecorder;
class TrafficWindow;
class TransferEngine;
class TrendOpener;
struct modSBC;

/// What the main window is built on; all of it outlives the window.
struct MainParts
{
    Clock &clock;
    Dialogs &dialogs;
    ChannelSet &channels;
    CommandList &list;
    TransferEngine &engine;
    TrafficRecorder &traffic;
    /// Keeps what is remembered from one session to the next; null: nothing is.
    QSettings *settings = nullptr;
    /// The folder that the program is in, with its modules.
    QString programFolder;
    /// The folder that Log.txt is in and the file dialogs start in.
    QString filesFolder;
    /// The adapter of each GPIB board, and what makes it.
    GpibAdapterChoices &gpibAdapters;
    const GpibAdapterFactory &gpibAdapterFactory;
    SystemInfo &systemInfo;
    /// What the report window remembers between its openings.
    modSBC &remembered;
    /// Looks up the computer's own IPv4 address, for as long as it takes, and hands it over in the
    /// event loop.
    std::function<void(std::function<void(const LocalAddress &)> found)> findLocalAddress;
};

/// The main window: the tabs of the Channels above the command-list area, the menus, start-up
/// and shutdown. Its index-based handlers ignore an index outside the Channels and pass on.
class Main : public QMainWindow
{
    Q_OBJECT

public:
    explicit Main(const MainParts &parts, QWidget *parent = nullptr);
    ~Main() override;

    /// Start-up: the defaults of every Channel and control. No Channel is opened.
    void Form_Load();
    /// The user-interface reset: the logging indicator, the host and port entries. A host entry
    /// that is still untouched when the window has been painted gets the computer's own address.
    void resetUserInterface();

    void cmdConnect_Click(int index);
    void cmdDisconnect_Click(int index);
    void cmdSend_Click(int index);
    /// The send operation for callers outside the window.
    void cmdSend_Click_Public(int index) { cmdSend_Click(index); }
    void cmdIDN_Click(int index);
    void cmdSystErr_Click(int index);
    void Timer1_Timer(int index);
    /// Waits `ms` milliseconds, events being processed; at once when ms is below 1.
    void WaitMs(int ms) { waits().wait(ms); }
    [[nodiscard]] quint32 MS_TIMER() const { return m_parts.clock.MS_TIMER(); }

    void showChannel(int index);

    /// The simulated bench is there: it is offered no more.
    void withdrawBench();
    /// Says in the status bar that the recording of the traffic has ended.
    void showRecordingFault(const QString &fault);

    void mnuCmdList_Click();
    void mnuTraffic_Click();
    void mnuTrend_Click();
    void mnuHelp_Click();

    void cmdGetList_Click();
    void cmdSendList_Click();
    void cmdStopSend_Click();
    void ResetTransferData(int index);
    void TimerTransfer_Timer(int index);
    void chkLog_Click(int index);
    void cmdLoadFrmChmber_Click(int index);
    void cmdLoadToChmber_Click(int index);
    void cmdStop_Click(int index) { ResetTransferData(index); }

    /// The tab of a Channel, or null for an index outside the Channels.
    [[nodiscard]] ChannelTab *channel(int index) const;
    [[nodiscard]] SerialTab &serialTab(int index) const;
    [[nodiscard]] GpibTab &gpibTab() const { return *m_gpib; }
    [[nodiscard]] TcpTab &tcpTab(int index) const;
    [[nodiscard]] SetupWindows &setupWindows() const { return *m_setup; }
    [[nodiscard]] BoardWindows &boardWindows() const { return *m_board; }
    /// Null until it is first opened.
    [[nodiscard]] TrafficWindow *trafficWindow() const { return m_trafficWindow; }
    [[nodiscard]] const MainParts &parts() const { return m_parts; }
    [[nodiscard]] WaitGroup &waits() const { return m_parts.channels.waits(); }

    QTabWidget *tabChannels = nullptr;
    QAction *mnuPrefs = nullptr;
    QMenu *mnuRecent = nullptr;
    QAction *mnuExit = nullptr;
    QAction *mnuCmdList = nullptr;
    QAction *mnuSBC = nullptr;
    QAction *mnuTraffic = nullptr;
    QAction *mnuTrend = nullptr;
    QAction *mnuHelp = nullptr;
    QAction *mnuAboutSC = nullptr;
    StatusLine *lblFaults = nullptr;
    Led *shpLog = nullptr;
    CommandListArea *commandList = nullptr;

Q_SIGNALS:
    /// The window has closed: Channels disconnected, other windows gone.
    void closed();
    /// The user wants the simulated bench behind the Channels.
    void benchWanted();

protected:
    bool event(QEvent *event) override;
    void closeEvent(QCloseEvent *event) override;

private:
    void buildChannels();
    void buildMenus();
    void buildStatusBar();
    void buildCommandList();
    void connectWindows();
    void orderTabs();
    void offerGetList();
    void watch(ChannelSession &session);
    [[nodiscard]] QList<QLineEdit *> untouchedHosts() const;
    void lookUpOwnAddress();
    void showOwnAddress(const LocalAddress &found);
    void loggingFailed(const QString &description);
    void shutDown();
    void pass(int index, void (ChannelTab::*handler)()) const;

    const MainParts m_parts;
    std::array<ChannelTab *, channelCount> m_channels{};
    GpibTab *m_gpib = nullptr;
    TrafficLog *m_log = nullptr;
    QSplitter *m_splitter = nullptr;
    /// Of a closed and of an open Channel. Made once: the toolkit keeps the picture of every icon.
    const std::array<QIcon, 2> m_tabMarks;
    SetupWindows *m_setup = nullptr;
    BoardWindows *m_board = nullptr;
    TrafficWindow *m_trafficWindow = nullptr;
    std::unique_ptr<TrendOpener> m_trend;
    bool m_painted = false;
};

} // namespace corvane
