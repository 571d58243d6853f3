// SPDX-License-Identifier: GPL-3.0-or-later
// What the program costs while nothing happens, with the Channels connected, and how well the
// shortest loop keeps its period.
#include "app/window/WindowProgram.h"
#include "perf/Application.h"
#include "perf/BenchProcess.h"
#include "windows/main/TcpTab.h"
#include "windows/widgets/QtDialogs.h"

#include <cmath>

using namespace corvane;
using namespace corvane::perf;

namespace {

void connectAll(Main &window, const BenchProcess &bench)
{
    const ChannelEntries tcp{.port = bench.chamberPort(), .host = u"127.0.0.1"_s};
    connectChannel(window, channels::rs485, {.port = u"1"_s, .address = u"05"_s});
    connectChannel(window, channels::rs232, {.port = u"2"_s});
    connectChannel(window, channels::ieee488, {.address = u"GPIB0::5"_s});
    connectChannel(window, channels::tcpIp1, tcp);
    connectChannel(window, channels::tcpIp2, tcp);
}

/// Percent of one core that `work` takes.
double load(const std::function<void()> &work)
{
    const double before = processorSeconds();
    const double seconds = secondsOf(work);
    return (processorSeconds() - before) / seconds * 100;
}

void idle(int ms)
{
    QEventLoop loop;
    QTimer::singleShot(ms, Qt::PreciseTimer, &loop, &QEventLoop::quit);
    loop.exec();
}

/// The middle distance of two replies of a loop, in ms.
double loopPeriodMs(Main &window, int periodMs, int ms)
{
    const ChannelTab &channel = *window.channel(channels::tcpIp1);
    channel.cboMs->setEditText(QString::number(periodMs));
    window.channel(channels::tcpIp1)->cboMs_Change();
    std::vector<double> periods;
    double last = 0;
    const auto watch = QObject::connect(&channel.session(), &ChannelSession::replied, &window, [&] {
        const double time = now();
        if (last > 0)
            periods.push_back((time - last) * 1000);
        last = time;
    });
    channel.chkLoop->setChecked(true);
    idle(ms);
    channel.chkLoop->setChecked(false);
    QObject::disconnect(watch);
    return median(periods);
}

int measure()
{
    constexpr int period = 10;
    const BenchProcess bench;
    QtDialogs dialogs;
    WindowProgram program(bench.commandLine(), dialogs);
    Main &window = program.window();
    window.show();
    connectAll(window, bench);
    idle(1000);

    Table table("All Channels connected");
    table.atMost("an idle window", load([] { idle(10'000); }), 1, "% core");
    table.atMost("a wait", load([&] { window.WaitMs(10'000); }), 1, "% core");
    const double loop = loopPeriodMs(window, period, 5000);
    table.note("loop of 10 ms on TCP/IP-1, median period", loop, "ms");
    table.atMost("off its period by", std::abs(loop - period), 1, "ms");
    return table.exitCode();
}

} // namespace

int main(int argc, char **argv)
{
    return runApplication(argc, argv, measure);
}
