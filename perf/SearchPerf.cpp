// SPDX-License-Identifier: GPL-3.0-or-later
// How much longer than its floor the GPIB search of an empty bus takes.
#include "bench/PlusPlusController.h"
#include "bench/TcpPort.h"
#include "core/setup/GpibSearch.h"
#include "devices/GpibControl.h"
#include "perf/Application.h"
#include "perf/AssembledWindow.h"
#include "perf/Harness.h"
#include "windows/main/SetupWindows.h"
#include "windows/setup/frmGPIB.h"

using namespace corvane;
using namespace corvane::perf;

namespace {

constexpr int timeoutMs = 50;
constexpr int patienceMs = 120'000;

/// A "++" controller on TCP without an instrument.
class EmptyBus
{
public:
    EmptyBus()
    {
        QObject::connect(&m_port, &bench::TcpPort::opened, &m_controller,
                         &bench::PlusPlusController::attach);
        if (!m_port.listen(0))
            throw std::runtime_error("no TCP port");
    }

    /// Every board of the program is this controller.
    [[nodiscard]] CommandLine commandLine() const
    {
        CommandLine line;
        line.gpibAdapters.fill(u"tcp:127.0.0.1:%1"_s.arg(m_port.port()));
        return line;
    }

private:
    bench::PlusPlusController m_controller;
    bench::TcpPort m_port;
};

int measure()
{
    const EmptyBus bus;
    SystemClock clock;
    AssembledWindow assembled(clock, bus.commandLine());
    Main &window = assembled.window();
    window.parts().channels.gpib().control().setTimeout(timeoutMs);
    GpibSearch &search = window.setupWindows().search();
    int probes = 0;
    double begin = 0;
    QObject::connect(&search, &GpibSearch::positionChanged, &window, [&](int number) {
        probes = number;
        if (number == 1)
            begin = now();
    });
    QString faults;
    QObject::connect(&search, &GpibSearch::faultsChanged, &window,
                     [&faults](const QString &text) { faults = text; });
    window.setupWindows().cmdSearchGPIB_Click();
    window.waits().waitUntil([&] { return probes > 0 && !search.isRunning(); }, patienceMs);
    const double seconds = now() - begin;
    if (probes != GpibSearch::probeCount || !faults.isEmpty())
        throw std::runtime_error("the search did not probe every address");

    constexpr int floorMs = GpibSearch::probeCount * (GpibSearch::replyDelayMs + timeoutMs);
    Table table("GPIB search of an empty bus");
    table.note("124 x (75 ms + Timeout)", floorMs, "ms");
    table.atMost("time over it", seconds * 1000 / floorMs, 1.02, "times");
    return table.exitCode();
}

} // namespace

int main(int argc, char **argv)
{
    return runApplication(argc, argv, measure);
}
