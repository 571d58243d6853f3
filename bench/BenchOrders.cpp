#include "bench/BenchOrders.h"

#include "bench/Bench.h"
#include "bench/Text.h"

#include <algorithm>

namespace corvane::bench {

namespace {

const QString done = u"done"_s;
const QString dataWord = u"data"_s;
const QString directionWord = u"dir"_s;
const QString normalWord = u"normal"_s;
const QString overflowWord = u"overflow"_s;

std::optional<int> numberOf(const QString &word, int high)
{
    return text::whole(word.toLatin1(), 0, high);
}

QString fault(Bench &bench, const QString &place, const QString &text)
{
    const auto &places = bench.places();
    const auto found = std::find_if(places.begin(), places.end(), [&](const Bench::Place &one) {
        return one.name.compare(place, Qt::CaseInsensitive) == 0;
    });
    if (found == places.end())
        return u"There is no order and no place \"%1\". Try \"help\" or \"list\"."_s.arg(place);
    const auto fault = Fault::parse(text);
    if (!fault)
        return u"There is no fault \"%1\". Try \"help\"."_s.arg(text);
    found->faults->order(*fault);
    if (fault->kind == Fault::Kind::Unplug) {
        found->plug->unplug();
        return done;
    }
    if (fault->kind == Fault::Kind::None)
        found->plug->discardOutput();
    return found->plug->replug() ? done : u"%1 cannot come back now."_s.arg(found->name);
}

QString list(Bench &bench, const QStringList &)
{
    QStringList lines;
    for (const Bench::Place &place : bench.places()) {
        lines.append(u"%1 %2 %3 %4"_s.arg(place.name, -12)
                         .arg(place.what, -30)
                         .arg(place.where, -38)
                         .arg(place.state()));
    }
    lines.append(benchOrders::state(bench));
    return lines.join(u'\n');
}

QString clear(Bench &bench, const QStringList &)
{
    QString answer = done;
    for (const Bench::Place &place : bench.places()) {
        const QString one = fault(bench, place.name, u"none"_s);
        if (one != done)
            answer = one;
    }
    return answer;
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

QString help(Bench &, const QStringList &);

struct Order
{
    OrderText text;
    /// Empty: the arguments were wrong. It gets as many as the text names.
    QString (*run)(Bench &bench, const QStringList &arguments);
};

constexpr Order orders[] = {
    {{"list"_L1, ""_L1, "what is where, and its fault"_L1}, list},
    {{"help"_L1, ""_L1, "this list"_L1}, help},
    {{"clear"_L1, ""_L1, "no fault anywhere, nothing unplugged"_L1}, clear},
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

QString help(Bench &, const QStringList &)
{
    const auto line = [](int width, const QString &order, QLatin1String about) {
        return u"  %1 %2\n"_s.arg(order, -width).arg(about);
    };
    const auto usage = [](const OrderText &text) {
        return u"%1 %2"_s.arg(text.word, text.arguments);
    };
    constexpr int width = 28;
    QString text = u"Orders:\n"_s;
    for (const Order &order : orders)
        text += line(width, usage(order.text), order.text.about);
    text += line(width, u"PLACE FAULT"_s, "a fault at a place of the list, as \"rs485 silent\""_L1);
    text += u"Faults:\n"_s;
    for (const OrderText &fault : Fault::choices())
        text += line(width, usage(fault), fault.about);
    return text.chopped(1);
}

} // namespace

std::vector<OrderText> benchOrders::choices()
{
    std::vector<OrderText> choices;
    for (const Order &order : orders) {
        if (order.run != list && order.run != help)
            choices.push_back(order.text);
    }
    return choices;
}

QString benchOrders::run(Bench &bench, const QString &text)
{
    if (text != QString::fromLatin1(text.toLatin1()))
        return u"An order has 8-bit characters only; nothing was done."_s;
    const QString word = text.trimmed().section(u' ', 0, 0);
    const QString rest = text.trimmed().section(u' ', 1).trimmed();
    for (const Order &order : orders) {
        if (word.compare(order.text.word, Qt::CaseInsensitive) != 0)
            continue;
        const QStringList arguments = rest.split(u' ', Qt::SkipEmptyParts);
        const QString named(order.text.arguments);
        const QString answer = arguments.size() == named.split(u' ', Qt::SkipEmptyParts).size()
                                   ? order.run(bench, arguments)
                                   : QString();
        return answer.isEmpty() ? u"Use: %1 %2"_s.arg(order.text.word, named).trimmed() : answer;
    }
    return fault(bench, word, rest);
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
