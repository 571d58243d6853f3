#include "app/CommandLine.h"
#include "app/DemoGreeting.h"
#include "app/Program.h"
#include "app/ToolkitWatch.h"
#include "app/UnattendedDialogs.h"
#include "app/UnattendedRun.h"
#include "core/channels/Module1.h"
#include "core/text/PrintableText.h"
#include "core/text/ProductInfo.h"
#include "devices/PlatformError.h"
#include "devices/StandardStreams.h"
#include "devices/StopSignal.h"
#include "windows/main/BenchWindow.h"
#include "windows/widgets/QtDialogs.h"

#include <QApplication>
#include <QPointer>
#include <QTextStream>
#include <QTimer>

#include <optional>

using namespace corvane;

namespace {

constexpr int failed = 2;

/// What was asked for, and where the answers go.
struct Job
{
    const CommandLine &line;
    QTextStream &out;
    QTextStream &messages;
};

/// The window system that the environment asks for, without its arguments; empty: the usual one.
QString askedPlatform()
{
    return qEnvironmentVariable("QT_QPA_PLATFORM").section(u':', 0, 0);
}

bool hasDisplay()
{
    const QString platform = askedPlatform();
    if (!platform.isEmpty())
        return platform != u"offscreen" && platform != u"minimal";
#ifdef Q_OS_UNIX
    return !qEnvironmentVariableIsEmpty("DISPLAY") ||
           !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
#else
    return true;
#endif
}

/// What is said when the toolkit cannot start.
QString toolkitFault()
{
    QString fault;
    if (const QString platform = askedPlatform(); !platform.isEmpty())
        fault = u"the toolkit cannot start on \"%1\" (QT_QPA_PLATFORM)."_s.arg(platform);
    else
        fault = u"the display %1 cannot be opened."_s.arg(
            qEnvironmentVariable("DISPLAY", qEnvironmentVariable("WAYLAND_DISPLAY")));
    return fault + u"\nUse --run LIST to run a list without one. With CORVANE_DEBUG=1 "
                   "the toolkit's own messages are shown."_s;
}

void printHelp(const Job &job, int &argc, char **argv)
{
    const QCoreApplication application(argc, argv); // knows the program's name
    job.out << CommandLine::helpText();
}

void listPorts(const Job &job, int &argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    SerialPortList ports;
    ports.pin(job.line.serialDevices);
    job.out << SerialPortList::describe(ports.entries()) << Qt::endl;
}

int runWindow(const CommandLine &line)
{
    QtDialogs dialogs;
    Program program(line, dialogs);
    const StopSignal stop([&program] { program.window().close(); });
    QObject::connect(&program.window(), &Main::closed, qApp, &QCoreApplication::quit);
    program.window().show();
    // For the window manager: the first paint does not wait for the picture.
    QTimer::singleShot(0, &program.window(), [&program] {
        QApplication::setWindowIcon(QPixmap(u":/corvane.png"_s));
        if (program.benchWindow())
            program.benchWindow()->openBeside(program.window());
    });
    if (!line.list.isEmpty())
        program.window().loadList(line.list);
    return QApplication::exec();
}

/// What `corvane --demo [LIST]` does without a display. Returns the exit code.
int demonstrate(Main &window, const Job &job)
{
    const int greeting = greetTheBench(window, job.out);
    if (window.waits().isClosed())
        job.messages << "corvane: stopped" << Qt::endl;
    if (greeting != 0 || job.line.list.isEmpty())
        return greeting;
    CommandLine run = job.line;
    run.channel = channels::tcpIp1;
    return UnattendedRun(window, run, job.out, job.messages).execute();
}

/// Runs a task in the event loop, without a window on the screen, and then closes the window.
int runUnattended(const Job &job)
{
    // Also while the program is put together: the event loop, when it begins, then closes the
    // window.
    QPointer<Main> target;
    const StopSignal stop([&target] {
        if (target)
            target->close();
    });
    UnattendedDialogs dialogs(job.messages);
    Program program(job.line, dialogs, GpibAdapterFactory::Reader::CommandLine);
    Main &window = program.window();
    target = &window;
    QObject::connect(&window, &Main::faultReported, &window, [&job](const QString &fault) {
        job.messages << printableText::message(fault) << Qt::endl;
    });
    QObject::connect(&window, &Main::noted, &window, [&job](const QString &note) {
        job.messages << printableText::message(note) << Qt::endl;
    });
    std::optional<int> exitCode;
    QTimer::singleShot(0, &window, [&] {
        exitCode = job.line.task == CommandLine::Task::Run
                       ? UnattendedRun(window, job.line, job.out, job.messages).execute()
                       : demonstrate(window, job);
        window.close();
    });
    QObject::connect(&window, &Main::closed, qApp, &QCoreApplication::quit);
    QApplication::exec();
    if (!exitCode)
        throw PlatformError(u"stopped before anything was sent"_s);
    return *exitCode;
}

int runProgram(const Job &job, int &argc, char **argv)
{
    const bool showsWindow = job.line.task == CommandLine::Task::Window && hasDisplay();
    if (!showsWindow) {
        StopSignal::endBeforeLoop("corvane: stopped before anything was sent\n");
        qputenv("QT_QPA_PLATFORM", "minimal"); // looks for no fonts, whose cache needs a home
    }
    const ToolkitWatch watch(toolkitFault(), failed);
    const QApplication application(argc, argv);
    ToolkitWatch::started();
    QApplication::setQuitOnLastWindowClosed(false);
    return showsWindow ? runWindow(job.line) : runUnattended(job);
}

int runTask(const Job &job, int &argc, char **argv)
{
    switch (job.line.task) {
    case CommandLine::Task::Help:
        printHelp(job, argc, argv);
        return 0;
    case CommandLine::Task::Version:
        job.out << QString::fromUtf16(productInfo::title) << ' ' << productInfo::versionMajor << '.'
                << productInfo::versionMinor << '.' << productInfo::versionRevision << Qt::endl;
        return 0;
    case CommandLine::Task::ListPorts:
        listPorts(job, argc, argv);
        return 0;
    case CommandLine::Task::Run:
        if (standardStreams::canPrint())
            return runProgram(job, argc, argv);
        throw PlatformError(u"standard output is closed"_s);
    case CommandLine::Task::Window:
        break;
    }
    if (hasDisplay() || job.line.demo)
        return runProgram(job, argc, argv);
    throw PlatformError(u"there is no display. Use --run LIST to run a list, or --demo."_s);
}

CommandLine readArguments(int argc, char **argv)
{
    QStringList arguments;
    for (int index = 0; index < argc; ++index) {
        arguments.append(QString::fromLocal8Bit(argv[index]));
        if (arguments.last().toLocal8Bit() != argv[index]) // no file would be found by it
            throw PlatformError(u"%1: the name is not in the system's character set (UTF-8)"_s.arg(
                arguments.last()));
    }
    try {
        return CommandLine::parse(arguments);
    } catch (const PlatformError &error) {
        throw PlatformError(error.description() + u"\nSee corvane --help."_s);
    }
}

} // namespace

int main(int argc, char **argv)
{
    standardStreams::prepare();
    QTextStream out(stdout);
    QTextStream messages(stderr);
    QCoreApplication::setApplicationName(QString::fromUtf16(productInfo::title));
    try {
        const CommandLine line = readArguments(argc, argv);
        const int exitCode = runTask({line, out, messages}, argc, argv);
        out.flush();
        if (exitCode != failed && out.status() != QTextStream::Ok)
            throw PlatformError(u"standard output cannot be written"_s);
        return exitCode;
    } catch (const PlatformError &error) {
        messages << "corvane: " << printableText::message(error.description()) << Qt::endl;
        return failed;
    }
}
