#pragma once

#include "app/CommandLine.h"
#include "core/board/modSBC.h"
#include "core/channels/Module1.h"
#include "devices/DetachedCall.h"
#include "devices/GpibAdapterFactory.h"
#include "devices/GpibControl.h"
#include "devices/QtSerialPort.h"
#include "devices/QtTcpClient.h"
#include "devices/SerialPortList.h"
#include "devices/SystemClock.h"
#include "windows/about/ProgramLauncher.h"
#include "windows/about/SystemInfo.h"
#include "windows/main/Main.h"

#include <memory>

namespace corvane {

namespace bench {
class Bench;
}
class BenchWindow;

/// The program put together: the real transports as the command line wants them, the main window
/// over them and, for a demonstration, the bench behind them.
class Program
{
public:
    /// `dialogs` must outlive the program. Throws PlatformError for an adapter or a device on the
    /// command line that cannot be, and for a bench that cannot start.
    Program(const CommandLine &line, Dialogs &dialogs,
            GpibAdapterFactory::Reader reader = GpibAdapterFactory::Reader::Window);
    ~Program();

    [[nodiscard]] Main &window() { return *m_window; }
    /// Null without --demo, as its window is.
    [[nodiscard]] bench::Bench *bench() { return m_bench.get(); }
    [[nodiscard]] BenchWindow *benchWindow() { return m_benchWindow.get(); }

private:
    void startBench(CommandLine &line);
    void pointChannelsAtBench();
    void addBenchWindow();

    std::unique_ptr<bench::Bench> m_bench;
    SystemClock m_clock;
    Module1 m_module;
    modSBC m_remembered;
    SerialPortList m_serialPorts;
    std::unique_ptr<QtSerialPort> m_rs485;
    std::unique_ptr<QtSerialPort> m_rs232;
    QtTcpClient m_tcpClient1;
    QtTcpClient m_tcpClient2;
    GpibAdapterFactory m_gpibAdapterFactory;
    GpibAdapterChoices m_gpibAdapters;
    std::unique_ptr<GpibControl> m_gpib;
    QtProgramLauncher m_launcher;
    SystemInfo m_systemInfo;
    std::unique_ptr<ChannelSet> m_channels;
    std::unique_ptr<Main> m_window;
    DetachedCall m_ownAddress;
    std::unique_ptr<BenchWindow> m_benchWindow;
};

} // namespace corvane
