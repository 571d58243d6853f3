#include "main/Main.h"

#include "common/Naming.h"
#include "lists/CommandListArea.h"
#include "lists/ListKinds.h"
#include "lists/TransferEngine.h"
#include "main/Accessibility.h"
#include "main/BoardWindows.h"
#include "main/ChannelTexts.h"
#include "main/GpibChannel.h"
#include "main/GuideWindow.h"
#include "main/ListConnection.h"
#include "main/SerialChannel.h"
#include "main/SetupWindows.h"
#include "main/TcpChannel.h"
#include "main/TrafficLog.h"
#include "platform/Dialogs.h"
#include "platform/GpibControl.h"
#include "platform/SerialPort.h"
#include "platform/TcpClient.h"
#include "platform/TextGrid.h"

#include <QApplication>
#include <QCloseEvent>
#include <QMenuBar>
#include <QShortcut>
#include <QSplitter>
#include <QStatusBar>
#include <QTabWidget>

namespace corvane {

namespace {

constexpr int rs485 = 0;
constexpr int rs232 = 1;
constexpr int gpib = 2;
constexpr int tcpIp1 = 3;
constexpr int tcpIp2 = 4;

/// A close that came inside a wait or a message box is tried again after this time.
constexpr int closeRetryMs = 5;

} // namespace

Main::Main(const MainParts &parts, QWidget *parent)
    : QMainWindow(parent)
    , m_parts(parts)
    , m_waits(parts.clock)
{
    installAccessibility();
    setObjectName(QStringLiteral("Main"));
    setWindowTitle(QStringLiteral("Corvane"));
    m_splitter = new QSplitter(Qt::Vertical, this);
    m_splitter->setChildrenCollapsible(false);
    setCentralWidget(m_splitter);
    buildStatusBar();
    buildChannels();
    buildCommandList();
    m_setup = new SetupWindows(*this);
    m_board = new BoardWindows(*this);
    buildMenus();
    connectWindows();
    resize(1024, 700);
}

Main::~Main() = default;

void Main::buildChannels()
{
    const ChannelContext context{*this, m_parts.module, m_parts.dialogs, m_waits};
    tabChannels = new QTabWidget(this);
    nameControl(*tabChannels, QStringLiteral("tabChannels"), tr("Channels"));
    tabChannels->setDocumentMode(true);
    m_serial = {new SerialChannel(rs485, m_parts.rs485, context, this),
                new SerialChannel(rs232, m_parts.rs232, context, this)};
    m_gpib = new GpibChannel(gpib, m_parts.gpib, context, this);
    m_tcp = {new TcpChannel(tcpIp1, m_parts.tcpClient1, context, this),
             new TcpChannel(tcpIp2, m_parts.tcpClient2, context, this)};
    m_channels = {m_serial[0], m_serial[1], m_gpib, m_tcp[0], m_tcp[1]};
    for (Channel *each : m_channels) {
        const int index = each->index();
        tabChannels->addTab(each, Led::tabMark(false),
                            texts::channelCaptions.at(static_cast<size_t>(index)));
        connect(each, &Channel::openChanged, this,
                [this, index](bool open) { showOpen(index, open); });
        auto *shortcut = new QShortcut(QKeySequence(Qt::CTRL | Qt::Key(Qt::Key_1 + index)), this);
        connect(shortcut, &QShortcut::activated, tabChannels,
                [this, index] { tabChannels->setCurrentIndex(index); });
    }
    m_splitter->addWidget(tabChannels);
}

void Main::showOpen(int index, bool open)
{
    tabChannels->setTabIcon(index, Led::tabMark(open));
    if (open)
        statusBar()->clearMessage(); // what was said of a device that went away
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
                                  [channel] { return channel->txtIn->text(); }};
    };
    m_log = new TrafficLog(m_parts.programFolder + QStringLiteral("/Log.txt"), source(m_tcp[0]),
                           source(m_tcp[1]), *commandList->txtVDL, *shpLog, this);
    connect(m_log, &TrafficLog::failed, this, &Main::loggingFailed, Qt::QueuedConnection);
    m_splitter->addWidget(commandList);
}

void Main::loggingFailed(const QString &description)
{
    for (const Channel *each : m_channels)
        each->chkLog->setChecked(false);
    m_parts.dialogs.showMessage(this,
                                tr("The log cannot be written; logging has been switched off.") +
                                    QStringLiteral("\r\n") + description);
}

void Main::buildStatusBar()
{
    statusBar()->setObjectName(QStringLiteral("statusMain"));
    shpLog = new Led(this);
    nameControl(*shpLog, QStringLiteral("shpLog"), tr("Logging"));
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
}

void Main::Form_Load()
{
    mnuCmdList->setChecked(true);
    mnuCmdList_Click();
    m_parts.rs485.setSettings(QStringLiteral("9600,N,8,1"));
    m_parts.rs232.setSettings(QStringLiteral("19200,N,8,1"));
    m_log->initialise();
    for (Channel *each : m_channels)
        each->initialise();
    statusBar()->clearMessage();
    resetUserInterface();
    m_gpib->applyEntries();
}

void Main::resetUserInterface()
{
    shpLog->hide();
    const QString address = m_parts.localAddress();
    for (TcpChannel *each : m_tcp) {
        each->txtAddress->setText(address);
        each->txtPort->setText(QStringLiteral("5000"));
    }
    for (SerialChannel *each : m_serial)
        each->txtPort->setText(QStringLiteral("1"));
}

bool Main::loadList(const QString &path)
{
    commandList->ListFilePath = path;
    return commandList->OpenFile() == ListContents::End::Complete;
}

QString Main::listRowText(int row) const
{
    const TextGrid &grid = *commandList->flexgridVDL;
    QStringList cells;
    for (int column = listKinds::firstColumn; column < grid.colCount() - 1; ++column)
        cells.append(grid.text(row, column));
    return cells.join(u' ').trimmed();
}

void Main::showChannel(int index)
{
    tabChannels->setCurrentIndex(index);
}

void Main::mnuCmdList_Click()
{
    commandList->setVisible(mnuCmdList->isChecked());
}

Channel *Main::channel(int index) const
{
    return index >= 0 && index < channelCount ? m_channels.at(static_cast<size_t>(index)) : nullptr;
}

SerialChannel &Main::serialChannel(int index) const
{
    return *m_serial.at(static_cast<size_t>(index - rs485));
}

TcpChannel &Main::tcpChannel(int index) const
{
    return *m_tcp.at(static_cast<size_t>(index - tcpIp1));
}

void Main::cmdConnect_Click(int index)
{
    if (Channel *target = channel(index))
        target->cmdConnect_Click();
}

void Main::cmdDisconnect_Click(int index)
{
    if (Channel *target = channel(index))
        target->cmdDisconnect_Click();
}

void Main::cmdSend_Click(int index)
{
    if (Channel *target = channel(index))
        target->cmdSend_Click();
}

void Main::cmdIDN_Click(int index)
{
    if (Channel *target = channel(index))
        target->cmdIDN_Click();
}

void Main::cmdSystErr_Click(int index)
{
    if (Channel *target = channel(index))
        target->cmdSystErr_Click();
}

void Main::Timer1_Timer(int index)
{
    if (Channel *target = channel(index))
        target->Timer1_Timer();
}

void Main::mnuHelp_Click()
{
    if (!m_guide)
        m_guide = new GuideWindow(this);
    m_guide->show();
    m_guide->raise();
    m_guide->activateWindow();
}

void Main::chkLog_Click(int index)
{
    const Channel *clicked = channel(index);
    if (!clicked)
        return;
    if (clicked->chkLog->isChecked()) {
        if (!m_parts.module.transferRunning())
            m_log->setLogging(true);
        return;
    }
    const bool anyChecked =
        std::any_of(m_channels.begin(), m_channels.end(),
                    [](const Channel *each) { return each->chkLog->isChecked(); });
    if (!anyChecked)
        m_log->setLogging(false);
}

void Main::replyArrived(int index, qsizetype keep, QByteArrayView tail)
{
    m_engine->replyArrived(index, keep, tail);
}

void Main::replyTimedOut(int index)
{
    m_engine->replyTimedOut(index);
}

void Main::ResetTransferData(int index)
{
    m_engine->ResetTransferData(index);
}

void Main::TimerTransfer_Timer(int index)
{
    m_engine->TimerTransfer_Timer(index);
}

void Main::cmdLoadFrmChmber_Click(int index)
{
    m_engine->cmdLoadFrmChmber_Click(index);
}

void Main::cmdLoadToChmber_Click(int index)
{
    m_engine->cmdLoadToChmber_Click(index);
}

void Main::cmdStop_Click(int index)
{
    ResetTransferData(index);
}

QByteArray Main::echoPrefix() const
{
    return m_serial[0]->echoPrefix();
}

QString Main::searchRefusal() const
{
    return m_setup->searchRefusal();
}

QString Main::channelRefusal(int index) const
{
    if (m_board->usesChannel(index))
        return tr("The VXM250E window is using %1.  Please wait until it has finished.")
            .arg(texts::channelCaptions.at(static_cast<size_t>(index)));
    return index == gpib ? searchRefusal() : QString();
}

void Main::reportFault(const QString &description)
{
    statusBar()->showMessage(description);
}

void Main::closeEvent(QCloseEvent *event)
{
    m_closing = true;
    m_waits.close();
    m_parts.gpib.shutDown();
    if (m_parts.clock.runningWaits() > 0 || m_parts.dialogs.openCount() > 0 || m_setup->isBusy() ||
        m_engine->isBusy()) {
        // Something below this frame still runs: it ends now, and the close is tried again.
        event->ignore();
        m_setup->cancel();
        m_board->shutDown();
        m_parts.dialogs.dismissAll();
        QTimer::singleShot(closeRetryMs, this, &QWidget::close);
        return;
    }
    shutDown();
    event->accept();
    Q_EMIT closed();
}

void Main::shutDown()
{
    for (Channel *each : m_channels) {
        each->stopTimers();
        each->cmdDisconnect_Click();
    }
    m_log->setLogging(false);
    m_board->shutDown();
    const auto windows = QApplication::topLevelWidgets();
    for (QWidget *window : windows) {
        if (window != this && window->isVisible())
            window->close();
    }
}

} // namespace corvane
