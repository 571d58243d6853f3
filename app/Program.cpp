#include "app/Program.h"

#include "bench/Bench.h"
#include "core/setup/modWinsockAPI.h"
#include "devices/GpibAdapterChoice.h"
#include "devices/PlatformError.h"
#include "windows/main/BenchWindow.h"
#include "windows/widgets/LeanStyle.h"

#include <QAction>
#include <QApplication>
#include <QMenu>

namespace corvane {

Program::Program(const CommandLine &line, Dialogs &dialogs, GpibAdapterFactory::Reader reader)
    : m_gpibAdapterFactory({}, reader)
    , m_systemInfo(systemRegistry(), m_launcher, dialogs)
{
    QApplication::setStyle(new LeanStyle);
    CommandLine wanted = line;
    if (wanted.demo)
        startBench(wanted);
    m_serialPorts.pin(wanted.serialDevices);
    m_rs485 = std::make_unique<QtSerialPort>(m_serialPorts);
    m_rs232 = std::make_unique<QtSerialPort>(m_serialPorts);
    for (size_t board = 0; board < m_gpibAdapters.size(); ++board) {
        if (!wanted.gpibAdapters.at(board).isEmpty())
            m_gpibAdapters.at(board) = GpibAdapterChoice::parse(wanted.gpibAdapters.at(board));
    }
    m_gpib = std::make_unique<GpibControl>(m_clock, [this](int board) {
        return m_gpibAdapterFactory.make(m_gpibAdapters.at(static_cast<size_t>(board)), board);
    });
    m_channels = std::make_unique<ChannelSet>(
        ChannelDevices{*m_rs485, *m_rs232, *m_gpib, m_tcpClient1, m_tcpClient2,
                       [this] { return m_serialPorts.entries(); }},
        m_module, dialogs, m_clock);
    m_window = std::make_unique<Main>(
        MainParts{.clock = m_clock,
                  .dialogs = dialogs,
                  .channels = *m_channels,
                  .programFolder = QCoreApplication::applicationDirPath(),
                  .gpibAdapters = m_gpibAdapters,
                  .gpibAdapterFactory = m_gpibAdapterFactory,
                  .systemInfo = m_systemInfo,
                  .remembered = m_remembered,
                  .findLocalAddress = [this](const auto &found) {
                      m_ownAddress.start(
                          [found] { return [found, own = modWinsockAPI::find()] { found(own); }; });
                  }});
    m_window->Form_Load();
    if (!m_bench)
        return;
    pointChannelsAtBench();
    addBenchWindow();
}

Program::~Program() = default;

/// Its connector is fitted from the start: the first test that a newcomer runs shall pass.
void Program::addBenchWindow()
{
    m_bench->board().ports().setConnector(true);
    m_benchWindow = std::make_unique<BenchWindow>(*m_bench);
    auto *mnuView = m_window->findChild<QMenu *>(u"mnuView"_s);
    QAction *mnuBench = mnuView->addAction(u"Simulated &Bench"_s);
    mnuBench->setObjectName(u"mnuBench"_s);
    QObject::connect(mnuBench, &QAction::triggered, m_benchWindow.get(), &BenchWindow::openWindow);
}

/// The bench's devices take the numbers and the board that the command line left free.
void Program::startBench(CommandLine &line)
{
    m_bench = std::make_unique<bench::Bench>();
    if (!m_bench->start())
        throw PlatformError(u"the bench cannot start: "_s + m_bench->errorString());
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

void Program::pointChannelsAtBench()
{
    const QString chamberPort = QString::number(m_bench->chamberPort());
    m_channels->serial(channels::rs485).fillIn({.port = u"1"_s, .address = u"05"_s});
    m_channels->serial(channels::rs232).fillIn({.port = u"2"_s});
    m_channels->gpib().fillIn({.address = u"GPIB0::%1"_s.arg(bench::Bench::chamberGpibAddress)});
    for (const int tcp : {channels::tcpIp1, channels::tcpIp2})
        m_channels->tcp(tcp).fillIn({.port = chamberPort, .host = bench::Bench::host()});
}

} // namespace corvane
