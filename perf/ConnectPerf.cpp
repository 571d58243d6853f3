// SPDX-License-Identifier: GPL-3.0-or-later
// What a connection leaves behind: the memory of the window after thousands of connects and
// disconnects, beside that after the first hundreds, which fill what is kept for reuse.
#include "app/window/WindowProgram.h"
#include "perf/Application.h"
#include "perf/BenchProcess.h"
#include "windows/widgets/QtDialogs.h"

using namespace corvane;
using namespace corvane::perf;

namespace {

constexpr int cyclesBefore = 500;
constexpr double mostGrowth = 2; // MB

/// Presses Connect and Disconnect, with the paints that follow, `cycles` times. Returns by how many
/// MB the memory grew after the first ones.
double growth(Main &window, int index, const ChannelEntries &entries, int cycles)
{
    double before = 0;
    for (int cycle = 0; cycle < cycles; ++cycle) {
        if (cycle == cyclesBefore)
            before = residentBytes();
        connectChannel(window, index, entries);
        window.WaitMs(1);
        window.cmdDisconnect_Click(index);
        window.WaitMs(1);
    }
    return (residentBytes() - before) / 1e6;
}

int measure()
{
    const BenchProcess bench;
    QtDialogs dialogs;
    WindowProgram program(bench.commandLine(), dialogs);
    Main &window = program.window();
    window.show();
    window.WaitMs(500);

    Table table("Memory after many connects and disconnects");
    const auto judge = [&](const char *what, int index, const ChannelEntries &entries, int cycles) {
        window.showChannel(index);
        table.atMost(what, growth(window, index, entries, cycles), mostGrowth, "MB");
    };
    judge("TCP/IP-1, 10,000 cycles: growth after 500", channels::tcpIp1,
          {.port = bench.chamberPort(), .host = u"127.0.0.1"_s}, 10'000);
    judge("TCP/IP-2 by name, 2,000 cycles", channels::tcpIp2,
          {.port = bench.chamberPort(), .host = u"localhost"_s}, 2'000);
    judge("RS-232 on a pty, 5,000 cycles", channels::rs232, {.port = u"2"_s}, 5'000);
    judge("IEEE 488, 1,000 connects", channels::ieee488, {.address = u"GPIB0::5"_s}, 1'000);
    table.note("memory at the end", residentBytes() / 1e6, "MB");
    return table.exitCode();
}

} // namespace

int main(int argc, char **argv)
{
    return runApplication(argc, argv, measure);
}
