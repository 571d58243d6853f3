#include "perf/Child.h"
#include "perf/FirstPaint.h"

#include <QApplication>
#include <QMainWindow>

using namespace corvane::perf;

namespace {

/// An empty main window, the least that a program on Qt can start with.
int showEmptyWindow(int argc, char **argv)
{
    const QApplication application(argc, argv);
    QMainWindow window;
    window.resize(1024, 700);
    FirstPaint::watch(window);
    window.show();
    return QApplication::exec();
}

int measure(const char *program)
{
    std::vector<double> starts;
    std::vector<double> memories;
    for (int round = -1; round < 9; ++round) {
        const double begin = now();
        const Usage usage = Child({program, "--show"}).finish();
        const auto painted = figure(usage.output, "painted");
        if (!painted) {
            std::fprintf(stderr, "the window did not paint (exit code %d)\n", usage.exitCode);
            return 1;
        }
        if (round < 0) // the first one reads the libraries from the disk
            continue;
        starts.push_back((*painted - begin) * 1000);
        memories.push_back(figure(usage.output, "memory").value_or(0) / 1e6);
    }
    Table table("Empty Qt main window: the measure of the start");
    table.note("start of the process to first paint", median(starts), "ms");
    table.note("resident memory at first paint", median(memories), "MB");
    return table.exitCode();
}

} // namespace

/// Without arguments: measures itself. With --show: the window for others' comparisons.
int main(int argc, char **argv)
{
    return argc == 2 ? showEmptyWindow(argc, argv) : measure(argv[0]);
}
