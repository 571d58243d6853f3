// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/channels/SerialSession.h"

#include "core/channels/ChannelTexts.h"
#include "devices/PlatformError.h"
#include "devices/SerialPort.h"
#include "devices/WholeNumber.h"

namespace corvane {

QString SerialSession::knownAddress(const QString &entry)
{
    const auto number = wholeNumber(entry, 1, lastAddress);
    if (!number)
        throw PlatformError(
            u"%1 is not one of 01 to %2"_s.arg(entry, QString::number(lastAddress)));
    return addressText(*number);
}

SerialSession::SerialSession(int index, SerialPort &port, PortList ports,
                             const ChannelContext &context, const SerialSession *addressed)
    : ChannelSession(index, port, context)
    , m_port(port)
    , m_ports(std::move(ports))
    , m_addressed(addressed ? *addressed : *this)
{
    if (traits().isAddressed)
        setAddress(addressText(1));
    connect(&m_port, &SerialPort::onComm, this, &SerialSession::MSComm1_OnComm);
    connect(&m_port, &SerialPort::lost, this, [this](const QString &description) {
        tellFault(description); // before what follows from it
        refreshStatus();
    });
}

void SerialSession::setPortEntry(const QString &entry)
{
    if (std::exchange(m_portEntry, entry) == entry)
        return;
    close();
    Q_EMIT entriesChanged();
}

void SerialSession::setAddress(const QString &address)
{
    if (std::exchange(m_address, address) == address)
        return;
    m_echoPrefix = '<' + address.toLatin1() + ':';
    refreshStatus();
    Q_EMIT entriesChanged();
}

void SerialSession::fillIn(const ChannelEntries &entries)
{
    refuseEntry(u"host"_s, entries.host);
    if (!entries.port.isEmpty()) {
        (void)SerialPortList::numberIn(entries.port);
        setPortEntry(entries.port);
    }
    if (!entries.settings.isEmpty())
        m_port.setSettings(entries.settings);
    if (!traits().isAddressed)
        refuseEntry(u"address"_s, entries.address);
    else if (!entries.address.isEmpty())
        setAddress(knownAddress(entries.address));
}

void SerialSession::openTransport()
{
    if (m_port.isPortOpen())
        return;
    const auto number = SerialPortList::numberIn(m_portEntry);
    if (number)
        m_port.setCommPort(*number);
    m_port.setDevice(number ? QString() : m_portEntry.trimmed());
    openPort();
    m_opened = m_port.openDevice();
}

/// The device, not its number: that may be another one's while this one is away.
void SerialSession::reopenTransport()
{
    m_port.setDevice(m_opened);
    openPort();
}

void SerialSession::openPort()
{
    m_port.setPortOpen(true);
    m_port.setInputLen(0);
    m_port.setRThreshold(1);
}

void SerialSession::closeTransport()
{
    if (m_port.isPortOpen())
        m_port.setPortOpen(false);
}

void SerialSession::transmit(const QByteArray &command)
{
    if (!m_port.isPortOpen()) {
        refuseNotConnected();
        return;
    }
    m_port.input();
    beginReply();
    QByteArray line = command + '\r';
    if (traits().isAddressed)
        line.prepend(prefix().toLatin1() + ' ');
    m_port.output(line);
    TimerTransfer->stop();
}

void SerialSession::MSComm1_OnComm(int event)
{
    if (event != CommEvent::receive)
        return;
    const QByteArray arrival = m_port.input();
    appendReply(arrival, {.lineEnds = true, .sequence = m_addressed.echoPrefix()});
}

void SerialSession::poll()
{
    refreshStatus();
    if (m_port.isPortOpen())
        loopOnce();
    else
        dimLight();
}

bool SerialSession::isOpen() const
{
    return m_port.isPortOpen();
}

QString SerialSession::place() const
{
    const QString place = isOpen() ? m_port.place() : enteredPlace();
    return traits().isAddressed ? place + u", address "_s + m_address : place;
}

QString SerialSession::enteredPlace() const
{
    const QString entered = m_portEntry.trimmed();
    QString device = entered;
    for (const SerialPortEntry &port : m_ports()) {
        if (entered == QString::number(port.number))
            device = u"%1 (port %2)"_s.arg(port.device, entered);
    }
    return device + u", "_s + m_port.settings();
}

QString SerialSession::statusText() const
{
    return m_port.isPortOpen() ? channelTexts::portOpen : channelTexts::portClosed;
}

} // namespace corvane
