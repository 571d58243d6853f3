// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/channels/GpibSession.h"
#include "core/channels/SerialSession.h"
#include "core/channels/TcpSession.h"
#include "devices/WaitGroup.h"

namespace corvane {

/// What the Channels are built on; all of it outlives them.
struct ChannelDevices
{
    SerialPort &rs485;
    SerialPort &rs232;
    GpibControl &gpib;
    TcpClient &tcpClient1;
    TcpClient &tcpClient2;
    /// The serial ports there are now, by number.
    SerialSession::PortList serialPorts;
};

/// The Channels, and what they share: who uses them, the flags, the waits over them.
class ChannelSet
{
public:
    ChannelSet(const ChannelDevices &devices, Module1 &module, Dialogs &dialogs, Clock &clock);

    /// Start-up: the defaults of every Channel, its entries too. None is opened.
    void initialise();
    /// The entries at start: serial port 1, no host, TCP port 5000.
    void resetEntries();
    /// Every wait over a Channel ends, and none begins any more: the program closes.
    void stop();
    /// Disconnects all in their order.
    void close();

    [[nodiscard]] const std::array<ChannelSession *, channelCount> &all() const { return m_all; }
    /// `index` 0..channelCount-1.
    [[nodiscard]] ChannelSession &at(int index) const;
    /// `index` of a serial Channel.
    [[nodiscard]] SerialSession &serial(int index);
    [[nodiscard]] GpibSession &gpib() { return m_gpib; }
    /// `index` of a TCP Channel.
    [[nodiscard]] TcpSession &tcp(int index);

    [[nodiscard]] ChannelUsers &users() { return m_users; }
    [[nodiscard]] WaitGroup &waits() { return m_waits; }
    [[nodiscard]] Module1 &module() { return m_module; }

private:
    ChannelUsers m_users;
    WaitGroup m_waits;
    Module1 &m_module;
    const ChannelContext m_context;
    SerialSession m_rs485;
    SerialSession m_rs232;
    GpibSession m_gpib;
    std::array<TcpSession, 2> m_tcp;
    const std::array<ChannelSession *, channelCount> m_all;
};

} // namespace corvane
