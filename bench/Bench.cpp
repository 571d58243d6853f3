// SPDX-License-Identifier: GPL-3.0-or-later
#include "bench/Bench.h"

#include "bench/BenchOrders.h"

#include <utility>

namespace corvane::bench {

Bench::Bench(BenchOptions options)
    : Desk(std::move(options))
    , m_chamber(this->options().time, 5, "CH-10421")
    , m_secondChamber(this->options().time, 1, "CH-10422")
    , m_thirdChamber(this->options().time, 2, "CH-10423")
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

Bench::Layout Bench::lay()
{
    startTransports();
    const QString chamberPort = QString::number(m_chamberTcp.port());
    Layout layout{
        .places = placesNow(),
        .serialDevices = {{1, m_rs485.path()}, {2, m_rs232.path()}, {3, m_boardSerial.path()}},
        .gpibAdapters = {{0, u"tcp:"_s + addressOf(m_gpibTcp)}},
        .entries = {{.channel = u"RS-485"_s, .port = u"1"_s, .host = {}, .address = u"05"_s},
                    {.channel = u"RS-232"_s, .port = u"2"_s, .host = {}, .address = {}},
                    {.channel = u"IEEE 488"_s,
                     .port = {},
                     .host = {},
                     .address = u"GPIB0::%1"_s.arg(chamberGpibAddress)},
                    {.channel = u"TCP/IP-1"_s, .port = chamberPort, .host = host(), .address = {}},
                    {.channel = u"TCP/IP-2"_s, .port = chamberPort, .host = host(), .address = {}}},
    };
    if (options().secondGpibPort)
        layout.gpibAdapters.insert(1, u"tcp:"_s + addressOf(m_secondGpibTcp));
    return layout;
}

void Bench::startTransports()
{
    for (PtyPort *port : {&m_rs485, &m_rs232, &m_boardSerial, &m_gpibPty})
        startSerial(*port);
    startTcp(m_chamberTcp, options().chamberPort);
    startTcp(m_boardTcp, options().boardPort);
    startTcp(m_gpibTcp, options().gpibPort);
    if (options().secondGpibPort)
        startTcp(m_secondGpibTcp, *options().secondGpibPort);
}

std::vector<Desk::Place> Bench::placesNow()
{
    const QString board0 = u"GPIB0::%1"_s;
    const QString chamber = u"chamber controller"_s;
    const QString board = u"board"_s;
    const QString controller = u"\"++\" GPIB controller"_s;
    std::vector<Place> places{
        {u"rs485"_s, u"chamber controllers 01 and 05"_s, m_rs485.path(), &m_rs485Link.faults(),
         &m_rs485},
        {u"rs232"_s, chamber, m_rs232.path(), &m_rs232Link.faults(), &m_rs232},
        {u"rs232-board"_s, board, m_boardSerial.path(), &m_boardSerialLink.faults(),
         &m_boardSerial},
        {u"tcp-chamber"_s, chamber, addressOf(m_chamberTcp), &m_chamberTcpLink.faults(),
         &m_chamberTcp},
        {u"tcp-board"_s, board, addressOf(m_boardTcp), &m_boardTcpLink.faults(), &m_boardTcp},
        {u"gpib"_s, controller, addressOf(m_gpibTcp), &m_gpib.faults(), &m_gpibTcp},
        {u"gpib-serial"_s, controller, m_gpibPty.path(), &m_gpibSerial.faults(), &m_gpibPty},
        {u"gpib:5"_s, chamber, board0.arg(chamberGpibAddress), &m_chamberStation.faults(),
         &m_chamberStation},
        {u"gpib:9"_s, board, board0.arg(boardGpibAddress), &m_boardStation.faults(),
         &m_boardStation},
        {u"gpib:16"_s, u"meter"_s, board0.arg(meterGpibAddress), &m_meterStation.faults(),
         &m_meterStation},
    };
    if (!options().secondGpibPort)
        return places;
    places.push_back({u"gpib2"_s, controller, addressOf(m_secondGpibTcp), &m_secondGpib.faults(),
                      &m_secondGpibTcp});
    places.push_back(
        {u"gpib2:0"_s, chamber, u"GPIB1::0"_s, &m_secondStation.faults(), &m_secondStation});
    return places;
}

QString Bench::tcpHint() const
{
    return u"TCP/IP Channels: host %1, port %2 (chamber) or %3 (board)."_s.arg(
        host(), QString::number(chamberPort()), QString::number(boardPort()));
}

std::vector<DeskOrder> Bench::ownOrders()
{
    return benchOrders::of(*this);
}

QString Bench::state()
{
    return benchOrders::state(*this);
}

} // namespace corvane::bench
