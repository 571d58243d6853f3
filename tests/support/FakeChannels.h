// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/channels/ChannelSet.h"
#include "core/channels/Module1.h"
#include "devices/GpibControl.h"
#include "tests/support/FakeClock.h"
#include "tests/support/FakeGpibAdapter.h"
#include "tests/support/FakeSerialPort.h"
#include "tests/support/FakeTcpClient.h"
#include "tests/support/ScriptedDialogs.h"

namespace corvane {

/// The Channels over devices in memory.
struct FakeDevices
{
    FakeDevices(Clock &clock, Dialogs &dialogs)
        : gpib(clock, [this](int) { return std::make_unique<FakeGpibAdapter>(bus); })
        , channels(
              {rs485, rs232, gpib, tcpClient1, tcpClient2, [] { return QList<SerialPortEntry>(); }},
              module, dialogs, clock)
    {
    }

    Module1 module;
    FakeSerialPort rs485;
    FakeSerialPort rs232;
    FakeTcpClient tcpClient1;
    FakeTcpClient tcpClient2;
    FakeGpibBus bus;
    GpibControl gpib;
    ChannelSet channels;
};

struct FakeUser
{
    FakeClock clock;
    ScriptedDialogs dialogs;
};

/// The same with a clock and dialogs of their own.
struct FakeChannels : FakeUser, FakeDevices
{
    FakeChannels()
        : FakeDevices(clock, dialogs)
    {
    }
};

} // namespace corvane
