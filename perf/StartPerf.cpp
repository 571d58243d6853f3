// What the start costs: from the process to the first paint of the window, and the memory then,
// beside an empty Qt main window; on an X server, as a user starts it.
#include "app/window/WindowProgram.h"
#include "perf/Application.h"
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
