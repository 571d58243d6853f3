// SPDX-License-Identifier: GPL-3.0-or-later
// What a row of a list run costs on TCP/IP-1: at a loop time of 10 ms, and at row 50,000 beside
// row 10.
#include "app/UnattendedDialogs.h"
#include "app/window/WindowProgram.h"
#include "perf/Application.h"
#include "perf/BenchProcess.h"
#include "windows/main/TcpTab.h"

#include <QFile>
#include <QTcpSocket>
#include <QTextStream>

#include <cmath>
#include <map>
#include <thread>

using namespace corvane;
using namespace corvane::perf;

namespace {

constexpr int periodMs = 10;
constexpr int earlyRow = 10;
constexpr int lateRow = 49'000;
constexpr int rowsCompared = 1000;
constexpr int longList = lateRow + rowsCompared + 10;
constexpr int patienceMs = 600'000;

const QByteArray command = "? SP x";

/// A test list of queries, in a file.
QString writeList(const QTemporaryDir &folder, int rows)
{
    QString path = folder.filePath(u"queries.tst"_s);
    QFile file(path);
    const QByteArray text = (command + "\r\n").repeated(rows);
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
        throw std::runtime_error("cannot write the list");
    return path;
}

/// The bench's round trip without the program: a blocking socket, in ms. Asked at the pace of the
/// run, since a bench that sleeps in between takes longer to answer.
double roundTripMs(quint16 port)
{
    QTcpSocket socket;
    socket.connectToHost(u"127.0.0.1"_s, port);
    socket.waitForConnected();
    socket.setSocketOption(QAbstractSocket::LowDelayOption, 1);
    std::vector<double> trips;
    for (int i = 0; i < 300; ++i) {
        std::this_thread::sleep_for(std::chrono::milliseconds(periodMs));
        trips.push_back(1000 * secondsOf([&] {
                            socket.write(command + '\r');
                            while (!socket.readAll().endsWith('\n')) {
                                if (!socket.waitForReadyRead())
                                    throw std::runtime_error("the bench does not answer");
                            }
                        }));
    }
    return median(trips);
}

void setLoopTime(const Main &window, int ms)
{
    window.channel(channels::tcpIp1)->cboMs->setEditText(QString::number(ms));
    window.channel(channels::tcpIp1)->cboMs_Change();
}

/// Starts the run and waits until row `last` starts; stops it there. `eachRow` is told each start.
void runUntil(Main &window, int last, const std::function<void(int)> &eachRow)
{
    TransferEngine &engine = window.parts().engine;
    bool ended = false;
    QObject context;
    QObject::connect(&engine, &TransferEngine::rowStarted, &context, [&](int row) {
        eachRow(row);
        ended = ended || row == last;
    });
    QObject::connect(&engine, &TransferEngine::runEnded, &context, [&] { ended = true; });
    engine.cmdLoadToChmber_Click(channels::tcpIp1);
    window.waits().waitUntil([&] { return ended; }, patienceMs);
    if (!ended || engine.runningChannel() != channels::tcpIp1)
        throw std::runtime_error("the run did not get to its end");
    engine.ResetTransferData(channels::tcpIp1);
}

void measureRowTime(Table &table, Main &window, double roundTrip)
{
    std::vector<double> rows;
    double last = 0;
    setLoopTime(window, periodMs);
    runUntil(window, 500, [&](int row) {
        const double time = now();
        if (row > earlyRow)
            rows.push_back((time - last) * 1000);
        last = time;
    });
    table.note("the bench's round trip", roundTrip, "ms");
    table.note("a row at a loop time of 10 ms, median", median(rows), "ms");
    table.atMost("off 10 ms and the round trip by", std::abs(median(rows) - periodMs - roundTrip),
                 1, "ms");
}

/// Fifty thousand rows would take ten minutes at the timer's pace, so here each reply brings the
/// next tick at once. Compared is processor time: the bench's part stays out of it.
void measureLongRun(Table &table, Main &window)
{
    setLoopTime(window, ChannelSession::maxPeriodMs);
    QObject driver;
    const auto tick = [&window] { window.TimerTransfer_Timer(channels::tcpIp1); };
    QObject::connect(&window.parts().engine, &TransferEngine::runStarted, &driver, tick,
                     Qt::QueuedConnection);
    QObject::connect(&window.parts().channels.at(channels::tcpIp1), &ChannelSession::replied,
                     &driver, tick, Qt::QueuedConnection);

    std::map<int, double> processorAt;
    runUntil(window, lateRow + rowsCompared + 1,
             [&](int row) { processorAt[row] = processorSeconds(); });
    const auto msARow = [&](int first) {
        return (processorAt[first + rowsCompared] - processorAt[first]) / rowsCompared * 1000;
    };
    table.note("processor time of a row from row 10 on", msARow(earlyRow), "ms");
    table.note("processor time of a row up to row 50,000", msARow(lateRow), "ms");
    table.atMost("row 50,000 over row 10", msARow(lateRow) / msARow(earlyRow), 1.1, "times");
}

int measure()
{
    const QTemporaryDir folder;
    const BenchProcess bench;
    QTextStream messages(stderr);
    UnattendedDialogs dialogs(messages);
    WindowProgram program(bench.commandLine(), dialogs);
    Main &window = program.window();
    window.showChannel(channels::tcpIp1);
    window.show();
    connectChannel(window, channels::tcpIp1, {.port = bench.chamberPort(), .host = u"127.0.0.1"_s});
    if (program.workbench().list().OpenFile(writeList(folder, longList)) !=
        ListContents::End::Complete)
        throw std::runtime_error("cannot load the list");
    window.WaitMs(500);

    Table table("A list run on TCP/IP-1");
    measureRowTime(table, window, roundTripMs(bench.chamberPort().toUShort()));
    window.WaitMs(100); // the reply to the last row
    measureLongRun(table, window);
    return table.exitCode();
}

} // namespace

int main(int argc, char **argv)
{
    return runApplication(argc, argv, measure);
}
