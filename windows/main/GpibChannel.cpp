#include "windows/main/GpibChannel.h"

#include "core/channels/ChannelTexts.h"
#include "core/text/Numbers.h"
#include "devices/GpibControl.h"
#include "devices/PlatformError.h"
#include "devices/WaitGroup.h"
#include "windows/widgets/BusyPointer.h"
#include "windows/widgets/EditableBox.h"

#include <QApplication>
#include <QFocusEvent>
#include <QScopeGuard>

namespace corvane {

namespace {

constexpr int lastPrimaryAddress = 30;
constexpr double timeoutLimitMs = 60000;

/// The user has gone on to another control or window: no menu or message box is over this one.
bool hasLeft(Qt::FocusReason reason)
{
    return reason != Qt::PopupFocusReason && reason != Qt::MenuBarFocusReason &&
           QApplication::activeModalWidget() == nullptr;
}

QByteArray withoutLineEnds(QByteArray text)
{
    text.removeIf([](char c) { return c == '\r' || c == '\n'; });
    return text;
}

} // namespace

GpibChannel::GpibChannel(int index, GpibControl &control, const ChannelContext &context,
                         QWidget *parent)
    : Channel(index, context, parent)
    , m_control(control)
{
    buildFields();
    hideStatus();
    disableLog();

    for (const QComboBox *entry : {cboIEEEPort, cboIEEEAddress})
        connect(entry, &QComboBox::currentTextChanged, this, &GpibChannel::cboIEEE_Change);
    txtTimeout488->installEventFilter(this);
    connect(txtTimeout488, &QLineEdit::returnPressed, this, &GpibChannel::txtTimeout488_Apply);
    connect(txtTimeout488, &QLineEdit::textEdited, this, [this] { setTimeoutBold(true); });
    connect(cmdSearchGPIB, &QPushButton::clicked, this, &GpibChannel::searchRequested);
    connect(cmdAdapter, &QPushButton::clicked, this, &GpibChannel::adapterRequested);
    connect(&m_control, &GpibControl::adapterForgotten, this, [this](int board) {
        m_configured = m_configured && board != m_board;
        refreshStatus();
    });
}

void GpibChannel::buildFields()
{
    cboIEEEPort = new EditableBox(this);
    for (int board = 0; board < GpibAddress::boardCount; ++board)
        cboIEEEPort->addItem(QStringLiteral("GPIB%1").arg(board));
    cboIEEEAddress = new EditableBox(this);
    for (int address = 0; address <= lastPrimaryAddress; ++address)
        cboIEEEAddress->addItem(QString::number(address));
    lblConnectString = new QLabel(this);
    lblConnectString->setTextInteractionFlags(Qt::TextSelectableByMouse);
    txtTimeout488 = new QLineEdit(QString::number(GpibControl::defaultTimeoutMs), this);
    txtTimeout488->setMaximumWidth(70);
    cmdSearchGPIB = new QPushButton(tr("Searc&h"), this);
    cmdAdapter = new QPushButton(tr("Adap&ter..."), this);
    cmdSearchGPIB->setAccessibleName(tr("Search for an instrument"));
    cmdAdapter->setAccessibleName(tr("Choose the GPIB adapter"));

    addConnectionField(tr("&Board:"), cboIEEEPort, QStringLiteral("cboIEEEPort"));
    addConnectionField(tr("Add&ress:"), cboIEEEAddress, QStringLiteral("cboIEEEAddress"));
    addConnectionField(tr("GPIB I/O:"), lblConnectString, QStringLiteral("lblConnectString"));
    addConnectionField(tr("Timeout, &ms"), txtTimeout488, QStringLiteral("txtTimeout488"));
    addConnectionWidget(cmdSearchGPIB, QStringLiteral("cmdSearchGPIB"));
    addConnectionWidget(cmdAdapter, QStringLiteral("cmdAdapter"));
}

void GpibChannel::applyEntries()
{
    txtTimeout488_Apply();
    cboIEEE_Change();
    GpibResponse.clear();
}

void GpibChannel::cboIEEE_Change()
{
    m_entriesWait = !m_context.host.channelRefusal(index()).isEmpty();
    if (!m_entriesWait)
        addressControl();
}

/// The entries that were changed while somebody else used the control.
void GpibChannel::applyWaitingEntries()
{
    if (m_entriesWait)
        cboIEEE_Change();
}

void GpibChannel::addressControl()
{
    const QString connectString = cboIEEEPort->currentText().trimmed() + QStringLiteral("::") +
                                  cboIEEEAddress->currentText().trimmed();
    m_control.setConnectString(connectString);
    lblConnectString->setText(connectString);
    refreshStatus();
}

void GpibChannel::showAddress(const QString &board, const QString &address)
{
    cboIEEEAddress->setCurrentText(address);
    cboIEEEPort->setCurrentText(board);
    addressControl();
}

bool GpibChannel::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == txtTimeout488) {
        if (event->type() == QEvent::MouseButtonPress || event->type() == QEvent::KeyPress)
            setTimeoutBold(true);
        else if (event->type() == QEvent::FocusOut &&
                 hasLeft(static_cast<QFocusEvent *>(event)->reason()))
            txtTimeout488_Apply();
    }
    return Channel::eventFilter(watched, event);
}

void GpibChannel::txtTimeout488_Apply()
{
    const auto ms = numbers::numericValue(txtTimeout488->text());
    if (ms && *ms > 0 && *ms < timeoutLimitMs)
        m_control.setTimeout(std::max(1, static_cast<int>(*ms)));
    showTimeout();
    setTimeoutBold(false);
}

void GpibChannel::applyPendingEntries()
{
    Channel::applyPendingEntries();
    if (txtTimeout488->font().bold())
        txtTimeout488_Apply();
}

void GpibChannel::showTimeout()
{
    txtTimeout488->setText(QString::number(m_control.timeout()));
}

void GpibChannel::setTimeoutBold(bool bold)
{
    QFont font = txtTimeout488->font();
    font.setBold(bold);
    txtTimeout488->setFont(font);
}

void GpibChannel::openTransport()
{
    if (const QString refusal = m_context.host.channelRefusal(index()); !refusal.isEmpty())
        throw PlatformError(refusal);
    applyWaitingEntries();
    openControl();
    showTimeout();
    const QString connectString = m_control.connectString();
    const QStringList parts = connectString.split(QStringLiteral("::"));
    showAddress(parts.value(0), parts.mid(1).join(QStringLiteral("::")));
    lblConnectString->setText(connectString);
    showTimeout();
    m_context.host.clearFault(index());
}

/// A controller that is off takes seconds to be given up.
void GpibChannel::openControl()
{
    m_configured = false;
    const BusyPointer busy;
    m_context.host.showProgress(channelTexts::connectingGpib.arg(m_control.connectString()));
    const auto ended = qScopeGuard([this] { m_context.host.showProgress({}); });
    m_control.open();
    m_configured = true;
    m_board = GpibAddress::parse(m_control.connectString()).board;
    m_adapter = m_control.adapterDescription(m_board);
}

void GpibChannel::closeTransport()
{
    if (!m_context.waits.isClosed())
        m_context.host.reportFault(index(), channelTexts::nothingToDisconnect);
}

void GpibChannel::send(const QByteArray &command)
{
    applyWaitingEntries();
    GpibReadDone = false;
    GpibReadPending = true;
    beginReply();
    m_control.write(command + '\r');
    GpibResponse.clear();
    TimerTransfer->stop();
}

void GpibChannel::forgetExchange()
{
    GpibReadPending = false;
}

void GpibChannel::poll()
{
    if (m_control.isBusy() || !m_context.host.channelRefusal(index()).isEmpty())
        return; // somebody else's exchange; the next tick goes on
    applyWaitingEntries();
    if (!GpibReadPending) {
        loopOnce();
        return;
    }
    GpibResponse = m_control.read();
    if (m_context.waits.isClosed())
        return;
    GpibReadDone = true;
    handleResponse();
    shpComm->setBright(false);
}

void GpibChannel::handleResponse()
{
    GpibReadPending = false;
    const Module1 &module = m_context.module;
    if (GpibResponse.isEmpty()) {
        if (!module.transferRunning() && module.GpibLoopEnabled) {
            txtIn->setText(channelTexts::loopTimedOut.arg(m_control.timeout()));
            switchOffLoop();
            return;
        }
        txtIn->setText(channelTexts::timedOut.arg(m_control.timeout()));
        if (module.transferRunning())
            m_context.host.replyTimedOut(index());
        return;
    }
    m_context.host.clearFault(index());
    txtIn->setBytes(withoutLineEnds(GpibResponse));
    const QString incomplete = m_control.incomplete();
    m_context.host.noteReply(
        index(), incomplete.isEmpty() ? QString() : QStringLiteral("IEEE 488: ") + incomplete);
    deliverReply(0);
}

void GpibChannel::chkLoop_Click()
{
    Channel::chkLoop_Click();
    m_context.module.GpibLoopEnabled = chkLoop->isChecked();
}

QString GpibChannel::place() const
{
    QString connectString = lblConnectString->text();
    if (!isOpen())
        return connectString;
    try {
        if (GpibAddress::parse(connectString).board == m_board)
            return channelTexts::placeThrough.arg(connectString, m_adapter);
    } catch (const PlatformError &) {
        // no address, said when it is used
    }
    return channelTexts::placeElsewhere.arg(m_board).arg(connectString);
}

std::optional<QString> GpibChannel::statusText() const
{
    return std::nullopt;
}

} // namespace corvane
