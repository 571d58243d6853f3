#include "perf/Child.h"
#include "perf/PtyFeeder.h"

#include <QCoreApplication>
#include <QSerialPort>

#include <cstdio>

using namespace corvane::perf;

namespace {

/// The least that a program on Qt can do with a serial port: everything that arrives goes into one
/// string. Prints "ready" when the port is open, and its figures when `bytes` have come.
int readInto(const QString &device, qsizetype bytes)
{
    QSerialPort port(device);
    port.setBaudRate(115200);
    if (!port.open(QIODevice::ReadWrite)) {
        std::fprintf(stderr, "%s: %s\n", qPrintable(device), qPrintable(port.errorString()));
        return 1;
    }
    QString text;
    const double memory = residentBytes();
    QObject::connect(&port, &QSerialPort::readyRead, &port, [&] {
        text += QString::fromLatin1(port.readAll());
        if (text.size() < bytes)
            return;
        std::printf("bytes=%lld processor=%f memory=%f\n", static_cast<long long>(text.size()),
                    processorSeconds(), residentBytes() - memory);
        QCoreApplication::quit();
    });
    std::puts("ready");
    std::fflush(stdout);
    return QCoreApplication::exec();
}

/// What is fed to a reader, how much at a time, and how fast (0: as fast as it reads).
struct Load
{
    size_t bytes;
    size_t piece;
    double bytesPerSecond;
};
constexpr Load bulk{20'000'000, 4096, 0};
/// As fast as a line of 921,600 baud, in the arrivals of a serial driver.
constexpr Load trickle{1'000'000, 64, 92'000};

struct Run
{
    double seconds = 0;
    Usage usage;
};

/// The reader above in a process of its own.
Run runReader(const char *program, const Load &load)
{
    PtyFeeder feeder;
    Child reader({program, feeder.path(), std::to_string(load.bytes)});
    Run run;
    if (reader.waitForOutput("ready")) {
        feeder.start(load.bytes, load.piece, load.bytesPerSecond);
        run.seconds = feeder.join();
    }
    run.usage = reader.finish();
    return run;
}

/// A plain terminal in the reader's place; it ends some time after the last byte.
Run runPicocom(const Load &load)
{
    PtyFeeder feeder;
    Child terminal({"sh", "-c", "exec picocom -q -l -r -x 1000 \"$0\" >/dev/null", feeder.path()});
    std::this_thread::sleep_for(std::chrono::milliseconds(300)); // it says nothing when it is open
    Run run;
    feeder.start(load.bytes, load.piece, load.bytesPerSecond);
    run.seconds = feeder.join();
    run.usage = terminal.finish();
    return run;
}

int measure(const char *program)
{
    const auto megabytesPerSecond = [](const Run &run) {
        return static_cast<double>(bulk.bytes) / run.seconds / 1e6;
    };

    Table table("Bare serial reader: the measure of the receive path");
    const Comparison rate = compare(
        3, [&] { return megabytesPerSecond(runReader(program, bulk)); },
        [&] { return megabytesPerSecond(runPicocom(bulk)); });
    table.note("20 MB, bare reader", rate.a, "MB/s");
    table.note("20 MB, picocom", rate.b, "MB/s");
    const Run bare = runReader(program, bulk);
    table.note("memory a byte kept",
               figure(bare.usage.output, "memory").value_or(0) / static_cast<double>(bulk.bytes),
               "bytes");
    table.note("1 MB at 92 kB/s, bare reader", runReader(program, trickle).usage.processorSeconds,
               "s CPU");
    table.note("1 MB at 92 kB/s, picocom", runPicocom(trickle).usage.processorSeconds, "s CPU");
    return bare.usage.exitCode == 0 ? table.exitCode() : 1;
}

} // namespace

/// Without arguments: measures itself and picocom. With DEVICE BYTES: the reader for others'
/// comparisons.
int main(int argc, char **argv)
try {
    const QCoreApplication application(argc, argv);
    if (argc == 3)
        return readInto(QString::fromLocal8Bit(argv[1]), QByteArray(argv[2]).toLongLong());
    return measure(argv[0]);
} catch (const std::exception &fault) {
    std::fprintf(stderr, "%s\n", fault.what());
    return 2;
}
