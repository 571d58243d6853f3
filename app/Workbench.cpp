#include "app/Workbench.h"

#include "bench/Bench.h"
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

/// The bench's devices take the numbers and the board that the command line left free. Its
/// connector is fitted from the start: the first test that a newcomer runs shall pass.
void Workbench::startBench(CommandLine &line)
{
    m_bench = std::make_unique<bench::Bench>();
    if (!m_bench->start())
        throw PlatformError(u"the bench cannot start: "_s + m_bench->errorString());
    m_bench->board().ports().setConnector(true);
    const QString devices[] = {m_bench->rs485Device(), m_bench->rs232Device(),
                               m_bench->boardDevice()};
    int number = 0;
    for (const QString &device : devices) {
        ++number;
        if (!line.serialDevices.contains(number))
            line.serialDevices.insert(number, device);
    }
    if (line.gpibAdapters[0].isEmpty())
        line.gpibAdapters[0] = u"tcp:%1:%2"_s.arg(bench::Bench::host()).arg(m_bench->gpibPort());
}

void Workbench::pointChannelsAtBench()
{
    if (!m_bench)
        return;
    const QString chamberPort = QString::number(m_bench->chamberPort());
    m_channels->serial(channels::rs485).fillIn({.port = u"1"_s, .address = u"05"_s});
    m_channels->serial(channels::rs232).fillIn({.port = u"2"_s});
    m_channels->gpib().fillIn({.address = u"GPIB0::%1"_s.arg(bench::Bench::chamberGpibAddress)});
    for (const int tcp : {channels::tcpIp1, channels::tcpIp2})
        m_channels->tcp(tcp).fillIn({.port = chamberPort, .host = bench::Bench::host()});
}

} // namespace corvane
