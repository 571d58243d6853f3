#include "common/ProductInfo.h"
#include "main/CommandLine.h"
#include "main/DemoGreeting.h"
#include "main/Program.h"
#include "main/UnattendedDialogs.h"
#include "main/UnattendedRun.h"
#include "platform/PlatformError.h"
#include "platform/QtDialogs.h"
#include "platform/StopSignal.h"

#include <QApplication>
#include <QTextStream>
#include <QTimer>

using namespace corvane;

namespace {

constexpr int failed = 2;

bool hasDisplay()
{
#ifdef Q_OS_UNIX
    return !qEnvironmentVariableIsEmpty("DISPLAY") ||
           !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
#else
    return true;
#endif
}

/// The window system that the task needs: none where nothing is shown.
void choosePlatform(const CommandLine &line)
{
    const bool showsWindow = line.task == CommandLine::Task::Window && hasDisplay();
    if (!showsWindow && !qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
}

bool isWithoutDisplay()
{
    return QGuiApplication::platformName() == u"offscreen";
}

void listPorts(const CommandLine &line, QTextStream &out)
{
    SerialPortList ports;
    ports.pin(line.serialDevices);
    out << SerialPortList::describe(ports.entries()) << Qt::endl;
}

int runWindow(const CommandLine &line)
{
    QtDialogs dialogs;
    Program program(line, dialogs);
    const StopSignal stop([&program] { program.window().close(); });
    QObject::connect(&program.window(), &Main::closed, qApp, &QCoreApplication::quit);
    program.window().show();
    // For the window manager: the first paint does not wait for the picture.
    QTimer::singleShot(0, &program.window(), [] {
        QApplication::setWindowIcon(QPixmap(QStringLiteral(":/corvane.png")));
    });
    if (!line.list.isEmpty())
        program.window().loadList(line.list);
    return QApplication::exec();
}

/// Runs a task in the event loop, without a window on the screen, and then closes the window.
int runUnattended(const CommandLine &line, QTextStream &out, QTextStream &messages)
{
    UnattendedDialogs dialogs(messages);
    Program program(line, dialogs);
    Main &window = program.window();
    QObject::connect(&window, &Main::faultReported, &window,
                     [&messages](const QString &fault) { messages << fault << Qt::endl; });
    int exitCode = failed;
    QTimer::singleShot(0, &window, [&] {
        exitCode = line.task == CommandLine::Task::Run
                       ? UnattendedRun(window, line, out, messages).execute()
                       : greetTheBench(window, out);
        window.close();
    });
    QObject::connect(&window, &Main::closed, qApp, &QCoreApplication::quit);
    QApplication::exec();
    return exitCode;
}

int runTask(const CommandLine &line, QTextStream &out, QTextStream &messages)
{
    switch (line.task) {
    case CommandLine::Task::Help:
        out << CommandLine::helpText();
        return 0;
    case CommandLine::Task::Version:
        out << QString::fromUtf16(productInfo::title) << ' ' << productInfo::versionMajor << '.'
            << productInfo::versionMinor << '.' << productInfo::versionRevision << Qt::endl;
        return 0;
    case CommandLine::Task::ListPorts:
        listPorts(line, out);
        return 0;
    case CommandLine::Task::Run:
        return runUnattended(line, out, messages);
    case CommandLine::Task::Window:
        break;
    }
    if (!isWithoutDisplay())
        return runWindow(line);
    if (line.demo)
        return runUnattended(line, out, messages);
    messages << "There is no display. Use --run LIST to run a list, or --demo." << Qt::endl;
    return failed;
}

} // namespace

int main(int argc, char **argv)
{
    QTextStream out(stdout);
    QTextStream messages(stderr);
    QCoreApplication::setApplicationName(QString::fromUtf16(productInfo::title));
    try {
        QStringList arguments;
        for (int index = 0; index < argc; ++index)
            arguments.append(QString::fromLocal8Bit(argv[index]));
        const CommandLine line = CommandLine::parse(arguments);
        choosePlatform(line);
        QApplication application(argc, argv);
        QApplication::setQuitOnLastWindowClosed(false);
        return runTask(line, out, messages);
    } catch (const PlatformError &error) {
        messages << "corvane: " << error.description() << Qt::endl;
        return failed;
    }
}
