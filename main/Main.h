#pragma once

#include "main/ChannelHost.h"
#include "platform/GpibAdapterChoice.h"
#include "platform/SerialPortList.h"
#include "platform/WaitGroup.h"
#include "setup/modWinsockAPI.h"

#include <QIcon>
#include <QMainWindow>

#include <array>
#include <functional>
#include <memory>

class QAction;
class QLineEdit;
class QSplitter;
class QTabWidget;

namespace corvane {

class BoardWindows;
class Channel;
class GpibAdapterFactory;
class SetupWindows;
class StatusLine;
class SystemInfo;
class CommandListArea;
class Dialogs;
class GpibChannel;
class GpibControl;
class GuideWindow;
class Led;
class SerialChannel;
class SerialPort;
class TcpChannel;
class TcpClient;
class TrafficLog;
class TransferEngine;
struct modSBC;
class ListConnection;

/// What the main window is built on; all of it outlives the window.
struct MainParts
{
    Clock &clock;
    Dialogs &dialogs;
    Module1 &module;
    SerialPort &rs485;
    SerialPort &rs232;
    GpibControl &gpib;
    TcpClient &tcpClient1;
    TcpClient &tcpClient2;
    /// The folder that Log.txt is in and the file dialogs start in.
    QString programFolder;
    /// The adapter of each GPIB board, and what makes it.
    GpibAdapterChoices &gpibAdapters;
    const GpibAdapterFactory &gpibAdapterFactory;
    /// The serial ports there are now, by number.
    std::function<QList<SerialPortEntry>()> serialPorts;
    SystemInfo &systemInfo;
    /// What the report window remembers between its openings.
    modSBC &remembered;
    /// Looks up the computer's own IPv4 address, for as long as it takes, and hands it over in the
    /// event loop.
    std::function<void(std::function<void(const LocalAddress &)> found)> findLocalAddress;
};

/// The main window: the tabs of the five Channels above the command-list area, the menus, start-up
/// and shutdown. Its index-based handlers ignore an index outside 0..4 and pass on.
class Main : public QMainWindow, public ChannelHost
{
    Q_OBJECT

public:
    explicit Main(const MainParts &parts, QWidget *parent = nullptr);
    ~Main() override;

    /// Start-up: the defaults of every control. No Channel is opened.
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
    void WaitMs(int ms) { m_waits.wait(ms); }
    [[nodiscard]] quint32 MS_TIMER() const { return m_parts.clock.MS_TIMER(); }

    /// Loads a list file as the load button does; false when it could not be read whole.
    bool loadList(const QString &path);
    /// The list's row as one line, without its reply.
    [[nodiscard]] QString listRowText(int row) const;
    void showChannel(int index);

    /// Says something in the status bar that is no fault of a Channel; empty: no more.
    void showNote(const QString &note);

    void mnuCmdList_Click();
    void mnuHelp_Click();

    // The Channels' host.
    void commandSent(int index, const QString &command) override;
    void replyArrived(int index, qsizetype keep, QByteArrayView tail) override;
    void replyTimedOut(int index) override;
    void ResetTransferData(int index) override;
    void TimerTransfer_Timer(int index) override;
    void chkLog_Click(int index) override;
    void cmdLoadFrmChmber_Click(int index) override;
    void cmdLoadToChmber_Click(int index) override;
    void cmdStop_Click(int index) override;
    [[nodiscard]] QByteArray echoPrefix() const override;
    void reportFault(int index, const QString &description) override;
    void clearFault(int index) override;
    void showProgress(const QString &text) override;
    void noteReply(int index, const QString &note) override;
    [[nodiscard]] bool runsList(int index) const override;
    [[nodiscard]] QString channelRefusal(int index) const override;
    /// Why the GPIB search keeps others from the control; empty when it does not.
    [[nodiscard]] QString searchRefusal() const;

    /// The Channel of an index, or null for an index outside 0..4.
    [[nodiscard]] Channel *channel(int index) const;
    [[nodiscard]] SerialChannel &serialChannel(int index) const;
    [[nodiscard]] GpibChannel &gpibChannel() const { return *m_gpib; }
    [[nodiscard]] TcpChannel &tcpChannel(int index) const;
    [[nodiscard]] TransferEngine &transferEngine() const { return *m_engine; }
    [[nodiscard]] SetupWindows &setupWindows() const { return *m_setup; }
    [[nodiscard]] BoardWindows &boardWindows() const { return *m_board; }
    [[nodiscard]] const MainParts &parts() const { return m_parts; }
    [[nodiscard]] WaitGroup &waits() { return m_waits; }

    QTabWidget *tabChannels = nullptr;
    QAction *mnuPrefs = nullptr;
    QAction *mnuExit = nullptr;
    QAction *mnuCmdList = nullptr;
    QAction *mnuSBC = nullptr;
    QAction *mnuHelp = nullptr;
    QAction *mnuAboutSC = nullptr;
    StatusLine *lblFaults = nullptr;
    Led *shpLog = nullptr;
    CommandListArea *commandList = nullptr;

Q_SIGNALS:
    /// A Channel's device has a fault, or its reply is not whole, as the status bar shows it.
    void faultReported(const QString &description);
    /// What is to be known of the last load or save of a list, as the status bar shows it.
    void noted(const QString &note);
    /// The window has closed: Channels disconnected, other windows gone.
    void closed();

protected:
    bool event(QEvent *event) override;
    void closeEvent(QCloseEvent *event) override;

private:
    void buildChannels();
    void buildMenus();
    void buildStatusBar();
    void buildCommandList();
    void connectWindows();
    void showOpen(int index, bool open);
    [[nodiscard]] QList<QLineEdit *> untouchedHosts() const;
    void fitToScreen();
    void lookUpOwnAddress();
    void showOwnAddress(const LocalAddress &found);
    void loggingFailed(const QString &description);
    void shutDown();

    const MainParts m_parts;
    WaitGroup m_waits;
    std::array<Channel *, channelCount> m_channels{};
    std::array<SerialChannel *, 2> m_serial{};
    GpibChannel *m_gpib = nullptr;
    std::array<TcpChannel *, 2> m_tcp{};
    TrafficLog *m_log = nullptr;
    std::unique_ptr<ListConnection> m_listConnection;
    TransferEngine *m_engine = nullptr;
    QSplitter *m_splitter = nullptr;
    /// Of a closed and of an open Channel. Made once: the toolkit keeps the picture of every icon.
    const std::array<QIcon, 2> m_tabMarks;
    SetupWindows *m_setup = nullptr;
    BoardWindows *m_board = nullptr;
    GuideWindow *m_guide = nullptr;
    bool m_painted = false;
};

} // namespace corvane
