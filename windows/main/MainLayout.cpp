// SPDX-License-Identifier: GPL-3.0-or-later
// How the main window is put together: its tabs, list area, status bar and menus.
#include "core/channels/Reconnect.h"
#include "core/channels/TrafficLog.h"
#include "core/lists/CommandList.h"
#include "core/lists/TransferEngine.h"
#include "devices/GpibControl.h"
#include "windows/lists/CommandListArea.h"
#include "windows/lists/RunResults.h"
#include "windows/main/BoardWindows.h"
#include "windows/main/GpibTab.h"
#include "windows/main/ListDrop.h"
#include "windows/main/Main.h"
#include "windows/main/RecentLists.h"
#include "windows/main/SerialTab.h"
#include "windows/main/SetupWindows.h"
#include "windows/main/StatusLine.h"
#include "windows/main/TcpTab.h"
#include "windows/main/TrendOpener.h"
#include "windows/widgets/InputHold.h"
#include "windows/widgets/Naming.h"

#include <QApplication>
#include <QDialog>
#include <QKeyEvent>
#include <QMenuBar>
#include <QMessageBox>
#include <QShortcut>
#include <QSplitter>
#include <QStatusBar>
#include <QTabWidget>

namespace corvane {

namespace {

/// The key that closes a window closes each but the main one, dialogs too; the key for help opens
/// the guide over a dialog as well.
class WindowKeys : public QObject
{
public:
    explicit WindowKeys(Main &main)
        : QObject(&main)
        , m_main(main)
    {
    }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        auto *widget = qobject_cast<QWidget *>(watched);
        if (event->type() != QEvent::KeyPress || !widget || widget->window() == &m_main)
            return false;
        const auto *key = static_cast<QKeyEvent *>(event);
        if (key->matches(QKeySequence::Close)) {
            closeByKey(*widget->window());
            return true;
        }
        if (!key->matches(QKeySequence::HelpContents) || !QApplication::activeModalWidget())
            return false;
        m_main.mnuHelp_Click();
        return true;
    }

private:
    /// A dialog may ask before it goes, as when Esc is pressed; a box may want one of its answers.
    static void closeByKey(QWidget &window)
    {
        auto *dialog = qobject_cast<QDialog *>(&window);
        if (dialog == nullptr || qobject_cast<QMessageBox *>(dialog) != nullptr)
            window.close();
        else
            dialog->reject();
    }

    Main &m_main;
};

} // namespace

void Main::buildChannels()
{
    ChannelSet &set = m_parts.channels;
    tabChannels = named(new QTabWidget(this), u"tabChannels"_s, u"Channels"_s);
    tabChannels->setDocumentMode(true);
    m_gpib = new GpibTab(set.gpib(), this);
    m_channels = {new SerialTab(set.serial(channels::rs485), this),
                  new SerialTab(set.serial(channels::rs232), this), m_gpib,
                  new TcpTab(set.tcp(channels::tcpIp1), this),
                  new TcpTab(set.tcp(channels::tcpIp2), this)};
    for (ChannelTab *each : m_channels) {
        const int index = each->index();
        tabChannels->addTab(each, m_tabMarks.front(), each->session().caption());
        auto *shortcut = new QShortcut(QKeySequence(Qt::CTRL | Qt::Key(Qt::Key_1 + index)), this);
        connect(shortcut, &QShortcut::activated, each, [this, each] {
            tabChannels->setCurrentWidget(each);
            each->cboOut->setFocus();
        });
        const auto clicked = [this, each](QPushButton *button, void (Main::*handler)(int)) {
            connect(button, &QPushButton::clicked, this,
                    [this, handler, index = each->index()] { (this->*handler)(index); });
        };
        clicked(each->cmdLoadFrmChmber, &Main::cmdLoadFrmChmber_Click);
        clicked(each->cmdLoadToChmber, &Main::cmdLoadToChmber_Click);
        clicked(each->cmdStop, &Main::cmdStop_Click);
        connect(each, &ChannelTab::benchWanted, this, &Main::benchWanted);
        connect(each, &ChannelTab::laidOut, this, &Main::orderTabs);
    }
    m_splitter->addWidget(tabChannels);
}

/// What a Channel says goes into the window.
void Main::watch(ChannelSession &session)
{
    using Session = ChannelSession;
    const int index = session.index();
    connect(&session, &Session::openChanged, this, [this, index](bool open) {
        tabChannels->setTabIcon(index, m_tabMarks.at(open ? 1 : 0));
        lblFaults->setNote(StatusLine::About::Bench, {});
    });
    connect(&session, &Session::faultChanged, this,
            [this, index](const QString &fault) { lblFaults->setFault(index, fault); });
    connect(&session, &Session::connectFailed, this, [this, &session](const QString &reason) {
        if (!session.reconnect().isInCharge())
            lblFaults->setFault(session.index(), u"%1: %2"_s.arg(session.caption(), reason));
    });
    connect(&session, &Session::noteChanged, this,
            [this, index](const QString &note) { lblFaults->setReplyNote(index, note); });
    connect(&session.reconnect(), &Reconnect::noted, this,
            [this, index](const QString &note) { lblFaults->setReconnect(index, note); });
    connect(&session, &Session::progressChanged, statusBar(),
            [this](const QString &progress) { statusBar()->showMessage(progress); });
    connect(&session, &Session::loggedChanged, this, [this, index] { chkLog_Click(index); });
}

void Main::buildCommandList()
{
    commandList =
        new CommandListArea(m_parts.list, m_parts.channels.module(), m_parts.dialogs, this);
    connect(commandList->cmdGetList, &QPushButton::clicked, this, &Main::cmdGetList_Click);
    connect(commandList->cmdSendList, &QPushButton::clicked, this, &Main::cmdSendList_Click);
    connect(commandList->cmdStopSend, &QPushButton::clicked, this, &Main::cmdStopSend_Click);
    connect(&m_parts.list, &CommandList::replaced, this, &Main::offerGetList);
    connect(commandList, &CommandListArea::captioned, this, &QWidget::setWindowTitle);
    const auto source = [](const ChannelSession &session) {
        return TrafficLog::Source{[&session] { return session.isLogged(); },
                                  [&session] { return session.isOpen(); },
                                  [&session] { return session.response().bytes(); }};
    };
    m_log = new TrafficLog(m_parts.filesFolder + u"/Log.txt"_s,
                           source(m_parts.channels.tcp(channels::tcpIp1)),
                           source(m_parts.channels.tcp(channels::tcpIp2)), this);
    shpLog->setToolTip(u"Logging the TCP/IP Channels into "_s + m_log->place());
    connect(m_log, &TrafficLog::loggingChanged, shpLog, &QWidget::setVisible);
    connect(m_log, &TrafficLog::flashed, shpLog, &Led::setBright);
    connect(m_log, &TrafficLog::recorded, commandList, &CommandListArea::appendComment);
    connect(m_log, &TrafficLog::failed, this, &Main::loggingFailed, Qt::QueuedConnection);
    connect(m_log, &TrafficLog::shortened, this,
            [this](const QString &note) { lblFaults->setNote(StatusLine::About::Log, note); });
    using Engine = TransferEngine;
    const Engine *engine = &m_parts.engine;
    connect(engine, &Engine::aboutToStart, this,
            [this](int index) { channel(index)->applyPendingEntries(); });
    connect(engine, &Engine::runStarted, commandList, &CommandListArea::flexgridVDL_Acted);
    connect(engine, &Engine::progressChanged, commandList, &CommandListArea::showProgress);
    connect(engine, &Engine::noted, this,
            [this](const QString &note) { lblFaults->setNote(StatusLine::About::Run, note); });
    const auto showListNote = [this](const QString &note) {
        lblFaults->setNote(StatusLine::About::ListFile, note);
    };
    connect(&m_parts.list, &CommandList::noted, this, showListNote);
    connect(commandList, &CommandListArea::noted, this, showListNote);
    auto *results =
        new RunResults(m_parts.channels, m_parts.list, m_parts.engine, m_parts.dialogs, this);
    connect(results, &RunResults::changed, commandList->cmdSaveResults, &QWidget::setEnabled);
    connect(results, &RunResults::noted, this, showListNote);
    connect(commandList->cmdSaveResults, &QPushButton::clicked, results,
            [this, results] { results->save(commandList); });
    m_splitter->addWidget(commandList);
}

void Main::buildStatusBar()
{
    statusBar()->setObjectName(u"statusMain"_s);
    lblFaults = named(new StatusLine(this), u"lblFaults"_s, u"What happened to a device"_s);
    statusBar()->addWidget(lblFaults, 1);
    shpLog = new Led(this);
    named(shpLog, u"shpLog"_s, u"Logging"_s);
    statusBar()->addPermanentWidget(shpLog);
}

void Main::buildMenus()
{
    const auto addEntry = [](QMenu *menu, const QString &caption, const QString &name) {
        QAction *entry = menu->addAction(caption);
        entry->setObjectName(name);
        return entry;
    };
    QMenu *mnuFile = menuBar()->addMenu(u"&File"_s);
    QMenu *mnuView = menuBar()->addMenu(u"&View"_s);
    QMenu *mnuAbout = menuBar()->addMenu(u"&About"_s);
    mnuFile->setObjectName(u"mnuFile"_s);
    mnuView->setObjectName(u"mnuView"_s);
    mnuAbout->setObjectName(u"mnuAbout"_s);

    mnuPrefs = addEntry(mnuFile, u"&Preferences"_s, u"mnuPrefs"_s);
    mnuPrefs->setEnabled(false); // it has no action
    mnuRecent = mnuFile->addMenu(u"&Recent Lists"_s);
    mnuRecent->setObjectName(u"mnuRecent"_s);
    new RecentLists(m_parts.list, *mnuRecent, m_parts.settings, this);
    mnuExit = addEntry(mnuFile, u"&Exit"_s, u"mnuExit"_s);
    mnuExit->setShortcut(QKeySequence::Quit);
    mnuCmdList = addEntry(mnuView, u"&Command List"_s, u"mnuCmdList"_s);
    mnuCmdList->setCheckable(true);
    mnuSBC = addEntry(mnuView, u"&VXM250E"_s, u"mnuSBC"_s);
    mnuSBC->setCheckable(true);
    mnuTraffic = addEntry(mnuView, u"&Traffic"_s, u"mnuTraffic"_s);
    mnuTraffic->setShortcut(QKeySequence(u"Ctrl+T"_s));
    mnuTrend = addEntry(mnuView, u"T&rend"_s, u"mnuTrend"_s);
    mnuHelp = addEntry(mnuAbout, u"&Help"_s, u"mnuHelp"_s);
    mnuHelp->setShortcut(QKeySequence::HelpContents);
    mnuHelp->setShortcutContext(Qt::ApplicationShortcut); // about the window that has the keys
    mnuAboutSC = addEntry(mnuAbout, u"&About Corvane"_s, u"mnuAboutSC"_s);

    connect(mnuExit, &QAction::triggered, this, &QWidget::close);
    connect(mnuCmdList, &QAction::toggled, this, &Main::mnuCmdList_Click);
    connect(mnuTraffic, &QAction::triggered, this, &Main::mnuTraffic_Click);
    connect(mnuTrend, &QAction::triggered, this, &Main::mnuTrend_Click);
    qApp->installEventFilter(new WindowKeys(*this));
    connect(mnuHelp, &QAction::triggered, this, &Main::mnuHelp_Click);
}

void Main::connectWindows()
{
    for (ChannelSession *each : m_parts.channels.all())
        watch(*each);
    for (const SerialTab *each : findChildren<SerialTab *>())
        connect(each->cmdPortConfig, &QPushButton::clicked, m_setup,
                [this, index = each->index()] { m_setup->cmdPortConfig_Click(index); });
    connect(m_gpib->cmdSearchGPIB, &QPushButton::clicked, m_setup, [this] {
        m_gpib->applyPendingEntries();
        m_setup->cmdSearchGPIB_Click();
    });
    connect(m_gpib->cmdAdapter, &QPushButton::clicked, m_setup, &SetupWindows::cmdAdapter_Click);
    connect(mnuSBC, &QAction::triggered, m_board,
            [this] { m_board->mnuSBC_Click(tabChannels->currentIndex()); });
    for (const int borrowed : {channels::rs232, channels::ieee488, channels::tcpIp1})
        connect(m_board, &BoardWindows::opening, channel(borrowed),
                &ChannelTab::applyPendingEntries);
    connect(m_board, &BoardWindows::noted, lblFaults,
            [this](const QString &note) { lblFaults->setNote(StatusLine::About::Board, note); });
    connect(mnuAboutSC, &QAction::triggered, m_setup, &SetupWindows::mnuAboutSC_Click);
    new ListDrop(*this, [this](const QString &path) { m_parts.list.openIfThere(path); });
    auto *hold = new InputHold(m_parts.clock, this);
    connect(&m_parts.channels.gpib().control(), &GpibControl::busyChanged, hold,
            &InputHold::setCalling);
}

} // namespace corvane
