// SPDX-License-Identifier: GPL-3.0-or-later
#include "bench/BenchOrders.h"

#include "bench/Bench.h"
#include "bench/Text.h"

namespace corvane::bench {

using deskOrders::done;

namespace {

const QString dataWord = u"data"_s;
const QString directionWord = u"dir"_s;
const QString normalWord = u"normal"_s;
const QString overflowWord = u"overflow"_s;

std::optional<int> numberOf(const QString &word, int high)
{
    return text::whole(word.toLatin1(), 0, high);
}

QString connector(Bench &bench, const QStringList &arguments)
{
    const bool on = arguments[0] == u"on";
    if (!on && arguments[0] != u"off")
        return {};
    bench.board().ports().setConnector(on);
    return done;
}

QString stuck(Bench &bench, const QStringList &arguments)
{
    const bool data = arguments[0] == dataWord;
    const auto port = numberOf(arguments[1], BoardPorts::portCount - 1);
    const auto bit = numberOf(arguments[2], BoardPorts::pinCount - 1);
    const auto level = numberOf(arguments[3], 1);
    if ((!data && arguments[0] != directionWord) || !port || !bit || !level)
        return {};
    bench.board().ports().stick(
        {data ? BoardPorts::Where::Data : BoardPorts::Where::Direction, *port, *bit, *level == 1});
    return done;
}

QString freeBits(Bench &bench, const QStringList &)
{
    bench.board().ports().freeStuckBits();
    return done;
}

QString sensor(Bench &bench, const QStringList &arguments)
{
    if (arguments[0] == u"follow") {
        bench.meter().followWithSensor();
        return done;
    }
    const auto channel = numberOf(arguments[0], BoardAnalog::channelCount - 1);
    if (!channel)
        return {};
    bench.meter().pinSensor(*channel);
    return done;
}

QString meter(Bench &bench, const QStringList &arguments)
{
    const bool overflow = arguments[0] == overflowWord;
    if (!overflow && arguments[0] != normalWord)
        return {};
    bench.meter().setOverflow(overflow);
    return done;
}

QString serial(Bench &bench, const QStringList &arguments)
{
    return bench.board().setSerial(arguments[0].toLatin1()) ? done : QString();
}

QString power(Bench &bench, const QStringList &)
{
    bench.board().powerCycle();
    return done;
}

struct Order
{
    OrderText text;
    QString (*run)(Bench &bench, const QStringList &arguments);
};

constexpr Order orders[] = {
    {{"connector"_L1, "on|off"_L1, "the loop-back connector between ports 0-2 and 1-3"_L1},
     connector},
    {{"sensor"_L1, "follow|CHANNEL"_L1,
      "the meter's sensor follows the board's DACs, or stays on CHANNEL"_L1},
     sensor},
    {{"meter"_L1, "normal|overflow"_L1, "what the meter answers"_L1}, meter},
    {{"stuck"_L1, "data|dir PORT BIT 0|1"_L1, "a bit of the board's ports is stuck"_L1}, stuck},
    {{"free"_L1, ""_L1, "no bit is stuck any more"_L1}, freeBits},
    {{"serial"_L1, "TEXT"_L1, "the board's serial number"_L1}, serial},
    {{"power"_L1, ""_L1, "the board is switched off and on"_L1}, power},
};

} // namespace

std::vector<DeskOrder> benchOrders::of(Bench &bench)
{
    std::vector<DeskOrder> result;
    for (const Order &order : orders)
        result.push_back({order.text, [&bench, run = order.run](const QStringList &arguments) {
                              return run(bench, arguments);
                          }});
    return result;
}

QString benchOrders::state(Bench &bench)
{
    const BoardPorts &ports = bench.board().ports();
    const Meter &meter = bench.meter();
    QStringList stuck;
    for (const BoardPorts::StuckBit &bit : ports.stuckBits())
        stuck.append(
            u"%1 %2 %3 %4"_s.arg(bit.where == BoardPorts::Where::Data ? dataWord : directionWord)
                .arg(bit.port)
                .arg(bit.bit)
                .arg(int(bit.high)));
    return u"connector %1, %2, sensor%3 on channel %4, meter %5, serial %6"_s
        .arg(ports.connector() ? u"fitted"_s : u"off"_s,
             stuck.isEmpty() ? u"no stuck bit"_s : u"stuck "_s + stuck.join(u" and "_s),
             meter.isSensorPinned() ? QString() : u" follows,"_s)
        .arg(meter.sensorChannel())
        .arg(meter.overflow() ? overflowWord : normalWord,
             QString::fromLatin1(bench.board().serial()));
}

} // namespace corvane::bench
