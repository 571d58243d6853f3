#include "main/Channel.h"

#include "common/ToolTip.h"
#include "main/ChannelTexts.h"
#include "platform/Dialogs.h"
#include "platform/PlatformError.h"
#include "platform/WaitGroup.h"

#include <QScopedValueRollback>

#include <algorithm>

namespace corvane {

namespace {

/// The first character that has no place in 8-bit text; empty when all have.
QString firstBeyondLatin1(const QString &text)
{
    const auto found =
        std::find_if(text.begin(), text.end(), [](QChar c) { return c.unicode() > 0xFF; });
    return text.mid(found - text.begin(), found != text.end() && found->isHighSurrogate() ? 2 : 1);
}

} // namespace

Channel::Channel(int index, const ChannelContext &context, QWidget *parent)
    : QWidget(parent)
    , m_context(context)
    , m_index(index)
{
    Timer1 = new QTimer(this);
    Timer1->setTimerType(Qt::PreciseTimer);
    TimerTransfer = new QTimer(this);
    TimerTransfer->setTimerType(Qt::PreciseTimer);
    makeControls();
    layOut();
    connectHandlers();
}

void Channel::connectHandlers()
{
    connect(cmdConnect, &QPushButton::clicked, this, &Channel::cmdConnect_Click);
    connect(cmdDisconnect, &QPushButton::clicked, this, &Channel::cmdDisconnect_Click);
    connect(cmdSend, &QPushButton::clicked, this, &Channel::cmdSend_Click);
    connect(cboOut->lineEdit(), &QLineEdit::returnPressed, this, &Channel::cmdSend_Click);
    connect(cmdIDN, &QPushButton::clicked, this, &Channel::cmdIDN_Click);
    connect(cmdSystErr, &QPushButton::clicked, this, &Channel::cmdSystErr_Click);
    connect(chkLoop, &QCheckBox::toggled, this, &Channel::chkLoop_Click);
    connect(chkLog, &QCheckBox::toggled, this, [this] { m_context.host.chkLog_Click(m_index); });
    connect(cboMs, &QComboBox::activated, this, &Channel::cboMs_Change);
    connect(cboMs, &QComboBox::currentIndexChanged, this, &Channel::cboMs_Change);
    connect(cboMs->lineEdit(), &QLineEdit::editingFinished, this, &Channel::applyPendingPeriod);
    connect(Timer1, &QTimer::timeout, this, &Channel::Timer1_Timer);
    connect(TimerTransfer, &QTimer::timeout, this,
            [this] { m_context.host.TimerTransfer_Timer(m_index); });
    connect(cmdLoadFrmChmber, &QPushButton::clicked, this,
            [this] { m_context.host.cmdLoadFrmChmber_Click(m_index); });
    connect(cmdLoadToChmber, &QPushButton::clicked, this,
            [this] { m_context.host.cmdLoadToChmber_Click(m_index); });
    connect(cmdStop, &QPushButton::clicked, this,
            [this] { m_context.host.cmdStop_Click(m_index); });
}

const QString &Channel::caption() const
{
    return channelTexts::channelCaptions.at(static_cast<size_t>(m_index));
}

void Channel::initialise()
{
    Timer1->start(m_periodMs);
    shpComm->hide();
    TimerTransfer->stop();
    TimerTransfer->setInterval(transferIntervalMs);
    m_context.module.TransferWaitCount.at(static_cast<size_t>(m_index)) = 0;
    refreshStatus();
}

void Channel::refreshStatus()
{
    if (const auto text = statusText())
        lblStatus->setText(*text);
    if (isOpen() != m_shownOpen) {
        m_shownOpen = isOpen();
        QFont font = lblStatus->font();
        font.setBold(m_shownOpen);
        lblStatus->setFont(font);
        Q_EMIT openChanged(m_shownOpen);
    }
    showPlace(m_shownOpen ? channelTexts::connectedTo.arg(place()) : QString());
}

void Channel::showPlace(const QString &place)
{
    if (place == m_place)
        return;
    m_place = place;
    constexpr int widest = 640;
    lblPlace->setMaximumWidth(place.isEmpty() ? 0 : QWIDGETSIZE_MAX);
    lblPlace->setText(lblPlace->fontMetrics().elidedText(place, Qt::ElideMiddle, widest));
    lblPlace->setAccessibleName(place);
    lblPlace->setToolTip(plainToolTip(place));
}

void Channel::stopTimers()
{
    Timer1->stop();
    TimerTransfer->stop();
}

void Channel::setCommand(const QString &text)
{
    cboOut->setEditText(text);
}

void Channel::cmdConnect_Click()
{
    applyPendingEntries();
    try {
        openTransport();
        shpComm->show();
    } catch (const PlatformError &error) {
        m_context.dialogs.showMessage(window(), channelTexts::connectError +
                                                    QStringLiteral("\r\n") + error.description());
        Q_EMIT connectFailed(error.description());
    }
    refreshStatus();
}

void Channel::cmdDisconnect_Click()
{
    try {
        closeTransport();
    } catch (const PlatformError &error) {
        m_context.dialogs.showMessage(
            window(),
            {.text = channelTexts::disconnectError + QStringLiteral("\r\n") + error.description(),
             .title = channelTexts::disconnectErrorTitle});
    }
    refreshStatus();
}

void Channel::cmdSend_Click()
{
    if (!m_context.host.runsList(m_index))
        applyPendingEntries();
    sendCommand();
}

void Channel::sendCommand()
{
    if (m_sending)
        return;
    const QScopedValueRollback sending(m_sending, true);
    const QString refusal = m_context.host.channelRefusal(m_index);
    if (!refusal.isEmpty()) {
        refuseSend(refusal);
        return;
    }
    const QString command = cboOut->currentText();
    if (const QString refused = firstBeyondLatin1(command); !refused.isEmpty()) {
        refuseSend(channelTexts::notSendable.arg(refused));
        return;
    }
    try {
        send(command.toLatin1());
    } catch (const PlatformError &error) {
        exchangeFailed(error, channelTexts::sendError);
    }
}

/// A loop and a list run stay on: they wait until the Channel is open again.
void Channel::refuseNotConnected()
{
    tellRefusal(channelTexts::notConnected.at(static_cast<size_t>(m_index)));
}

void Channel::refuseSend(const QString &message)
{
    switchOffLoop();
    tellRefusal(message);
    if (!m_context.waits.isClosed() && m_context.host.runsList(m_index))
        m_context.host.ResetTransferData(m_index);
}

/// The Channel's run stands still from now on.
void Channel::tellRefusal(const QString &message)
{
    TimerTransfer->stop();
    if (!m_context.waits.isClosed())
        m_context.dialogs.showMessage(window(), message);
}

void Channel::exchangeFailed(const PlatformError &error, const QString &message)
{
    forgetExchange();
    m_context.host.reportFault(m_index, error.description());
    refuseSend(message);
}

void Channel::cmdIDN_Click()
{
    setCommand(channelTexts::idnCommand);
    cmdSend_Click();
}

void Channel::cmdSystErr_Click()
{
    setCommand(channelTexts::systErrCommand);
    cmdSend_Click();
}

void Channel::beginReply()
{
    txtIn->setBytes({});
    if (!std::exchange(m_replyNote, {}).isEmpty())
        m_context.host.noteReply(m_index, {});
    m_context.host.commandSent(m_index, cboOut->currentText());
    cboOut->remember();
}

void Channel::appendReply(QByteArrayView arrival, const ResponseText::Cleaning &cleaning,
                          const QString &note)
{
    const qsizetype keep = txtIn->append(arrival, cleaning);
    const QString said = txtIn->dropped() > 0 ? channelTexts::oldestDropped.arg(caption()) : note;
    if (std::exchange(m_replyNote, said) != said || said.isEmpty())
        m_context.host.noteReply(m_index, said);
    deliverReply(keep);
}

void Channel::deliverReply(qsizetype keep)
{
    Module1 &module = m_context.module;
    module.ResponseReady = true;
    module.TransferWaitCount.at(static_cast<size_t>(m_index)) = 0;
    m_context.host.replyArrived(m_index, keep,
                                QByteArrayView(txtIn->bytes()).sliced(keep - txtIn->dropped()));
    Q_EMIT replied();
}

void Channel::chkLoop_Click()
{
    const bool isBorrowed = !m_context.host.channelRefusal(m_index).isEmpty();
    if (chkLoop->isChecked() && (m_context.module.transferRunning() || isBorrowed))
        chkLoop->setChecked(false);
    if (chkLoop->isChecked())
        applyPendingEntries();
    else
        shpComm->setBright(false);
}

void Channel::switchOffLoop()
{
    chkLoop->setChecked(false);
}

void Channel::loopOnce()
{
    if (!chkLoop->isChecked())
        return;
    shpComm->show();
    shpComm->setBright(!shpComm->isBright());
    sendCommand();
}

void Channel::Timer1_Timer()
{
    try {
        poll();
    } catch (const PlatformError &error) {
        exchangeFailed(error,
                       channelTexts::readError + QStringLiteral("\r\n") + error.description());
    }
}

void Channel::cboMs_Change()
{
    bool isNumber = false;
    const int ms = cboMs->currentText().trimmed().toInt(&isNumber);
    if (isNumber && ms >= minPeriodMs && ms <= maxPeriodMs)
        SetLoopTime(ms);
    cboMs->setEditText(QString::number(m_periodMs));
}

void Channel::applyPendingEntries()
{
    applyPendingPeriod();
}

void Channel::applyPendingPeriod()
{
    if (cboMs->currentText() != QString::number(m_periodMs))
        cboMs_Change();
}

void Channel::SetLoopTime(int ms)
{
    m_periodMs = ms;
    Timer1->setInterval(ms);
    if (m_index != channels::ieee488)
        TimerTransfer->setInterval(ms); // restarts it when it runs
}

} // namespace corvane
