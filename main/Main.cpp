#include "main/Main.h"

#include "common/EntryRules.h"
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
#include "main/StatusLine.h"
#include "main/TcpChannel.h"
#include "main/TrafficLog.h"
#include "platform/Dialogs.h"
#include "platform/GpibControl.h"
#include "platform/SerialPort.h"
#include "platform/TcpClient.h"
#include "platform/TextGrid.h"

#include <QApplication>
#include <QCloseEvent>
#include <QLineEdit>
#include <QSplitter>
#include <QStatusBar>
#include <QTabWidget>

namespace corvane {

namespace {

/// A close that came inside a wait or a message box is tried again after this time.
constexpr int closeRetryMs = 5;

} // namespace

Main::Main(const MainParts &parts, QWidget *parent)
    : QMainWindow(parent)
    , m_parts(parts)
    , m_waits(parts.clock)
    , m_tabMarks{Led::tabMark(false), Led::tabMark(true)}
{
    installAccessibility();
    EntryRules::install();
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

void Main::showOpen(int index, bool open)
{
    tabChannels->setTabIcon(index, m_tabMarks.at(open ? 1 : 0));
    if (open)
        clearFault(index);
    m_engine->channelOpenChanged(index);
}

void Main::clearFault(int index)
{
    lblFaults->setFault(index, {});
}

void Main::showNote(const QString &note)
{
    lblFaults->setNote(StatusLine::About::Board, note);
}

void Main::loggingFailed(const QString &description)
{
    for (const Channel *each : m_channels)
        each->chkLog->setChecked(false);
    m_parts.dialogs.showMessage(this,
                                tr("The log cannot be written; logging has been switched off.") +
                                    QStringLiteral("\r\n") + description);
}

void Main::Form_Load()
{
    mnuCmdList->setChecked(true);
    m_parts.rs485.setSettings(QStringLiteral("9600,N,8,1"));
    m_parts.rs232.setSettings(QStringLiteral("19200,N,8,1"));
    m_log->initialise();
    for (Channel *each : m_channels)
        each->initialise();
    resetUserInterface();
    m_gpib->applyEntries();
}

void Main::resetUserInterface()
{
    shpLog->hide();
    for (TcpChannel *each : m_tcp) {
        each->txtAddress->setText(QString()); // clear() would count as the user's edit
        each->txtPort->setText(QStringLiteral("5000"));
    }
    for (SerialChannel *each : m_serial)
        each->txtPort->setText(QStringLiteral("1"));
}

QList<QLineEdit *> Main::untouchedHosts() const
{
    QList<QLineEdit *> untouched;
    for (const TcpChannel *each : m_tcp) {
        if (each->txtAddress->text().isEmpty() && !each->txtAddress->isModified())
            untouched.append(each->txtAddress);
    }
    return untouched;
}

/// With the frame that it has by now the window may be larger than the screen: its status line, at
/// the very bottom, would be the first to go.
void Main::fitToScreen()
{
    const QRect room = screen()->availableGeometry();
    const QSize frame = frameGeometry().size() - size();
    if (isMaximized() || room.contains(frameGeometry()))
        return;
    resize(size().boundedTo(room.size() - frame));
    const QSize spare = room.size() - frame - size();
    move(room.left() + qMax(0, qMin(x() - room.left(), spare.width())),
         room.top() + qMax(0, qMin(y() - room.top(), spare.height())));
}

/// Not before the window is on the screen, and without one never: a name server may be silent.
void Main::lookUpOwnAddress()
{
    if (!untouchedHosts().isEmpty())
        m_parts.findLocalAddress([this](const LocalAddress &found) { showOwnAddress(found); });
}

void Main::showOwnAddress(const LocalAddress &found)
{
    if (m_waits.isClosed() || untouchedHosts().isEmpty())
        return;
    const QString address = modWinsockAPI::taken(found, m_parts.dialogs, this);
    for (QLineEdit *entry : untouchedHosts())
        entry->setText(address);
}

bool Main::event(QEvent *event)
{
    if (event->type() == QEvent::Paint && !std::exchange(m_painted, true)) {
        QMetaObject::invokeMethod(this, &Main::fitToScreen, Qt::QueuedConnection);
        QMetaObject::invokeMethod(this, &Main::lookUpOwnAddress, Qt::QueuedConnection);
    }
    return QMainWindow::event(event);
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
    return *m_serial.at(static_cast<size_t>(index - channels::rs485));
}

TcpChannel &Main::tcpChannel(int index) const
{
    return *m_tcp.at(static_cast<size_t>(index - channels::tcpIp1));
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
    lblFaults->setNote(StatusLine::About::Log, {});
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

void Main::commandSent(int index, const QString &command)
{
    m_engine->commandSent(index, command);
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
            .arg(channelTexts::channelCaptions.at(static_cast<size_t>(index)));
    return index == channels::ieee488 ? searchRefusal() : QString();
}

void Main::reportFault(int index, const QString &description)
{
    lblFaults->setFault(index, description);
    Q_EMIT faultReported(description);
}

void Main::showProgress(const QString &text)
{
    statusBar()->showMessage(text);
}

void Main::noteReply(int index, const QString &note)
{
    lblFaults->setReplyNote(index, note);
    if (!note.isEmpty())
        Q_EMIT faultReported(note);
}

bool Main::runsList(int index) const
{
    return m_engine->runningChannel() == index;
}

void Main::closeEvent(QCloseEvent *event)
{
    for (Channel *each : m_channels)
        each->stopTimers();
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
    for (Channel *each : m_channels)
        each->cmdDisconnect_Click();
    m_log->setLogging(false);
    m_board->shutDown();
    const auto windows = QApplication::topLevelWidgets();
    for (QWidget *window : windows) {
        if (window != this && window->isVisible())
            window->close();
    }
}

} // namespace corvane
