// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/Workbench.h"

#include "bench/Bench.h"
#include "bench/Replay.h"
#include "core/channels/Reconnect.h"
#include "devices/PlatformError.h"

namespace corvane {

Workbench::Workbench(CommandLine line, Dialogs &dialogs, GpibAdapterFactory::Reader reader)
    : m_gpibAdapterFactory({}, reader)
{
    if (line.demo)
        startBench(line);
    m_serialPorts.pin(line.serialDevices);
    m_rs485 = std::make_unique<QtSerialPort>(m_serialPorts);
    m_rs232 = std::make_unique<QtSerialPort>(m_serialPorts);
    for (size_t board = 0; board < m_gpibAdapters.size(); ++board) {
        if (!line.gpibAdapters.at(board).isEmpty())
            m_gpibAdapters.at(board) = GpibAdapterChoice::parse(line.gpibAdapters.at(board));
    }
    m_gpib = std::make_unique<GpibControl>(m_clock, [this](int board) {
        return m_gpibAdapterFactory.make(m_gpibAdapters.at(static_cast<size_t>(board)), board);
    });
    m_channels = std::make_unique<ChannelSet>(
        ChannelDevices{*m_rs485, *m_rs232, *m_gpib, m_tcpClient1, m_tcpClient2,
                       [this] { return m_serialPorts.entries(); }},
        m_module, dialogs, m_clock);
    for (const ChannelSession *each : m_channels->all())
        m_traffic.listenTo(*each);
    m_list = std::make_unique<CommandList>(m_module, dialogs);
    m_engine = std::make_unique<TransferEngine>(*m_channels, *m_list, dialogs);
}

Workbench::~Workbench() = default;

/// The bench's connector is fitted from the start: the first test that a newcomer runs shall pass.
void Workbench::makeBench(const CommandLine &line)
{
    if (line.replayFile.isEmpty()) {
        auto simulated = std::make_unique<bench::Bench>();
        simulated->board().ports().setConnector(true);
        m_bench = simulated.get();
        m_desk = std::move(simulated);
        return;
    }
    bench::Recording recording = bench::Recording::read(line.replayFile);
    if (!recording.fault.isEmpty())
        throw PlatformError(u"--replay %1: %2"_s.arg(line.replayFile, recording.fault));
    bench::BenchOptions options;
    options.secondGpibPort = 0;
    using Pace = bench::Replay::Pace;
    m_desk = std::make_unique<bench::Replay>(
        std::move(recording), line.replaysFast ? Pace::Fast : Pace::Recorded, std::move(options));
}

/// The bench's devices take the numbers and the boards that the command line left free.
void Workbench::startBench(CommandLine &line)
{
    makeBench(line);
    start();
    const QMap<int, QString> &devices = m_desk->serialDevices();
    for (auto each = devices.begin(); each != devices.end(); ++each) {
        if (!line.serialDevices.contains(each.key()))
            line.serialDevices.insert(each.key(), each.value());
    }
    const QMap<int, QString> &adapters = m_desk->gpibAdapters();
    for (auto each = adapters.begin(); each != adapters.end(); ++each) {
        QString &adapter = line.gpibAdapters.at(static_cast<size_t>(each.key()));
        if (adapter.isEmpty())
            adapter = each.value();
    }
}

void Workbench::start()
{
    if (m_desk->start())
        return;
    const QString fault = m_desk->errorString();
    m_bench = nullptr;
    m_desk.reset();
    throw PlatformError(u"the bench cannot start: "_s + fault);
}

void Workbench::pointChannelsAtBench()
{
    if (!m_desk)
        return;
    for (const bench::Desk::Entries &entries : m_desk->entries()) {
        const auto &all = m_channels->all();
        const auto channel = std::ranges::find(all, entries.channel, &ChannelSession::caption);
        if (channel == all.end())
            continue;
        if (!(*channel)->isOpen() && !(*channel)->reconnect().isInCharge())
            (*channel)->fillIn({.port = m_benchDevices.value(entries.port.toInt(), entries.port),
                                .host = entries.host,
                                .address = entries.address});
    }
}

void Workbench::addBench()
{
    if (m_desk)
        return;
    for (size_t board = 0; board < m_gpibAdapters.size(); ++board) {
        if (m_gpibAdapters[board] == GpibAdapterChoice())
            m_gpib->forgetAdapter(static_cast<int>(board)); // not while it is in use
    }
    makeBench({});
    start();
    m_benchDevices = m_desk->serialDevices();
    const QMap<int, QString> &adapters = m_desk->gpibAdapters();
    for (auto each = adapters.begin(); each != adapters.end(); ++each) {
        GpibAdapterChoice &choice = m_gpibAdapters.at(static_cast<size_t>(each.key()));
        if (choice == GpibAdapterChoice())
            choice = GpibAdapterChoice::parse(each.value());
    }
    pointChannelsAtBench();
}

} // namespace corvane
