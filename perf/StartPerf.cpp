// SPDX-License-Identifier: GPL-3.0-or-later
// What the start costs: from the process to the first paint of the window, and the memory then,
// beside an empty Qt main window; on an X server, as a user starts it. Then what a run without a
// window costs.
#include "app/window/WindowProgram.h"
#include "perf/Application.h"
#include "perf/BenchProcess.h"
#include "perf/Child.h"
#include "perf/FirstPaint.h"
#include "windows/widgets/QtDialogs.h"

using namespace corvane;
using namespace corvane::perf;

namespace {

/// The program's window as main() opens it.
int showWindow()
{
    QtDialogs dialogs;
    WindowProgram program(CommandLine(), dialogs);
    FirstPaint::watch(program.window());
    program.window().show();
    return QApplication::exec();
}

struct Start
{
    double ms;
    double megabytes;
};

Start start(const QStringList &command)
{
    const double begin = now();
    const Usage usage = Child(command).finish();
    const auto painted = figure(usage.output, "painted");
    if (!painted)
        throw std::runtime_error(command.front().toStdString() + " did not paint");
    return {(*painted - begin) * 1000, figure(usage.output, "memory").value_or(0) / 1e6};
}

/// An X server without a screen, for the programs that are started while it lives.
class VirtualScreen
{
public:
    VirtualScreen()
        : m_server({u"Xvfb"_s, u"-displayfd"_s, u"1"_s, u"-screen"_s, u"0"_s, u"1280x1024x24"_s})
    {
        if (!m_server.waitForOutput("\n"))
            throw std::runtime_error("Xvfb does not start; scripts/install-packages perf");
        qputenv("DISPLAY", ':' + m_server.output().trimmed());
        qputenv("QT_QPA_PLATFORM", "xcb");
    }

private:
    Child m_server;
};

/// `corvane --run` on a list of one row, beside a program that makes a QCoreApplication and ends.
/// By itself the run waits for two ticks: before the row, and before the end.
void measureRun(Table &table)
{
    constexpr int loopMs = 10;
    const BenchProcess bench;
    const QTemporaryDir folder;
    QFile list(folder.filePath(u"one.kms"_s));
    if (!list.open(QIODevice::WriteOnly) || list.write("= SP 25\n") < 0 || !list.flush())
        throw std::runtime_error("no list file");
    const QStringList run{programBeside(u"corvane"_s),
                          u"--run"_s,
                          list.fileName(),
                          u"--channel"_s,
                          u"tcp1"_s,
                          u"--host"_s,
                          u"127.0.0.1"_s,
                          u"--port"_s,
                          bench.chamberPort(),
                          u"--loop"_s,
                          QString::number(loopMs)};
    std::vector<double> memory[2];
    const auto took = [](Child &child, double begin) {
        if (!child.finish().succeeded)
            throw std::runtime_error("a run without a window has failed");
        return (now() - begin) * 1000;
    };
    const Comparison time = compare(
        61,
        [&] {
            const double begin = now();
            Child child(run);
            child.waitForOutput("\n"); // its row
            memory[0].push_back(child.peakBytes() / 1e6);
            return took(child, begin) - 2 * loopMs;
        },
        [&] {
            const double begin = now();
            Child child({programBeside(u"peers/EmptyCore"_s)});
            const double ms = took(child, begin);
            memory[1].push_back(figure(child.output(), "memory").value_or(0) / 1e6);
            return ms;
        });
    table.note("a run of one row, less its two loop times", time.a, "ms");
    table.note("an empty QCoreApplication", time.b, "ms");
    table.atMost("the run over the empty one", time.ratio, 1.5, "times");
    table.note("resident at most, the run", median(memory[0]), "MB");
    table.note("resident, an empty QCoreApplication", median(memory[1]), "MB");
    table.atMost("the run over the empty one", median(memory[0]) / median(memory[1]), 2, "times");
}

int measure(const QString &program)
{
    const VirtualScreen screen;
    std::vector<double> memory[2];
    const auto run = [&](size_t which, const QStringList &command) {
        const Start figures = start(command);
        memory[which].push_back(figures.megabytes);
        return figures.ms;
    };
    const Comparison time = compare(
        61,
        [&] {
            return run(0, {program, u"--show"_s});
        },
        [&] { return run(1, {programBeside(u"peers/EmptyWindow"_s)}); });
    Table table("Start");
    table.note("to the first paint, the window", time.a, "ms");
    table.note("to the first paint, an empty window", time.b, "ms");
    table.atMost("the window over the empty one", time.ratio, 1.5, "times");
    table.note("resident then, the window", median(memory[0]), "MB");
    table.note("resident then, an empty window", median(memory[1]), "MB");
    table.atMost("the window over the empty one", median(memory[0]) / median(memory[1]), 1.6,
                 "times");
    measureRun(table);
    return table.exitCode();
}

} // namespace

/// Without arguments: measures. With --show: the window, until it has painted.
int main(int argc, char **argv)
{
    if (argc == 2)
        return runApplication(argc, argv, showWindow);
    try {
        return measure(QString::fromLocal8Bit(argv[0]));
    } catch (const std::exception &fault) {
        std::fprintf(stderr, "%s\n", fault.what());
        return 2;
    }
}
