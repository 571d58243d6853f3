#include "main/Channel.h"

#include "common/EditableBox.h"
#include "common/Naming.h"
#include "main/ChannelTexts.h"
#include "platform/Dialogs.h"
#include "platform/PlatformError.h"
#include "platform/WaitGroup.h"

#include <QFrame>
#include <QHBoxLayout>
#include <QScopedValueRollback>
#include <QVBoxLayout>

#include <algorithm>

namespace corvane {

namespace {

/// The first character that has no place in 8-bit text.
std::optional<QChar> firstBeyondLatin1(const QString &text)
{
    const auto found =
        std::find_if(text.begin(), text.end(), [](QChar c) { return c.unicode() > 0xFF; });
    return found == text.end() ? std::nullopt : std::optional(*found);
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

    auto *page = new QVBoxLayout(this);
    buildConnection(*page);
    buildCommand(*page);
    buildResponse(*page);
    connectHandlers();
}

void Channel::buildConnection(QVBoxLayout &page)
{
    m_connectionRow = new QHBoxLayout;
    cmdConnect = new QPushButton(tr("&Connect"), this);
    cmdDisconnect = new QPushButton(tr("&Disconnect"), this);
    auto *statusCaption = new QLabel(tr("Status:"), this);
    lblStatus = new QLabel(this);
    lblStatus->setTextInteractionFlags(Qt::TextSelectableByMouse);
    shpComm = new Led(this);

    m_connectionRow->addStretch();
    for (QWidget *widget : std::initializer_list<QWidget *>{cmdConnect, cmdDisconnect,
                                                            statusCaption, lblStatus, shpComm})
        m_connectionRow->addWidget(widget);
    statusCaption->setObjectName(QStringLiteral("lblStatusCaption_%1").arg(m_index));
    nameControl(*cmdConnect, QStringLiteral("cmdConnect_%1").arg(m_index), tr("Connect"));
    nameControl(*cmdDisconnect, QStringLiteral("cmdDisconnect_%1").arg(m_index), tr("Disconnect"));
    nameControl(*lblStatus, QStringLiteral("lblStatus_%1").arg(m_index), tr("Status"));
    nameControl(*shpComm, QStringLiteral("shpComm_%1").arg(m_index), tr("Activity"));
    page.addLayout(m_connectionRow);
    auto *line = new QFrame(this);
    line->setFrameStyle(QFrame::HLine | QFrame::Sunken);
    page.addWidget(line);
}

void Channel::reserveStatus(const QString &longest)
{
    lblStatus->setMinimumWidth(QFontMetrics(lblStatus->font()).horizontalAdvance(longest));
}

void Channel::addConnectionField(const QString &caption, QWidget *field, const QString &name)
{
    auto *label = new QLabel(caption, this);
    label->setBuddy(field);
    m_connectionRow->insertWidget(m_connectionRow->indexOf(cmdConnect) - 1, label);
    addConnectionWidget(field, name);
    field->setAccessibleName(QString(caption).remove(u'&').remove(u':'));
}

void Channel::addConnectionWidget(QWidget *widget, const QString &name)
{
    widget->setObjectName(QStringLiteral("%1_%2").arg(name).arg(m_index));
    m_connectionRow->insertWidget(m_connectionRow->indexOf(cmdConnect) - 1, widget);
    orderTabs();
}

/// The Tab key goes from left to right and down, though the fields are made last.
void Channel::orderTabs()
{
    QList<QWidget *> order;
    for (int place = 0; place < m_connectionRow->count(); ++place)
        order.append(m_connectionRow->itemAt(place)->widget());
    order += {cboOut, cmdSend,          cmdIDN,          cmdSystErr, chkLoop, cboMs,
              chkLog, cmdLoadFrmChmber, cmdLoadToChmber, cmdStop,    txtIn};
    order.removeIf([](const QWidget *widget) {
        return !widget || (widget->focusPolicy() & Qt::TabFocus) == 0;
    });
    for (qsizetype place = 1; place < order.size(); ++place)
        setTabOrder(order.at(place - 1), order.at(place));
}

void Channel::buildCommand(QVBoxLayout &page)
{
    auto *entryRow = new QHBoxLayout;
    auto *optionRow = new QHBoxLayout;

    cboOut = new CommandBox(this);
    cboOut->setEditText(texts::idnCommand);
    cmdSend = new QPushButton(tr("&Send"), this);
    cmdIDN = new QPushButton(tr("*&IDN?"), this);
    cmdSystErr = new QPushButton(tr("Syst:&Err?"), this);
    chkLoop = new QCheckBox(tr("&Loop"), this);
    cboMs = new EditableBox(this);
    for (const char *ms : {"1000", "2000", "5000", "10000", "30000", "60000"})
        cboMs->addItem(QString::fromLatin1(ms));
    auto *every = new QLabel(tr("ever&y"), this);
    every->setBuddy(cboMs);
    chkLog = new QCheckBox(tr("Lo&g"), this);

    entryRow->addWidget(cboOut, 1);
    for (QWidget *widget : std::initializer_list<QWidget *>{cmdSend, cmdIDN, cmdSystErr})
        entryRow->addWidget(widget);
    for (QWidget *widget : std::initializer_list<QWidget *>{chkLoop, every, cboMs,
                                                            new QLabel(tr("ms"), this), chkLog})
        optionRow->addWidget(widget);
    optionRow->insertSpacing(optionRow->indexOf(chkLog), 12);
    optionRow->addStretch();
    page.addLayout(entryRow);
    page.addLayout(optionRow);

    cmdLoadFrmChmber = new QPushButton(tr("Get from Chamber"), this);
    cmdLoadToChmber = new QPushButton(tr("Send to Chamber"), this);
    cmdStop = new QPushButton(tr("Stop"), this);
    cmdLoadFrmChmber->setToolTip(tr("Download the chamber's current settings into the list"));
    cmdLoadToChmber->setToolTip(tr("Send the list to the chamber"));
    optionRow->addWidget(new QLabel(tr("Settings list:"), this));
    for (QPushButton *button : {cmdLoadFrmChmber, cmdLoadToChmber, cmdStop})
        optionRow->addWidget(button);

    const std::pair<QWidget *, std::pair<const char *, QString>> names[] = {
        {cboOut, {"cboOut", tr("Command")}},
        {cmdSend, {"cmdSend", tr("Send")}},
        {cmdIDN, {"cmdIDN", tr("Identify")}},
        {cmdSystErr, {"cmdSystErr", tr("System error")}},
        {chkLoop, {"chkLoop", tr("Loop")}},
        {cboMs, {"cboMs", tr("Loop period in milliseconds")}},
        {chkLog, {"chkLog", tr("Log replies to file")}},
        {cmdLoadFrmChmber, {"cmdLoadFrmChmber", tr("Get list from the chamber")}},
        {cmdLoadToChmber, {"cmdLoadToChmber", tr("Send list to the chamber")}},
        {cmdStop, {"cmdStop", tr("Stop the list")}},
    };
    for (const auto &[control, name] : names)
        nameControl(*control, QStringLiteral("%1_%2").arg(QLatin1String(name.first)).arg(m_index),
                    name.second);
}

void Channel::buildResponse(QVBoxLayout &page)
{
    txtIn = new ResponseView(this);
    nameControl(*txtIn, QStringLiteral("txtIn_%1").arg(m_index), tr("Response"));
    page.addWidget(txtIn, 1);
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
    connect(cboMs->lineEdit(), &QLineEdit::editingFinished, this, [this] {
        if (cboMs->currentText() != QString::number(m_periodMs))
            cboMs_Change();
    });
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
    try {
        openTransport();
        shpComm->show();
    } catch (const PlatformError &error) {
        m_context.dialogs.showMessage(window(), texts::connectError + QStringLiteral("\r\n") +
                                                    error.description());
        Q_EMIT connectFailed();
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
            {.text = texts::disconnectError + QStringLiteral("\r\n") + error.description(),
             .title = texts::disconnectErrorTitle});
    }
    refreshStatus();
}

void Channel::cmdSend_Click()
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
    if (const auto refused = firstBeyondLatin1(command)) {
        refuseSend(texts::notSendable.arg(*refused));
        return;
    }
    try {
        send(command.toLatin1());
    } catch (const PlatformError &error) {
        sendFailed();
        m_context.host.reportFault(error.description());
        refuseSend(texts::sendError);
    }
}

/// A loop stays on: it sends nothing while the Channel is closed, and goes on when it is open
/// again.
void Channel::refuseNotConnected()
{
    tellRefusal(texts::notConnected.at(static_cast<size_t>(m_index)));
}

void Channel::refuseSend(const QString &message)
{
    switchOffLoop();
    tellRefusal(message);
}

/// The run stands still while the box is open, and has ended afterwards.
void Channel::tellRefusal(const QString &message)
{
    TimerTransfer->stop();
    m_context.dialogs.showMessage(window(), message);
    if (m_context.module.transferRunning())
        m_context.host.ResetTransferData(m_index);
}

void Channel::cmdIDN_Click()
{
    setCommand(texts::idnCommand);
    cmdSend_Click();
}

void Channel::cmdSystErr_Click()
{
    setCommand(texts::systErrCommand);
    cmdSend_Click();
}

void Channel::beginReply()
{
    txtIn->setBytes({});
    cboOut->remember();
}

void Channel::deliverReply(qsizetype keep)
{
    Module1 &module = m_context.module;
    module.ResponseReady = true;
    module.TransferWaitCount.at(static_cast<size_t>(m_index)) = 0;
    m_context.host.replyArrived(m_index, keep, QByteArrayView(txtIn->bytes()).sliced(keep));
    Q_EMIT replied();
}

void Channel::chkLoop_Click()
{
    if (chkLoop->isChecked() && m_context.module.transferRunning())
        chkLoop->setChecked(false);
    if (!chkLoop->isChecked())
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
    cmdSend_Click();
}

void Channel::Timer1_Timer()
{
    try {
        poll();
    } catch (const PlatformError &error) {
        sendFailed();
        m_context.host.reportFault(error.description());
        refuseSend(texts::readError + QStringLiteral("\r\n") + error.description());
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

void Channel::SetLoopTime(int ms)
{
    m_periodMs = ms;
    Timer1->setInterval(ms);
    if (m_index != 2)
        TimerTransfer->setInterval(ms); // restarts it when it runs
}

} // namespace corvane
