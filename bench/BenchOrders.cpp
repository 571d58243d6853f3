#include "bench/BenchOrders.h"

#include "bench/Bench.h"
#include "bench/Text.h"

#include <algorithm>

namespace corvane::bench {

namespace {

const QString done = QStringLiteral("done");

std::optional<int> numberOf(const QString &word, int high)
{
    return text::whole(word.toLatin1(), 0, high);
}

} // namespace

std::span<const BenchOrders::Order> BenchOrders::orders()
{
    static constexpr Order table[] = {
        {"list", "", "what is where, and its fault", &BenchOrders::list},
        {"clear", "", "no fault anywhere, nothing unplugged", &BenchOrders::clear},
        {"connector", "on|off", "the loop-back connector between ports 0-2 and 1-3",
         &BenchOrders::connector},
        {"stuck", "data|dir PORT BIT 0|1", "a bit of the board is stuck; \"stuck none\" frees all",
         &BenchOrders::stuck},
        {"sensor", "CHANNEL", "the meter's sensor is on that channel, 0 to 7",
         &BenchOrders::sensor},
        {"meter", "normal|overflow", "what the meter answers", &BenchOrders::meter},
        {"serial", "TEXT", "the board's serial number", &BenchOrders::serial},
        {"power", "", "the board is switched off and on", &BenchOrders::power},
        {"help", "", "this list", &BenchOrders::showHelp},
    };
    return table;
}

QString BenchOrders::run(const QString &text)
{
    const QString word = text.trimmed().section(u' ', 0, 0);
    const QString rest = text.trimmed().section(u' ', 1).trimmed();
    for (const Order &order : orders()) {
        if (word.compare(QLatin1String(order.word), Qt::CaseInsensitive) != 0)
            continue;
        const QString answer = (this->*order.run)(rest.split(u' ', Qt::SkipEmptyParts));
        return answer.isEmpty()
                   ? QStringLiteral("Use: %1 %2")
                         .arg(QLatin1String(order.word), QLatin1String(order.arguments))
                   : answer;
    }
    return fault(word, rest);
}

QString BenchOrders::help()
{
    QString text = QStringLiteral("Orders:\n");
    for (const Order &order : orders()) {
        const QString usage =
            QStringLiteral("%1 %2").arg(QLatin1String(order.word), QLatin1String(order.arguments));
        text += QStringLiteral("  %1 %2\n").arg(usage, -28).arg(QLatin1String(order.about));
    }
    text += QStringLiteral("  %1 %2\n")
                .arg(QStringLiteral("PLACE FAULT [once]"), -28)
                .arg(QStringLiteral("a fault at a place of the list, as \"rs485 silent\""));
    return text + QStringLiteral("Faults:\n") + Fault::help().chopped(1);
}

QString BenchOrders::showHelp(const QStringList &)
{
    return help();
}

QString BenchOrders::list(const QStringList &)
{
    QStringList lines;
    for (const Bench::Place &place : m_bench.places()) {
        const QString state = place.plug->state();
        lines.append(QStringLiteral("%1 %2 %3 %4%5")
                         .arg(place.name, -12)
                         .arg(place.what, -30)
                         .arg(place.where, -38)
                         .arg(place.faults->fault().toString(),
                              state.isEmpty() ? QString() : QStringLiteral(", ") + state));
    }
    const BoardPorts &ports = m_bench.board().ports();
    lines.append(QStringLiteral("connector %1, %2 stuck bits, sensor on channel %3, serial %4")
                     .arg(ports.connector() ? QStringLiteral("fitted") : QStringLiteral("off"))
                     .arg(ports.stuckBits().size())
                     .arg(m_bench.meter().sensorChannel())
                     .arg(QString::fromLatin1(m_bench.board().serial())));
    return lines.join(u'\n');
}

QString BenchOrders::clear(const QStringList &)
{
    QString answer = done;
    for (const Bench::Place &place : m_bench.places()) {
        const QString one = fault(place.name, QStringLiteral("none"));
        if (one != done)
            answer = one;
    }
    return answer;
}

QString BenchOrders::connector(const QStringList &arguments)
{
    const QString word = arguments.value(0);
    if (word != u"on" && word != u"off")
        return {};
    m_bench.board().ports().setConnector(word == u"on");
    return done;
}

QString BenchOrders::stuck(const QStringList &arguments)
{
    BoardPorts &ports = m_bench.board().ports();
    if (arguments == QStringList{QStringLiteral("none")}) {
        ports.freeStuckBits();
        return done;
    }
    if (arguments.size() != 4 || (arguments[0] != u"data" && arguments[0] != u"dir"))
        return {};
    const auto port = numberOf(arguments[1], BoardPorts::portCount - 1);
    const auto bit = numberOf(arguments[2], BoardPorts::pinCount - 1);
    const auto level = numberOf(arguments[3], 1);
    if (!port || !bit || !level)
        return {};
    const auto where =
        arguments[0] == u"data" ? BoardPorts::Where::Data : BoardPorts::Where::Direction;
    ports.stick({where, *port, *bit, *level == 1});
    return done;
}

QString BenchOrders::sensor(const QStringList &arguments)
{
    const auto channel = numberOf(arguments.value(0), BoardAnalog::channelCount - 1);
    if (!channel)
        return {};
    m_bench.meter().setSensorChannel(*channel);
    return done;
}

QString BenchOrders::meter(const QStringList &arguments)
{
    const QString word = arguments.value(0);
    if (word != u"normal" && word != u"overflow")
        return {};
    m_bench.meter().setOverflow(word == u"overflow");
    return done;
}

QString BenchOrders::serial(const QStringList &arguments)
{
    return m_bench.board().setSerial(arguments.value(0).toLatin1()) ? done : QString();
}

QString BenchOrders::power(const QStringList &)
{
    m_bench.board().powerCycle();
    return done;
}

QString BenchOrders::fault(const QString &place, const QString &text)
{
    const auto &places = m_bench.places();
    const auto found = std::find_if(places.begin(), places.end(), [&](const Bench::Place &one) {
        return one.name.compare(place, Qt::CaseInsensitive) == 0;
    });
    if (found == places.end())
        return QStringLiteral("There is no order and no place \"%1\". Try \"help\" or \"list\".")
            .arg(place);
    const auto fault = Fault::parse(text);
    if (!fault)
        return QStringLiteral("There is no fault \"%1\". Try \"help\".").arg(text);
    found->faults->order(*fault);
    if (fault->kind == Fault::Kind::Unplug) {
        found->plug->unplug();
        return done;
    }
    if (fault->kind == Fault::Kind::None)
        found->plug->discardOutput();
    return found->plug->replug() ? done
                                 : QStringLiteral("%1 cannot come back now.").arg(found->name);
}

} // namespace corvane::bench
