// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/CommandLine.h"
#include "app/DemoGreeting.h"
#include "app/Display.h"
#include "app/Recording.h"
#include "app/RunOutputs.h"
#include "app/ToolkitWatch.h"
#include "app/UnattendedDialogs.h"
#include "app/UnattendedRun.h"
#include "app/WindowModule.h"
#include "app/Workbench.h"
#include "bench/Bench.h"
#include "core/text/PrintableText.h"
#include "core/text/ProductInfo.h"
#include "devices/PlatformError.h"
#include "devices/ProgramModule.h"
#include "devices/StandardStreams.h"
#include "devices/StopSignal.h"

#include <QCoreApplication>
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

/// Loads the module with the windows, from beside the program or from where it is installed.
int runWindow(const Job &job, int &argc, char **argv)
{
    QString folder;
    {
        const QCoreApplication application(argc, argv); // knows the folder
        folder = QCoreApplication::applicationDirPath();
    }
    const auto show = reinterpret_cast<WindowFunction>(
        programModule::load(windowFunction, folder, u"the window"_s));
    return show(job.line, argc, argv);
}

/// Where a list runs when nobody has chosen: on TCP/IP-1, or the first Channel that the bench has.
int channelOfDemo(bench::Desk &desk)
{
    const auto &there = desk.entries();
    const auto has = [&](const ChannelTraits &traits) {
        return std::ranges::find(there, traits.caption, &bench::Desk::Entries::channel) !=
               there.end();
    };
    const auto &all = channelTraits();
    if (has(all[channels::tcpIp1]))
        return channels::tcpIp1;
    return static_cast<int>(std::ranges::find_if(all, has) - all.begin());
}

/// What `corvane --demo [LIST]` does without a display. A recording need not know the commands of
/// the greeting; what it holds is told instead. Returns the exit code.
int demonstrate(Workbench &workbench, const Job &job)
{
    const bool isTaken = RunOutputs(job.line, job.out).useStandardOutput();
    QTextStream &told = isTaken ? job.messages : job.out;
    int greeting = 0;
    if (workbench.bench())
        greeting = greetTheBench(workbench.channels(), told);
    else
        told << printableText::message(workbench.desk()->order(u"list"_s)) << Qt::endl;
    if (workbench.channels().waits().isClosed())
        job.messages << "corvane: stopped" << Qt::endl;
    if (greeting != 0 || job.line.list.isEmpty())
        return greeting;
    CommandLine run = job.line;
    run.channel = channelOfDemo(*workbench.desk());
    return UnattendedRun(workbench, run, job.out, job.messages).execute();
}

/// What the Channels and the list have to say goes to the messages.
void tellNotes(Workbench &workbench, QTextStream &messages)
{
    const auto tell = [&messages](const QString &text) {
        if (!text.isEmpty())
            messages << printableText::message(text) << Qt::endl;
    };
    for (const ChannelSession *each : workbench.channels().all()) {
        QObject::connect(each, &ChannelSession::faultChanged, each, tell);
        QObject::connect(each, &ChannelSession::noteChanged, each, tell);
    }
    QObject::connect(&workbench.list(), &CommandList::noted, &workbench.list(), tell);
    if (workbench.desk())
        QObject::connect(workbench.desk(), &bench::Desk::said, workbench.desk(), tell);
}

/// Runs a task in the event loop, without a window.
int runUnattended(const Job &job, int &argc, char **argv)
{
    StopSignal::endBeforeLoop("corvane: stopped before anything was sent\n");
    const ToolkitWatch watch;
    const QCoreApplication application(argc, argv);
    // Also while the workbench is put together: the event loop, when it begins, ends then.
    ChannelSet *channels = nullptr;
    const StopSignal stop([&channels] {
        if (channels)
            channels->stop();
        QCoreApplication::quit();
    });
    UnattendedDialogs dialogs(job.messages);
    Workbench workbench(job.line, dialogs, GpibAdapterFactory::Reader::CommandLine);
    channels = &workbench.channels();
    channels->initialise();
    workbench.pointChannelsAtBench();
    tellNotes(workbench, job.messages);
    std::unique_ptr<TrafficWriter> recording;
    const auto record = [&] {
        recording = startRecording(job.line, workbench.traffic(), job.out, job.messages);
    };
    const bool isRun = job.line.task == CommandLine::Task::Run;
    if (!isRun)
        record();
    std::optional<int> exitCode;
    QTimer::singleShot(0, &application, [&] {
        if (!channels->waits().isClosed())
            // A run whose list cannot be loaded leaves an older recording as it is.
            exitCode =
                isRun ? UnattendedRun(workbench, job.line, job.out, job.messages).execute(record)
                      : demonstrate(workbench, job);
        QCoreApplication::quit();
    });
    QCoreApplication::exec();
    channels->stop();
    channels->close();
    const bool isRecorded = finishRecording(recording.get());
    if (!exitCode)
        throw PlatformError(u"stopped before anything was sent"_s);
    return isRecorded ? *exitCode : failed;
}

int runTask(const Job &job, int &argc, char **argv)
{
    switch (job.line.task) {
    case CommandLine::Task::Help:
        printHelp(job, argc, argv);
        return 0;
    case CommandLine::Task::Version:
        job.out << QString::fromUtf16(productInfo::title) << ' '
                << QString::fromUtf16(productInfo::version) << Qt::endl;
        return 0;
    case CommandLine::Task::ListPorts:
        listPorts(job, argc, argv);
        return 0;
    case CommandLine::Task::Run:
        if (standardStreams::canPrint())
            return runUnattended(job, argc, argv);
        throw PlatformError(u"standard output is closed"_s);
    case CommandLine::Task::Window:
        break;
    }
    if (display::isThere())
        return runWindow(job, argc, argv);
    if (job.line.demo && !job.line.folder.isEmpty())
        throw PlatformError(
            u"--folder %1: is for the window, and there is no display"_s.arg(job.line.folder));
    if (job.line.demo && (job.line.channel >= 0 || job.line.connects || !job.line.setups.isEmpty()))
        throw PlatformError(u"the set-up of a Channel is for the window, and there is no display. "
                            "--run LIST runs a list on a Channel that is set up."_s);
    if (job.line.demo)
        return runUnattended(job, argc, argv);
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
