// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/CommandLine.h"
#include "core/channels/ChannelSet.h"
#include "core/channels/Module1.h"
#include "core/lists/CommandList.h"
#include "core/lists/TransferEngine.h"
#include "core/traffic/TrafficRecorder.h"
#include "devices/GpibAdapterFactory.h"
#include "devices/GpibControl.h"
#include "devices/QtSerialPort.h"
#include "devices/QtTcpClient.h"
#include "devices/SerialPortList.h"
#include "devices/SystemClock.h"

#include <memory>

namespace corvane {

namespace bench {
class Bench;
class Desk;
} // namespace bench

/// The program without its windows: the Channels on real transports as the command line wants them,
/// the command list, the engine that runs it and, for a demonstration, the bench behind them.
class Workbench
{
public:
    /// `dialogs` must outlive the workbench. The Channels are not initialised yet. Throws
    /// PlatformError for an adapter or a device on the command line that cannot be, for a recording
    /// that cannot be replayed, and for a bench that cannot start.
    Workbench(CommandLine line, Dialogs &dialogs, GpibAdapterFactory::Reader reader);
    ~Workbench();

    [[nodiscard]] Clock &clock() { return m_clock; }
    [[nodiscard]] ChannelSet &channels() { return *m_channels; }
    /// Records what goes over them, from the start.
    [[nodiscard]] TrafficRecorder &traffic() { return m_traffic; }
    [[nodiscard]] CommandList &list() { return *m_list; }
    [[nodiscard]] TransferEngine &engine() { return *m_engine; }
    [[nodiscard]] GpibAdapterChoices &gpibAdapters() { return m_gpibAdapters; }
    [[nodiscard]] const GpibAdapterFactory &gpibAdapterFactory() { return m_gpibAdapterFactory; }
    /// The bench of whichever kind; null without --demo.
    [[nodiscard]] bench::Desk *desk() { return m_desk.get(); }
    /// The bench of simulated devices; null without one.
    [[nodiscard]] bench::Bench *bench() { return m_bench; }
    /// Fills in the bench's entries, when there is one; for after the defaults.
    void pointChannelsAtBench();
    /// Starts the simulated bench when there is none yet, and fills its entries in where a Channel
    /// is not connected. The computer's own ports and the adapters that were chosen stay as they
    /// are. Throws PlatformError for a bench that cannot start.
    void addBench();

private:
    void makeBench(const CommandLine &line);
    void startBench(CommandLine &line);
    void start();

    std::unique_ptr<bench::Desk> m_desk;
    bench::Bench *m_bench = nullptr;   ///< the desk, when its devices are simulated
    QMap<int, QString> m_benchDevices; ///< its serial devices, where their numbers are not pinned
    SystemClock m_clock;
    Module1 m_module;
    SerialPortList m_serialPorts;
    std::unique_ptr<QtSerialPort> m_rs485;
    std::unique_ptr<QtSerialPort> m_rs232;
    QtTcpClient m_tcpClient1;
    QtTcpClient m_tcpClient2;
    GpibAdapterFactory m_gpibAdapterFactory;
    GpibAdapterChoices m_gpibAdapters;
    std::unique_ptr<GpibControl> m_gpib;
    std::unique_ptr<ChannelSet> m_channels;
    TrafficRecorder m_traffic;
    std::unique_ptr<CommandList> m_list;
    std::unique_ptr<TransferEngine> m_engine;
};

} // namespace corvane
