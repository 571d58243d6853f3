// SPDX-License-Identifier: GPL-3.0-or-later
// What receiving costs: growth of the time with the length of a reply, the rate, memory and
// processor time of a serial stream beside a bare reader and a plain terminal.
#include "app/window/WindowProgram.h"
#include "perf/Application.h"
#include "perf/AssembledWindow.h"
#include "perf/PtyReading.h"
#include "windows/main/SerialTab.h"

#include <QStandardPaths>

using namespace corvane;
using namespace corvane::perf;

namespace {

constexpr Load bulk{20'000'000, 4096, 0};
/// As fast as a line of 921,600 baud, in the arrivals of a serial driver.
constexpr Load trickle{1'000'000, 64, 92'000};

// Many small arrivals, in memory

constexpr qint64 shortReply = 4'000'000;

/// Counts how often a widget is painted.
class PaintCounter : public QObject
{
public:
    explicit PaintCounter(QWidget &widget) { widget.installEventFilter(this); }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        count += event->type() == QEvent::Paint ? 1 : 0;
        return QObject::eventFilter(watched, event);
    }

    int count = 0;
};

struct Receipt
{
    double processorSeconds = 0;
    double paintsPerSecond = 0;
    bool whole = false;
};

/// A reply of `bytes` bytes that arrives in the event loop, 64 at a time, line ends among them.
Receipt receiveInMemory(qint64 bytes)
{
    const QByteArray arrival = QByteArray(62, 'x') + "\r\n";
    const QByteArray kept = arrival.chopped(2);
    const qint64 arrivals = bytes / arrival.size();

    SystemClock clock;
    AssembledWindow assembled(clock);
    Main &window = assembled.window();
    window.showChannel(channels::rs232);
    window.cmdConnect_Click(channels::rs232);
    window.WaitMs(100);

    const ResponseView &view = *window.channel(channels::rs232)->txtIn;
    const PaintCounter paints(*view.viewport());
    QEventLoop loop;
    QTimer feeder;
    qint64 fed = 0;
    QObject::connect(&feeder, &QTimer::timeout, &loop, [&] {
        assembled.rs232.feed(arrival);
        if (++fed == arrivals)
            loop.quit();
    });
    const double processorBefore = processorSeconds();
    const double begin = now();
    feeder.start(0);
    loop.exec();
    return {processorSeconds() - processorBefore, paints.count / (now() - begin),
            view.bytes() == kept.repeated(arrivals)};
}

void measureGrowth(Table &table)
{
    bool whole = true;
    const auto receive = [&](qint64 bytes) {
        const Receipt receipt = receiveInMemory(bytes);
        whole = whole && receipt.whole;
        return receipt.processorSeconds;
    };
    const Comparison growth = compare(
        5, [&] { return receive(2 * shortReply); }, [&] { return receive(shortReply); });
    table.note("4 MB in 64-byte arrivals", growth.b, "s");
    table.atMost("8 MB over 4 MB", growth.ratio, 2.2, "times");
    table.atLeast("whole text kept (1: yes)", whole ? 1 : 0, 1, "");
    // Long enough to count: the short ones are over in a few repaints.
    table.atLeast("repaints meanwhile", receiveInMemory(10 * shortReply).paintsPerSecond, 10, "Hz");
}

// A stream through a pseudo terminal

/// True when the text is the feeder's, from the first byte to the last.
bool isPattern(const QByteArray &bytes, const Load &load)
{
    const std::string piece = PtyFeeder::pattern(load.piece);
    for (qsizetype at = 0; at < bytes.size(); at += static_cast<qsizetype>(piece.size())) {
        const QByteArrayView part = QByteArrayView(bytes).sliced(at).first(
            std::min(bytes.size() - at, static_cast<qsizetype>(piece.size())));
        if (part != QByteArrayView(piece).first(part.size()))
            return false;
    }
    return true;
}

/// The program as it is, with its window, as a reader in a process of its own.
int readInWindow(const QString &device, qsizetype bytes, bool isRecorded)
{
    const Load &load = bytes == static_cast<qsizetype>(bulk.bytes) ? bulk : trickle;
    CommandLine line;
    line.serialDevices.insert(2, device);
    QTextStream messages(stderr);
    UnattendedDialogs dialogs(messages);
    WindowProgram program(line, dialogs);
    Main &window = program.window();
    if (!isRecorded)
        window.parts()
            .channels.at(channels::rs232)
            .transport()
            .disconnect(&program.workbench().traffic());
    window.serialTab(channels::rs232).txtPort->setText(u"2"_s);
    window.showChannel(channels::rs232);
    window.show();
    window.cmdConnect_Click(channels::rs232);
    if (!window.parts().channels.at(channels::rs232).isOpen())
        return 1;
    window.WaitMs(300); // first paints are the start's cost
    const ReaderReport report;
    const ResponseView &view = *window.channel(channels::rs232)->txtIn;
    QObject::connect(&window.parts().channels.at(channels::rs232), &ChannelSession::replied,
                     &window, [&] {
                         if (view.bytes().size() < bytes)
                             return;
                         report.done(view.bytes().size() == bytes && isPattern(view.bytes(), load));
                         QCoreApplication::quit();
                     });
    return QApplication::exec();
}

bool hasPicocom()
{
    return !QStandardPaths::findExecutable(u"picocom"_s).isEmpty();
}

void measureStream(Table &table, const QString &program)
{
    const bool besidePicocom = hasPicocom();
    const QString bareReader = programBeside(u"peers/BarePtyReader"_s);
    bool whole = true;
    std::vector<double> memory;
    std::vector<double> overPicocom;
    const auto window = [&] {
        const Reading reading = runReader({program, u"--read"_s}, bulk);
        whole = whole && reading.whole;
        memory.push_back(reading.memoryBytes / static_cast<double>(bulk.bytes));
        if (besidePicocom)
            overPicocom.push_back(reading.megabytesPerSecond(bulk) /
                                  runPicocom(bulk).megabytesPerSecond(bulk));
        return reading.megabytesPerSecond(bulk);
    };
    const Comparison rate =
        compare(5, window, [&] { return runReader({bareReader}, bulk).megabytesPerSecond(bulk); });
    table.note("20 MB through a pty, the window", rate.a, "MB/s");
    table.note("20 MB through a pty, bare reader", rate.b, "MB/s");
    table.atLeast("the window over the bare reader", rate.ratio, 0.5, "times");
    if (besidePicocom)
        table.atLeast("the window over picocom", median(overPicocom), 2, "times");
    else
        table.skip("the window over picocom", "picocom is not installed");
    table.atLeast("whole text kept (1: yes)", whole ? 1 : 0, 1, "");
    table.atMost("memory a byte kept", median(memory), 3, "bytes");
}

/// The best of several rounds: the difference is smaller than what the machine adds to most.
void measureRecorder(Table &table, const QString &program)
{
    constexpr int rounds = 20;
    double best[2] = {1e9, 1e9};
    for (int round = 0; round < rounds; ++round) {
        best[0] = std::min(best[0], runReader({program, u"--read"_s}, bulk).seconds);
        best[1] = std::min(best[1], runReader({program, u"--read-unrecorded"_s}, bulk).seconds);
    }
    table.atMost("20 MB with the recorder over without", best[0] / best[1], 1.05, "times");
}

void measureTrickle(Table &table, const QString &program)
{
    const auto window = [&] { return runReader({program, u"--read"_s}, trickle).processorSeconds; };
    if (!hasPicocom()) {
        table.note("1 MB at 92 kB/s, the window", window(), "s CPU");
        table.skip("the window over picocom", "picocom is not installed");
        return;
    }
    const Comparison cost = compare(3, window, [] { return runPicocom(trickle).processorSeconds; });
    table.note("1 MB at 92 kB/s, the window", cost.a, "s CPU");
    table.note("1 MB at 92 kB/s, picocom", cost.b, "s CPU");
    table.atMost("the window over picocom", cost.ratio, 2, "times");
}

int measure(const QString &program)
{
    Table table("Receiving");
    measureGrowth(table);
    measureStream(table, program);
    measureRecorder(table, program);
    measureTrickle(table, program);
    return table.exitCode();
}

} // namespace

/// Without arguments: measures. With --read DEVICE BYTES: the window as a reader; with
/// --read-unrecorded, without the recorder.
int main(int argc, char **argv)
{
    return runApplication(argc, argv, [argc, argv] {
        return argc == 4
                   ? readInWindow(QString::fromLocal8Bit(argv[2]), QByteArray(argv[3]).toLongLong(),
                                  QByteArrayView(argv[1]) == "--read")
                   : measure(QString::fromLocal8Bit(argv[0]));
    });
}
