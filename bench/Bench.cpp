#include "bench/Bench.h"

#include <QDir>

#include <utility>

namespace corvane::bench {

Bench::Bench(BenchOptions options)
    : m_options(std::move(options))
    , m_temporaryLinks(QDir::tempPath() + u"/corvane-bench-XXXXXX"_s)
    , m_chamber(m_options.time, 5, "CH-10421")
    , m_secondChamber(m_options.time, 1, "CH-10422")
    , m_thirdChamber(m_options.time, 2, "CH-10423")
    , m_meter([this](int channel) { return m_board.analog().outputVolts(channel); },
              [this] { return m_board.lastDacChannel(); })
    , m_rs485Bus({&m_secondChamber, &m_chamber})
    , m_rs485Link(m_rs485Bus)
    , m_rs232Link(m_chamber)
    , m_boardSerialLink(m_board)
    , m_chamberTcpLink(m_chamber)
    , m_boardTcpLink(m_board)
    , m_chamberStation(m_chamber)
    , m_boardStation(m_board)
    , m_meterStation(m_meter)
    , m_secondStation(m_thirdChamber)
    , m_rs485(link(u"rs485"_s))
    , m_rs232(link(u"rs232"_s))
    , m_boardSerial(link(u"rs232-board"_s))
    , m_gpibPty(link(u"gpib-serial"_s))
{
    wire();
}

QString Bench::link(const QString &name) const
{
    const QString folder =
        m_options.linkFolder.isEmpty() ? m_temporaryLinks.path() : m_options.linkFolder;
    return folder + u'/' + name;
}

void Bench::wire()
{
    m_rs485Link.attach(m_rs485);
    m_rs232Link.attach(m_rs232);
    m_boardSerialLink.attach(m_boardSerial);
    connect(&m_chamberTcp, &TcpPort::opened, &m_chamberTcpLink, &DeviceLink::attach);
    connect(&m_boardTcp, &TcpPort::opened, &m_boardTcpLink, &DeviceLink::attach);
    for (PlusPlusController *controller : {&m_gpib, &m_gpibSerial}) {
        controller->connectStation(chamberGpibAddress, m_chamberStation);
        controller->connectStation(boardGpibAddress, m_boardStation);
        controller->connectStation(meterGpibAddress, m_meterStation);
    }
    m_secondGpib.connectStation(secondBoardGpibAddress, m_secondStation);
    connect(&m_gpibTcp, &TcpPort::opened, &m_gpib, &PlusPlusController::attach);
    connect(&m_secondGpibTcp, &TcpPort::opened, &m_secondGpib, &PlusPlusController::attach);
    m_gpibSerial.attach(m_gpibPty);
}

bool Bench::start()
{
    m_errors.clear();
    for (PtyPort *port : {&m_rs485, &m_rs232, &m_boardSerial, &m_gpibPty}) {
        if (!port->replug())
            m_errors.append(u"%1: %2"_s.arg(port->path(), port->errorString()));
    }
    startTcp(m_chamberTcp, m_options.chamberPort);
    startTcp(m_boardTcp, m_options.boardPort);
    startTcp(m_gpibTcp, m_options.gpibPort);
    if (m_options.secondGpibPort)
        startTcp(m_secondGpibTcp, *m_options.secondGpibPort);
    listPlaces();
    return m_errors.isEmpty();
}

void Bench::startTcp(TcpPort &port, quint16 preferred)
{
    if (!port.listen(preferred))
        m_errors.append(u"TCP port %1: %2"_s.arg(preferred).arg(port.errorString()));
}

void Bench::listPlaces()
{
    const QString board0 = u"GPIB0::%1"_s;
    const auto tcp = [](const TcpPort &port) { return u"%1:%2"_s.arg(host()).arg(port.port()); };
    const QString chamber = u"chamber controller"_s;
    const QString board = u"board"_s;
    const QString controller = u"\"++\" GPIB controller"_s;
    m_places = {
        {u"rs485"_s, u"chamber controllers 01 and 05"_s, m_rs485.path(), &m_rs485Link.faults(),
         &m_rs485},
        {u"rs232"_s, chamber, m_rs232.path(), &m_rs232Link.faults(), &m_rs232},
        {u"rs232-board"_s, board, m_boardSerial.path(), &m_boardSerialLink.faults(),
         &m_boardSerial},
        {u"tcp-chamber"_s, chamber, tcp(m_chamberTcp), &m_chamberTcpLink.faults(), &m_chamberTcp},
        {u"tcp-board"_s, board, tcp(m_boardTcp), &m_boardTcpLink.faults(), &m_boardTcp},
        {u"gpib"_s, controller, tcp(m_gpibTcp), &m_gpib.faults(), &m_gpibTcp},
        {u"gpib-serial"_s, controller, m_gpibPty.path(), &m_gpibSerial.faults(), &m_gpibPty},
        {u"gpib:5"_s, chamber, board0.arg(chamberGpibAddress), &m_chamberStation.faults(),
         &m_chamberStation},
        {u"gpib:9"_s, board, board0.arg(boardGpibAddress), &m_boardStation.faults(),
         &m_boardStation},
        {u"gpib:16"_s, u"meter"_s, board0.arg(meterGpibAddress), &m_meterStation.faults(),
         &m_meterStation},
    };
    if (!m_options.secondGpibPort)
        return;
    m_places.push_back(
        {u"gpib2"_s, controller, tcp(m_secondGpibTcp), &m_secondGpib.faults(), &m_secondGpibTcp});
    m_places.push_back(
        {u"gpib2:0"_s, chamber, u"GPIB1::0"_s, &m_secondStation.faults(), &m_secondStation});
}

QStringList Bench::programArguments() const
{
    QStringList arguments{u"--com"_s,  u"1="_s + m_rs485.path(),
                          u"--com"_s,  u"2="_s + m_rs232.path(),
                          u"--com"_s,  u"3="_s + m_boardSerial.path(),
                          u"--gpib"_s, u"0=tcp:%1:%2"_s.arg(host()).arg(gpibPort())};
    if (m_options.secondGpibPort) {
        arguments << u"--gpib"_s << u"1=tcp:%1:%2"_s.arg(host()).arg(secondGpibPort());
    }
    return arguments;
}

QString Bench::Place::state() const
{
    const QString plugged = plug->state();
    return faults->fault().toString() + (plugged.isEmpty() ? QString() : u", "_s + plugged);
}

} // namespace corvane::bench
