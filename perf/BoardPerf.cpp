// SPDX-License-Identifier: GPL-3.0-or-later
// How much longer than its waits the board's long work takes, and what it costs meanwhile.
#include "perf/Application.h"
#include "perf/AssembledWindow.h"
#include "perf/BenchProcess.h"
#include "windows/board/CalibrationPanel.h"
#include "windows/board/DigitalIoPanel.h"
#include "windows/board/DigitalTestsPanel.h"
#include "windows/board/frmSBC.h"
#include "windows/main/BoardWindows.h"

#include <QAction>
#include <QLabel>

using namespace corvane;
using namespace corvane::perf;

namespace {

/// The real clock; it adds up what is waited for.
class RecordingClock : public SystemClock
{
public:
    double askedMs = 0;

protected:
    WaitEnd runWait(const Condition &done, int ms, const Condition &cancelled) override
    {
        askedMs += ms;
        return SystemClock::runWait(done, ms, cancelled);
    }
};

// The waits as they are documented, in ms

constexpr int command = 25 + 100;
constexpr int meterReading = 1000 + 1000;

/// The low point, the high point, storing and reading back.
constexpr int calibration = (2 * command + 1500 + command + 500 + meterReading) +
                            (command + 500 + command + 500 + meterReading) +
                            (2 * command + 100 + command + command + 500 + 500 + meterReading);

constexpr int scanOfChannel = (100 + command + 100) + (100 + command + 300);
constexpr int scanOfMeter = 100 + command + 100 + 100 + 100;
constexpr int scanAll = 8 * (scanOfChannel + scanOfMeter);

constexpr int portCommand = command + 25;
constexpr int patterns = 17;
/// Four ports written and read; then two times four directions and four pairs of ports.
constexpr int fullTest =
    4 * patterns * 2 * portCommand + 2 * 4 * portCommand + 4 * patterns * 2 * portCommand;

struct Work
{
    std::string name;
    int waitsMs;
    std::function<void()> press;
    /// Whether it went well, so that its time means something.
    std::function<bool()> succeeded;
};

void measureWork(Table &table, RecordingClock &clock, const Work &work)
{
    clock.askedMs = 0;
    const double processorBefore = processorSeconds();
    const double seconds = secondsOf(work.press);
    const double processor = processorSeconds() - processorBefore;
    if (!work.succeeded())
        throw std::runtime_error(work.name + " did not succeed");
    table.note(work.name + ", its waits", work.waitsMs, "ms");
    table.atLeast(work.name + ", waits asked for over them", clock.askedMs / work.waitsMs, 1,
                  "times");
    table.atMost(work.name + ", time over them", seconds * 1000 / work.waitsMs, 1.01, "times");
    table.atMost(work.name + ", processor", processor / seconds * 100, 2, "% core");
}

/// The board window, its method IEEE.
frmSBC &openBoard(Main &window)
{
    connectChannel(window, channels::ieee488, {.address = u"GPIB0::9"_s});
    window.showChannel(channels::ieee488);
    window.mnuSBC->trigger();
    return *window.boardWindows().boardWindow();
}

int measure()
{
    BenchProcess bench;
    bench.order("connector on", "done");
    RecordingClock clock;
    AssembledWindow assembled(clock, bench.commandLine());
    frmSBC &board = openBoard(assembled.window());
    CalibrationPanel &panel = *board.calibration;
    DigitalTestsPanel &tests = *board.digitalIo->tests;
    assembled.window().WaitMs(500);

    const auto done = [&panel] { return panel.lblProgress->text() == u"Done"; };
    const Work all[] = {
        {"calibration", calibration, [&panel] { panel.cmdCal_Click(); }, done},
        {"Scan All", scanAll, [&panel] { panel.cmdScan_Click(); }, done},
        {"Full Test", fullTest, [&tests] { tests.cmdDigTestFull_Click(); },
         [&assembled] { return assembled.messages().contains(u"loop back PASSED"); }},
    };
    Table table("The board over IEEE 488");
    for (const Work &work : all)
        measureWork(table, clock, work);
    return table.exitCode();
}

} // namespace

int main(int argc, char **argv)
{
    return runApplication(argc, argv, measure);
}
