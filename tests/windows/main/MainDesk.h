#pragma once

#include "core/board/modSBC.h"
#include "devices/GpibAdapterFactory.h"
#include "tests/windows/main/ChannelDesk.h"
#include "windows/about/ProgramLauncher.h"
#include "windows/about/SystemInfo.h"
#include "windows/main/Main.h"

namespace corvane {

/// The main window over fake devices.
struct MainDesk
{
    FakeClock clock;
    ScriptedDialogs dialogs;
    Module1 module;
    FakeSerialPort rs485;
    FakeSerialPort rs232;
    FakeTcpClient tcpClient1;
    FakeTcpClient tcpClient2;
    FakeGpibBus bus;
    GpibControl gpib{clock, [this](int) { return std::make_unique<FakeGpibAdapter>(bus); }};
    QTemporaryDir folder;
    GpibAdapterChoices adapters;
    GpibAdapterFactory adapterFactory;
    QtProgramLauncher launcher;
    modSBC remembered;
    SystemInfo systemInfo{systemRegistry(), launcher, dialogs};
    ChannelSet channels{
        {rs485, rs232, gpib, tcpClient1, tcpClient2, [] { return QList<SerialPortEntry>(); }},
        module,
        dialogs,
        clock};
    Main main{{.clock = clock,
               .dialogs = dialogs,
               .channels = channels,
               .programFolder = folder.path(),
               .gpibAdapters = adapters,
               .gpibAdapterFactory = adapterFactory,
               .systemInfo = systemInfo,
               .remembered = remembered,
               .findLocalAddress = [this](const auto &found) { addressWanted = found; }}};
    std::function<void(const LocalAddress &)> addressWanted;

    MainDesk() { main.Form_Load(); }
    void connectAll()
    {
        for (int index = 0; index < channelCount; ++index)
            main.cmdConnect_Click(index);
    }
};

} // namespace corvane
