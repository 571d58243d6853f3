// How the main window is put together: its tabs, list area, status bar and menus.
#include "core/channels/ChannelTexts.h"
#include "devices/GpibControl.h"
#include "devices/SerialPort.h"
#include "devices/TcpClient.h"
#include "windows/lists/CommandListArea.h"
#include "windows/lists/TransferEngine.h"
#include "windows/main/BoardWindows.h"
#include "windows/main/GpibChannel.h"
#include "windows/main/ListConnection.h"
#include "windows/main/Main.h"
#include "windows/main/SerialChannel.h"
#include "windows/main/SetupWindows.h"
#include "windows/main/StatusLine.h"
#include "windows/main/TcpChannel.h"
#include "windows/main/TrafficLog.h"
#include "windows/widgets/InputHold.h"
#include "windows/widgets/Naming.h"

#include <QLabel>
#include <QMenuBar>
#include <QShortcut>
#include <QSplitter>
#include <QStatusBar>
#include <QTabWidget>

namespace corvane {

void Main::buildChannels()
{
    const ChannelContext context{*this, m_parts.module, m_parts.dialogs, m_waits};
    tabChannels = new QTabWidget(this);
    named(tabChannels, QStringLiteral("tabChannels"), tr("Channels"));
    tabChannels->setDocumentMode(true);
    m_serial = {new SerialChannel(channels::rs485, m_parts.rs485, context, this),
                new SerialChannel(channels::rs232, m_parts.rs232, context, this)};
    m_gpib = new GpibChannel(channels::ieee488, m_parts.gpib, context, this);
    m_tcp = {new TcpChannel(channels::tcpIp1, m_parts.tcpClient1, context, this),
             new TcpChannel(channels::tcpIp2, m_parts.tcpClient2, context, this)};
    m_channels = {m_serial[0], m_serial[1], m_gpib, m_tcp[0], m_tcp[1]};
    for (Channel *each : m_channels) {
        const int index = each->index();
        tabChannels->addTab(each, m_tabMarks.front(),
                            channelTexts::channelCaptions.at(static_cast<size_t>(index)));
        connect(each, &Channel::openChanged, this,
                [this, index](bool open) { showOpen(index, open); });
        auto *shortcut = new QShortcut(QKeySequence(Qt::CTRL | Qt::Key(Qt::Key_1 + index)), this);
        connect(shortcut, &QShortcut::activated, tabChannels,
                [this, index] { tabChannels->setCurrentIndex(index); });
    }
    m_splitter->addWidget(tabChannels);
}

void Main::buildCommandList()
{
    m_listConnection = std::make_unique<ListConnection>(*this);
    commandList = new CommandListArea(m_parts.module, *m_listConnection, m_parts.dialogs, this);
    m_engine =
        new TransferEngine(m_parts.module, *commandList, *m_listConnection, m_parts.dialogs, this);
    const auto source = [](const TcpChannel *channel) {
        return TrafficLog::Source{[channel] { return channel->chkLog->isChecked(); },
                                  [channel] { return channel->isOpen(); },
                                  [channel] { return channel->txtIn->bytes(); }};
    };
    m_log = new TrafficLog(m_parts.programFolder + QStringLiteral("/Log.txt"), source(m_tcp[0]),
                           source(m_tcp[1]), *commandList->txtVDL, *shpLog, this);
    connect(m_log, &TrafficLog::failed, this, &Main::loggingFailed, Qt::QueuedConnection);
    connect(m_log, &TrafficLog::shortened, this,
            [this](const QString &note) { lblFaults->setNote(StatusLine::About::Log, note); });
    connect(m_engine, &TransferEngine::noted, this,
            [this](const QString &note) { lblFaults->setNote(StatusLine::About::Run, note); });
    connect(commandList, &CommandListArea::noted, this, [this](const QString &note) {
        lblFaults->setNote(StatusLine::About::ListFile, note);
        if (!note.isEmpty())
            Q_EMIT noted(note);
    });
    m_splitter->addWidget(commandList);
}

void Main::buildStatusBar()
{
    statusBar()->setObjectName(QStringLiteral("statusMain"));
    lblFaults =
        named(new StatusLine(this), QStringLiteral("lblFaults"), tr("What happened to a device"));
    statusBar()->addWidget(lblFaults, 1);
    shpLog = new Led(this);
    named(shpLog, QStringLiteral("shpLog"), tr("Logging"));
    shpLog->setToolTip(tr("Logging the TCP/IP Channels"));
    statusBar()->addPermanentWidget(shpLog);
}

void Main::buildMenus()
{
    const auto addEntry = [](QMenu *menu, const QString &caption, const QString &name) {
        QAction *entry = menu->addAction(caption);
        entry->setObjectName(name);
        return entry;
    };
    QMenu *mnuFile = menuBar()->addMenu(tr("&File"));
    QMenu *mnuView = menuBar()->addMenu(tr("&View"));
    QMenu *mnuAbout = menuBar()->addMenu(tr("&About"));
    mnuFile->setObjectName(QStringLiteral("mnuFile"));
    mnuView->setObjectName(QStringLiteral("mnuView"));
    mnuAbout->setObjectName(QStringLiteral("mnuAbout"));

    mnuPrefs = addEntry(mnuFile, tr("&Preferences"), QStringLiteral("mnuPrefs"));
    mnuPrefs->setEnabled(false); // it has no action
    mnuExit = addEntry(mnuFile, tr("&Exit"), QStringLiteral("mnuExit"));
    mnuExit->setShortcut(QKeySequence::Quit);
    mnuCmdList = addEntry(mnuView, tr("&Command List"), QStringLiteral("mnuCmdList"));
    mnuCmdList->setCheckable(true);
    mnuSBC = addEntry(mnuView, tr("&VXM250E"), QStringLiteral("mnuSBC"));
    mnuSBC->setCheckable(true);
    mnuHelp = addEntry(mnuAbout, tr("&Help"), QStringLiteral("mnuHelp"));
    mnuHelp->setShortcut(QKeySequence::HelpContents);
    mnuAboutSC = addEntry(mnuAbout, tr("&About Corvane"), QStringLiteral("mnuAboutSC"));

    connect(mnuExit, &QAction::triggered, this, &QWidget::close);
    connect(mnuCmdList, &QAction::toggled, this, &Main::mnuCmdList_Click);
    connect(mnuHelp, &QAction::triggered, this, &Main::mnuHelp_Click);
}

void Main::connectWindows()
{
    for (SerialChannel *each : m_serial) {
        each->setPortList(m_parts.serialPorts);
        connect(each, &SerialChannel::configureRequested, m_setup,
                [this, index = each->index()] { m_setup->cmdPortConfig_Click(index); });
    }
    connect(m_gpib, &GpibChannel::searchRequested, m_setup, &SetupWindows::cmdSearchGPIB_Click);
    connect(m_gpib, &GpibChannel::adapterRequested, m_setup, &SetupWindows::cmdAdapter_Click);
    connect(mnuSBC, &QAction::triggered, m_board, &BoardWindows::mnuSBC_Click);
    connect(mnuAboutSC, &QAction::triggered, m_setup, &SetupWindows::mnuAboutSC_Click);
    auto *hold = new InputHold(m_parts.clock, this);
    connect(&m_parts.gpib, &GpibControl::busyChanged, hold, &InputHold::setCalling);
}

} // namespace corvane
