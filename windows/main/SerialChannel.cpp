#include "windows/main/SerialChannel.h"

#include "core/channels/ChannelTexts.h"
#include "devices/SerialPort.h"

#include <QEvent>

namespace corvane {

namespace {

constexpr int lastAddress485 = 30;

} // namespace

SerialChannel::SerialChannel(int index, SerialPort &port, const ChannelContext &context,
                             QWidget *parent)
    : Channel(index, context, parent)
    , m_port(port)
{
    txtPort = new QLineEdit(this);
    txtPort->setMaximumWidth(110); // a device's name fits
    addConnectionField(tr("COM &port:"), txtPort, QStringLiteral("txtPort"));
    if (index == channels::rs485)
        buildAddress();
    cmdPortConfig = new QPushButton(tr("Config&ure..."), this);
    cmdPortConfig->setAccessibleName(tr("Configure the port"));
    addConnectionWidget(cmdPortConfig, QStringLiteral("cmdPortConfig"));
    reserveStatus(channelTexts::portClosed);
    disableLog();

    txtPort->installEventFilter(this);
    connect(txtPort, &QLineEdit::textChanged, this, &SerialChannel::txtPort_Change);
    connect(txtPort, &QLineEdit::returnPressed, this, &Channel::cmdConnect_Click);
    connect(cmdPortConfig, &QPushButton::clicked, this, &SerialChannel::configureRequested);
    connect(&m_port, &SerialPort::onComm, this, &SerialChannel::MSComm1_OnComm);
    connect(&m_port, &SerialPort::lost, this, [this](const QString &description) {
        m_context.host.reportFault(this->index(), description); // before what follows from it
        refreshStatus();
    });
}

void SerialChannel::buildAddress()
{
    cboAddress485 = new QComboBox(this);
    addConnectionField(tr("Add&ress:"), cboAddress485, QStringLiteral("cboAddress485"));
    lblPrefix = new QLabel(this);
    lblPrefix->setAccessibleName(tr("Addressing prefix"));
    addConnectionWidget(lblPrefix, QStringLiteral("lblPrefix"));
    connect(cboAddress485, &QComboBox::currentTextChanged, this, [this](const QString &address) {
        lblPrefix->setText(QStringLiteral(">") + address);
        m_echoPrefix = '<' + address.toLatin1() + ':';
    });
    for (int address = 1; address <= lastAddress485; ++address)
        cboAddress485->addItem(QStringLiteral("%1").arg(address, 2, 10, QLatin1Char('0')));
}

bool SerialChannel::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == txtPort && event->type() == QEvent::ToolTip && m_ports)
        txtPort->setToolTip(SerialPortList::describe(m_ports()));
    return Channel::eventFilter(watched, event);
}

void SerialChannel::openTransport()
{
    if (m_port.isPortOpen())
        return;
    const auto number = SerialPortList::numberIn(txtPort->text());
    if (number)
        m_port.setCommPort(*number);
    m_port.setDevice(number ? QString() : txtPort->text().trimmed());
    m_port.setPortOpen(true);
    m_port.setInputLen(0);
    m_port.setRThreshold(1);
}

void SerialChannel::closeTransport()
{
    if (m_port.isPortOpen())
        m_port.setPortOpen(false);
}

void SerialChannel::txtPort_Change()
{
    cmdDisconnect_Click();
}

void SerialChannel::send(const QByteArray &command)
{
    if (!m_port.isPortOpen()) {
        refuseNotConnected();
        return;
    }
    m_port.input();
    beginReply();
    QByteArray line = command + '\r';
    if (index() == channels::rs485)
        line.prepend('>' + cboAddress485->currentText().toLatin1() + ' ');
    m_port.output(line);
    TimerTransfer->stop();
}

void SerialChannel::MSComm1_OnComm(int event)
{
    if (event != CommEvent::receive)
        return;
    const QByteArray arrival = m_port.input();
    appendReply(arrival, {.lineEnds = true, .sequence = m_context.host.echoPrefix()});
}

void SerialChannel::poll()
{
    refreshStatus();
    if (m_port.isPortOpen())
        loopOnce();
    else
        shpComm->setBright(false);
}

bool SerialChannel::isOpen() const
{
    return m_port.isPortOpen();
}

QString SerialChannel::place() const
{
    QString place = isOpen() ? m_port.place() : enteredPlace();
    if (cboAddress485)
        place += QStringLiteral(", address ") + cboAddress485->currentText();
    return place;
}

QString SerialChannel::enteredPlace() const
{
    const QString entered = txtPort->text().trimmed();
    QString device = entered;
    for (const SerialPortEntry &port : m_ports ? m_ports() : QList<SerialPortEntry>()) {
        if (entered == QString::number(port.number))
            device = QStringLiteral("%1 (port %2)").arg(port.device, entered);
    }
    return device + QStringLiteral(", ") + m_port.settings();
}

std::optional<QString> SerialChannel::statusText() const
{
    return m_port.isPortOpen() ? channelTexts::portOpen : channelTexts::portClosed;
}

} // namespace corvane
