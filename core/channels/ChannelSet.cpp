// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/channels/ChannelSet.h"

#include "devices/GpibControl.h"
#include "devices/SerialPort.h"

namespace corvane {

ChannelSet::ChannelSet(const ChannelDevices &devices, Module1 &module, Dialogs &dialogs,
                       Clock &clock)
    : m_waits(clock)
    , m_module(module)
    , m_context{module, dialogs, m_waits, m_users}
    , m_rs485(channels::rs485, devices.rs485, devices.serialPorts, m_context)
    , m_rs232(channels::rs232, devices.rs232, devices.serialPorts, m_context, &m_rs485)
    , m_gpib(devices.gpib, m_context)
    , m_tcp{TcpSession{channels::tcpIp1, devices.tcpClient1, m_context},
            TcpSession{channels::tcpIp2, devices.tcpClient2, m_context}}
    , m_all{&m_rs485, &m_rs232, &m_gpib, &m_tcp.front(), &m_tcp.back()}
{
}

void ChannelSet::initialise()
{
    for (SerialSession *each : {&m_rs485, &m_rs232})
        each->port().setSettings(each->traits().settings);
    for (ChannelSession *each : m_all)
        each->initialise();
    m_gpib.applyEntries();
    resetEntries();
}

void ChannelSet::resetEntries()
{
    for (SerialSession *each : {&m_rs485, &m_rs232})
        each->setPortEntry(u"1"_s);
    for (TcpSession &each : m_tcp) {
        each.setHost({});
        each.setPortEntry(QString::number(TcpSession::defaultPort));
    }
}

void ChannelSet::stop()
{
    for (ChannelSession *each : m_all)
        each->stopTimers();
    m_waits.close();
    m_gpib.control().shutDown();
}

void ChannelSet::close()
{
    for (ChannelSession *each : m_all)
        each->close();
}

ChannelSession &ChannelSet::at(int index) const
{
    return *m_all.at(static_cast<size_t>(index));
}

SerialSession &ChannelSet::serial(int index)
{
    return index == channels::rs485 ? m_rs485 : m_rs232;
}

TcpSession &ChannelSet::tcp(int index)
{
    return m_tcp.at(static_cast<size_t>(index - channels::tcpIp1));
}

} // namespace corvane
