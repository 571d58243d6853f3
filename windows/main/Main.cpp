// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/main/Main.h"

#include "core/channels/Module1.h"
#include "core/channels/TrafficLog.h"
#include "core/lists/CommandList.h"
#include "core/lists/ListKinds.h"
#include "core/lists/TransferEngine.h"
#include "core/text/Dialogs.h"
#include "core/traffic/TrafficRecorder.h"
#include "windows/lists/CommandListArea.h"
#include "windows/main/BoardWindows.h"
#include "windows/main/GpibTab.h"
#include "windows/main/GuideWindow.h"
#include "windows/main/HelpChapters.h"
#include "windows/main/SerialTab.h"
#include "windows/main/SetupWindows.h"
#include "windows/main/StatusLine.h"
#include "windows/main/TcpTab.h"
#include "windows/main/TrendOpener.h"
#include "windows/traffic/TrafficWindow.h"
#include "windows/widgets/Accessibility.h"
#include "windows/widgets/ClosableWindow.h"
#include "windows/widgets/Controls.h"
#include "windows/widgets/EntryRules.h"
#include "windows/widgets/Naming.h"

#include <QApplication>
#include <QCloseEvent>
#include <QComboBox>
#include <QLineEdit>
#include <QSplitter>
#include <QTabBar>
#include <QTabWidget>

namespace corvane {

namespace {

/// A close that came inside a wait or a message box is tried again after this time.
constexpr int closeRetryMs = 5;

} // namespace

Main::Main(const MainParts &parts, QWidget *parent)
    : QMainWindow(parent)
    , m_parts(parts)
    , m_tabMarks{Led::tabMark(false), Led::tabMark(true)}
{
    installAccessibility();
    EntryRules::install();
    setObjectName(u"Main"_s);
    setWindowTitle(u"Corvane"_s);
    m_splitter = named(new QSplitter(Qt::Vertical, this), u"splitMain"_s, QString());
    m_splitter->setChildrenCollapsible(false);
    setCentralWidget(m_splitter);
    buildStatusBar();
    buildChannels();
    buildCommandList();
    buildMenus();
    m_setup = new SetupWindows({parts.channels, parts.clock, parts.dialogs, parts.gpibAdapters,
                                parts.gpibAdapterFactory, parts.systemInfo},
                               *this);
    m_board = new BoardWindows(parts.channels, parts.dialogs, parts.clock, parts.remembered,
                               *mnuSBC, this);
    m_trend = std::make_unique<TrendOpener>(
        TrendParts{parts.traffic, parts.dialogs, parts.filesFolder}, parts.programFolder);
    connectWindows();
    resize(1024, 700);
}

Main::~Main() = default;

void Main::withdrawBench()
{
    for (ChannelTab *each : m_channels)
        each->withdrawBench();
}

void Main::showRecordingFault(const QString &fault)
{
    lblFaults->setNote(StatusLine::About::Recording, fault);
}

void Main::loggingFailed(const QString &description)
{
    for (ChannelSession *each : m_parts.channels.all())
        each->setLogged(false);
    m_parts.dialogs.showMessage(this,
                                u"The log cannot be written; logging has been switched off."_s +
                                    u"\r\n"_s + description);
}

void Main::Form_Load()
{
    mnuCmdList->setChecked(true);
    m_log->initialise();
    m_parts.channels.initialise();
    resetUserInterface();
}

void Main::resetUserInterface()
{
    shpLog->hide();
    m_parts.channels.resetEntries();
}

QList<QLineEdit *> Main::untouchedHosts() const
{
    QList<QLineEdit *> untouched;
    for (const TcpTab *each : findChildren<TcpTab *>()) {
        if (each->txtAddress->text().isEmpty() && !each->txtAddress->isModified())
            untouched.append(each->txtAddress);
    }
    return untouched;
}

/// Not before the window is on the screen, and without one never: a name server may be silent.
void Main::lookUpOwnAddress()
{
    if (!untouchedHosts().isEmpty())
        m_parts.findLocalAddress([this](const LocalAddress &found) { showOwnAddress(found); });
}

void Main::showOwnAddress(const LocalAddress &found)
{
    if (waits().isClosed() || untouchedHosts().isEmpty())
        return;
    const QString address = modWinsockAPI::taken(found, m_parts.dialogs, this);
    for (QLineEdit *entry : untouchedHosts())
        entry->setText(address);
}

bool Main::event(QEvent *event)
{
    if (event->type() == QEvent::Paint && !std::exchange(m_painted, true))
        QMetaObject::invokeMethod(this, &Main::lookUpOwnAddress, Qt::QueuedConnection);
    return QMainWindow::event(event);
}

void Main::showChannel(int index)
{
    tabChannels->setCurrentIndex(index);
}

void Main::mnuCmdList_Click()
{
    commandList->setVisible(mnuCmdList->isChecked());
}

void Main::mnuTraffic_Click()
{
    if (!m_trafficWindow)
        m_trafficWindow = new TrafficWindow(m_parts.traffic, m_parts.dialogs, this);
    bringToFront(*m_trafficWindow);
}

ChannelTab *Main::channel(int index) const
{
    return isChannel(index) ? m_channels.at(static_cast<size_t>(index)) : nullptr;
}

SerialTab &Main::serialTab(int index) const
{
    return dynamic_cast<SerialTab &>(*m_channels.at(static_cast<size_t>(index)));
}

TcpTab &Main::tcpTab(int index) const
{
    return dynamic_cast<TcpTab &>(*m_channels.at(static_cast<size_t>(index)));
}

void Main::pass(int index, void (ChannelTab::*handler)()) const
{
    if (ChannelTab *target = channel(index))
        (target->*handler)();
}

void Main::cmdConnect_Click(int index)
{
    pass(index, &ChannelTab::cmdConnect_Click);
}

void Main::cmdDisconnect_Click(int index)
{
    pass(index, &ChannelTab::cmdDisconnect_Click);
}

void Main::cmdSend_Click(int index)
{
    pass(index, &ChannelTab::cmdSend_Click);
}

void Main::cmdIDN_Click(int index)
{
    pass(index, &ChannelTab::cmdIDN_Click);
}

void Main::cmdSystErr_Click(int index)
{
    pass(index, &ChannelTab::cmdSystErr_Click);
}

void Main::Timer1_Timer(int index)
{
    if (isChannel(index))
        m_parts.channels.at(index).Timer1_Timer();
}

void Main::mnuHelp_Click()
{
    const QWidget *asking = QApplication::activeWindow();
    // A dialog that waits for its answer lets nobody reach another window than its own.
    QWidget *owner = QApplication::activeModalWidget();
    if (owner == nullptr)
        owner = this;
    auto *guide = owner->findChild<GuideWindow *>(QString(), Qt::FindDirectChildrenOnly);
    if (guide == nullptr)
        guide = new GuideWindow(owner);
    bringToFront(*guide);
    if (asking != nullptr && asking != guide)
        guide->showChapter(helpChapterOf(*asking));
}

void Main::mnuTrend_Click()
{
    m_trend->open(*this);
}

/// The Tab key goes from the tabs into the Channel's page, then to the list below it.
void Main::orderTabs()
{
    QList<QWidget *> order{tabChannels->tabBar()};
    QList<const QWidget *> parts(m_channels.begin(), m_channels.end());
    parts.append(commandList);
    for (const QWidget *part : parts) {
        for (QWidget *next = nextInFocusChain(); next != this; next = next->nextInFocusChain()) {
            if (part->isAncestorOf(next) && !qobject_cast<QComboBox *>(next->parent()))
                order.append(next); // a box takes its entry along
        }
    }
    controls::orderTabs(order);
}

void Main::chkLog_Click(int index)
{
    if (!isChannel(index))
        return;
    if (m_parts.channels.at(index).isLogged()) {
        if (!m_parts.channels.module().transferRunning())
            m_log->setLogging(true);
    } else if (std::ranges::none_of(m_parts.channels.all(), &ChannelSession::isLogged)) {
        m_log->setLogging(false);
    }
    lblFaults->setNote(StatusLine::About::Log,
                       m_log->isLogging() ? u"Logging into "_s + m_log->place() : QString());
}

/// The Channels' buttons that fill the list go with the one below it.
void Main::offerGetList()
{
    const bool isOffered = m_parts.list.kind() == listKinds::chamberSettings;
    for (ChannelTab *each : m_channels)
        each->cmdLoadFrmChmber->setEnabled(isOffered);
}

void Main::cmdGetList_Click()
{
    cmdLoadFrmChmber_Click(tabChannels->currentIndex());
}

void Main::cmdSendList_Click()
{
    cmdLoadToChmber_Click(tabChannels->currentIndex());
}

void Main::cmdStopSend_Click()
{
    cmdStop_Click(tabChannels->currentIndex());
}

void Main::ResetTransferData(int index)
{
    m_parts.engine.ResetTransferData(index);
}

void Main::TimerTransfer_Timer(int index)
{
    m_parts.engine.TimerTransfer_Timer(index);
}

void Main::cmdLoadFrmChmber_Click(int index)
{
    m_parts.engine.cmdLoadFrmChmber_Click(index);
}

void Main::cmdLoadToChmber_Click(int index)
{
    m_parts.engine.cmdLoadToChmber_Click(index);
}

void Main::closeEvent(QCloseEvent *event)
{
    m_parts.channels.stop();
    if (m_parts.clock.runningWaits() > 0 || m_parts.dialogs.openCount() > 0 || m_setup->isBusy() ||
        m_parts.engine.isBusy()) {
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
    m_parts.channels.close();
    m_log->setLogging(false);
    m_board->shutDown();
    const auto windows = QApplication::topLevelWidgets();
    for (QWidget *window : windows) {
        if (window != this && window->isVisible())
            window->close();
    }
}

} // namespace corvane
