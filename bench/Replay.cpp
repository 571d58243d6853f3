// SPDX-License-Identifier: GPL-3.0-or-later
#include "bench/Replay.h"

#include "bench/LineReader.h"
#include "bench/Text.h"

#include <QRegularExpression>
#include <QTimer>

#include <utility>

namespace corvane::bench {

namespace {

/// Where a recorded Channel goes.
struct ChannelRow
{
    QLatin1String channel;
    /// The place's name in orders.
    QLatin1String place;
    /// The number of the program's serial port; 0: none.
    int serialPort = 0;
    /// The port of a TCP Channel.
    quint16 BenchOptions::*tcpPort = nullptr;
};

constexpr ChannelRow rows[] = {
    {"RS-485"_L1, "rs485"_L1, 1},
    {"RS-232"_L1, "rs232"_L1, 2},
    {"IEEE 488"_L1, "gpib"_L1},
    {"TCP/IP-1"_L1, "tcp1"_L1, 0, &BenchOptions::chamberPort},
    {"TCP/IP-2"_L1, "tcp2"_L1, 0, &BenchOptions::boardPort},
};

const ChannelRow &rowOf(const RecordedDevice &device)
{
    return *std::ranges::find(rows, device.channel, &ChannelRow::channel);
}

QString placeOf(const RecordedDevice::Gpib &gpib)
{
    const QString primary = u"GPIB%1::%2"_s.arg(gpib.board).arg(gpib.address);
    return gpib.secondary > 0 ? primary + u"::%1"_s.arg(gpib.secondary) : primary;
}

QString countOf(qsizetype count, const QString &what)
{
    return u"%1 %2%3"_s.arg(count).arg(what, count == 1 ? QString() : u"s"_s);
}

QString aboutOf(const RecordedDevice &device)
{
    return u"%1, %2"_s.arg(device.channel, countOf(device.exchanges, u"exchange"_s));
}

/// The RS-485 address in front of a request; empty when there is none.
QString addressIn(const QByteArray &request)
{
    static const QRegularExpression pattern(u"^>(0[1-9]|[12][0-9]|30) "_s);
    return pattern.match(QString::fromLatin1(request)).captured(1);
}

} // namespace

Replay::Replay(Recording recording, Pace pace, BenchOptions options)
    : Desk(std::move(options))
    , m_path(recording.path)
    , m_pace(pace)
    , m_notes(std::move(recording.notes))
{
    for (RecordedDevice &device : recording.devices) {
        m_exchanges += device.exchanges;
        const QString where = device.gpib ? placeOf(*device.gpib) : device.channel;
        m_devices.push_back(std::make_unique<ReplayDevice>(
            std::move(device), pace,
            [this, where](const QByteArray &request) { tellUnknown(where, request); }));
    }
}

Desk::Layout Replay::lay()
{
    Layout layout;
    for (const auto &device : m_devices) {
        const ChannelRow &row = rowOf(device->recorded());
        if (const auto &gpib = device->recorded().gpib)
            layGpib(layout, *device, *gpib);
        else if (row.tcpPort)
            layTcp(layout, *device, options().*row.tcpPort);
        else
            laySerial(layout, *device, row.serialPort);
    }
    return layout;
}

DeviceLink &Replay::linkTo(ReplayDevice &device)
{
    return *m_links.emplace_back(std::make_unique<DeviceLink>(device));
}

void Replay::laySerial(Layout &layout, ReplayDevice &device, int number)
{
    const RecordedDevice &recorded = device.recorded();
    const QString name = rowOf(recorded).place;
    PtyPort &port = *m_serialPorts.emplace_back(std::make_unique<PtyPort>(link(name)));
    DeviceLink &carrier = linkTo(device);
    carrier.attach(port);
    startSerial(port);
    if (!recorded.unasked.front().empty())
        greetOnceOpen(port);
    layout.places.push_back({name, aboutOf(recorded), port.path(), &carrier.faults(), &port});
    layout.serialDevices.insert(number, port.path());
    layout.entries.push_back({.channel = recorded.channel,
                              .port = QString::number(number),
                              .host = {},
                              .address = addressIn(recorded.firstRequest)});
}

/// A pseudo terminal does not tell when it is opened, but what its user sets it to shows.
void Replay::greetOnceOpen(PtyPort &port)
{
    constexpr int lookEveryMs = 20;
    auto *look = new QTimer(&port);
    connect(look, &QTimer::timeout, &port, [&port, look] {
        if (port.state().isEmpty())
            return;
        look->deleteLater();
        look->stop();
        Q_EMIT port.opened();
    });
    look->start(lookEveryMs);
}

void Replay::layTcp(Layout &layout, ReplayDevice &device, quint16 preferred)
{
    const RecordedDevice &recorded = device.recorded();
    TcpPort &port = *m_tcpPorts.emplace_back(std::make_unique<TcpPort>());
    DeviceLink &carrier = linkTo(device);
    connect(&port, &TcpPort::opened, &carrier, &DeviceLink::attach);
    startTcp(port, preferred);
    layout.places.push_back(
        {rowOf(recorded).place, aboutOf(recorded), addressOf(port), &carrier.faults(), &port});
    layout.entries.push_back({.channel = recorded.channel,
                              .port = QString::number(port.port()),
                              .host = host(),
                              .address = {}});
}

void Replay::layGpib(Layout &layout, ReplayDevice &device, const RecordedDevice::Gpib &gpib)
{
    const RecordedDevice &recorded = device.recorded();
    const QString where = placeOf(gpib);
    GpibBoard *board = boardNumbered(layout, gpib.board);
    if (!board) {
        const QString reason = m_boards.size() > 1 ? u"there are two controllers and no third one"_s
                                                   : u"its board takes a second controller"_s;
        m_notes.append(u"%1 is not replayed: %2"_s.arg(where, reason));
        return;
    }
    GpibStation &station = *m_stations.emplace_back(std::make_unique<GpibStation>(device));
    board->controller.connectStation(gpib.address, station, gpib.secondary);
    connect(&board->port, &TcpPort::opened, &station, &GpibStation::greet);
    const bool isFirst = board == m_boards.begin()->second.get();
    QString name = u"gpib%1:%2"_s.arg(isFirst ? QString() : u"2"_s).arg(gpib.address);
    if (gpib.secondary > 0)
        name += u":%1"_s.arg(gpib.secondary);
    layout.places.push_back({name, aboutOf(recorded), where, &station.faults(), &station});
    if (std::ranges::find(layout.entries, recorded.channel, &Entries::channel) ==
        layout.entries.end())
        layout.entries.push_back(
            {.channel = recorded.channel, .port = {}, .host = {}, .address = where});
}

Replay::GpibBoard *Replay::boardNumbered(Layout &layout, int number)
{
    const auto known = m_boards.find(number);
    if (known != m_boards.end())
        return known->second.get();
    const bool isFirst = m_boards.empty();
    const auto preferred = isFirst ? options().gpibPort : options().secondGpibPort;
    if (m_boards.size() > 1 || !preferred)
        return nullptr;
    GpibBoard &board = *m_boards.emplace(number, std::make_unique<GpibBoard>()).first->second;
    connect(&board.port, &TcpPort::opened, &board.controller, &PlusPlusController::attach);
    board.controller.setUnheard([this, number](int primary, int secondary, const QByteArray &sent) {
        for (const QByteArray &request : LineReader().feed(sent + '\r'))
            tellUnknown(placeOf({number, primary, secondary}), request);
    });
    startTcp(board.port, *preferred);
    const QString where = addressOf(board.port);
    layout.places.push_back({isFirst ? u"gpib"_s : u"gpib2"_s, u"\"++\" GPIB controller"_s, where,
                             &board.controller.faults(), &board.port});
    layout.gpibAdapters.insert(number, u"tcp:"_s + where);
    return &board;
}

QString Replay::tcpHint() const
{
    QStringList lines;
    for (const Entries &each : entries()) {
        if (!each.host.isEmpty())
            lines.append(u"%1: host %2, port %3."_s.arg(each.channel, each.host, each.port));
    }
    return lines.join(u'\n');
}

std::vector<DeskOrder> Replay::ownOrders()
{
    return {{{"rewind"_L1, ""_L1, "every reply again, from the first one"_L1},
             [this](const QStringList &) {
                 for (const auto &device : m_devices)
                     device->rewind();
                 return deskOrders::done;
             }}};
}

QString Replay::state()
{
    QString text = u"replays %1: %2"_s.arg(m_path, countOf(m_exchanges, u"exchange"_s));
    if (m_pace == Pace::Fast)
        text += u", at once"_s;
    if (m_unknown > 0)
        text +=
            u"; %1, the last on %2"_s.arg(countOf(m_unknown, u"unknown request"_s), m_lastUnknown);
    return (QStringList(text) + m_notes).join(u'\n');
}

void Replay::tellUnknown(const QString &where, const QByteArray &request)
{
    constexpr qsizetype longest = 80;
    const QString shown =
        QString::fromLatin1(text::escaped(request.first(std::min(request.size(), longest))));
    ++m_unknown;
    m_lastUnknown =
        u"%1: \"%2\"%3"_s.arg(where, shown, request.size() > longest ? u"..."_s : QString());
    Q_EMIT said(u"not in the recording, on "_s + m_lastUnknown);
}

} // namespace corvane::bench
