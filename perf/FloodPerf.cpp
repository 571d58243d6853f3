// SPDX-License-Identifier: GPL-3.0-or-later
// What a device that never stops costs the rest of the program: memory, how long the window takes
// to answer, whether the other Channels go on. Each flood comes over a real transport. Arguments
// choose among the parts: tcp, serial, gpib, list, board, traffic, end.
#include "core/traffic/TrafficWriter.h"
#include "perf/Application.h"
#include "perf/Flood.h"
#include "perf/FloodedDesk.h"
#include "windows/board/DigitalIoPanel.h"
#include "windows/board/DigitalTestsPanel.h"
#include "windows/board/frmSBC.h"
#include "windows/lists/CommandListArea.h"
#include "windows/main/BoardWindows.h"
#include "windows/main/StatusLine.h"
#include "windows/traffic/TrafficWindow.h"

#include <QAction>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QTemporaryDir>

using namespace corvane;
using namespace corvane::perf;

namespace {

constexpr double rate = 50e6;
constexpr double longFlood = 30;
constexpr double shortFlood = 4;

struct Kind
{
    const char *name;
    std::string text;
    double seconds;
};

std::vector<Kind> kinds()
{
    const auto repeated = [](const std::string &piece) {
        std::string text;
        while (text.size() < 65536)
            text += piece;
        return text;
    };
    const std::string nested = std::string(500, '<') + [] {
        std::string ends;
        for (int i = 0; i < 500; ++i)
            ends += "05:";
        return ends;
    }();
    return {{"no line end", PtyFeeder::pattern(65536), longFlood},
            {"CR LF only", repeated("\r\n"), shortFlood},
            {"LF and CR LF", repeated("\n\r\n"), shortFlood},
            {"echo prefix", repeated("<05:"), shortFlood},
            {"nested echo prefix", repeated(nested), shortFlood},
            {"answers ending in ;", repeated("12;\r\n"), shortFlood}};
}

/// What one flood did to the rest; `run` lasts as long as it.
void judge(Table &table, Desk &desk, const std::string &name, const std::function<void()> &run)
{
    std::printf("  %s\n", name.c_str());
    desk.fewestReplies();
    const double memoryBefore = residentBytes();
    const double begin = now();
    IdleThread idleThread;
    Probe probe;
    run();
    const double took = now() - begin;
    const double machine = idleThread.end();
    table.note("  longest wait of an idle thread", machine * 1000, "ms");
    table.atMost("  longest wait of the window beyond", (probe.longest - machine) * 1000, 100,
                 "ms");
    table.atMost("  longest work between two answers", probe.longestWork * 1000, 100, "ms");
    table.atMost("  memory above before", (probe.memory - memoryBefore) / 1e6, 200, "MB");
    // A GPIB reply is read a period after its command, so that Channel has half as many.
    table.atLeast("  replies on the slowest other Channel",
                  desk.fewestReplies() / (took * 1000 / Desk::loopMs / 2), 0.7, "of all");
}

/// Closes the window in mid-flood.
void judgeClose(Table &table, Desk &desk)
{
    const double seconds = secondsOf([&] {
        QEventLoop loop;
        QObject::connect(&desk.window(), &Main::closed, &loop, &QEventLoop::quit,
                         Qt::QueuedConnection);
        desk.window().close();
        loop.exec();
    });
    table.atMost("  the window closes in", seconds, 1, "s");
}

void floodTcp(Table &table, int index)
{
    for (const Kind &kind : kinds()) {
        TcpFlooder device;
        Desk desk({.index = index, .tcpPort = device.port()});
        ChannelSession &channel = desk.channel();
        channel.setLogged(true);
        judge(table, desk, channel.caption().toStdString() + ", log on, " + kind.name, [&] {
            device.start(kind.text, kind.seconds, rate, "the end");
            idle(kind.seconds);
        });
        table.note("  arrived", device.join() / kind.seconds / 1e6, "MB/s");
        desk.window().waits().waitUntil([&] { return !channel.isOpen(); }, 10'000);
        table.atLeast("  last bytes kept (1: yes)",
                      channel.response().bytes().endsWith("the end") ? 1 : 0, 1, "");
        judgeClose(table, desk);
    }
}

void floodSerial(Table &table, int index)
{
    for (const Kind &kind : kinds()) {
        PtyFeeder device;
        Desk desk({.index = index, .device = QString::fromStdString(device.path())});
        judge(table, desk, desk.channel().caption().toStdString() + ", " + kind.name, [&] {
            device.startFlood(kind.text, kind.seconds, rate);
            idle(kind.seconds + 0.2);
        });
        device.join();
        table.note("  arrived", device.flooded() / kind.seconds / 1e6, "MB/s");
        judgeClose(table, desk);
    }
}

/// A "++" controller that floods every read, or always.
void floodGpib(Table &table)
{
    using Flooder = ControllerFlooder;
    for (const auto line : {Flooder::Line::Tcp, Flooder::Line::Serial}) {
        for (const auto begin : {Flooder::Begin::AtRead, Flooder::Begin::AtOnce}) {
            for (const size_t kind : {0U, 1U}) {
                const Kind flood = kinds()[kind];
                const Flooder device(line, begin, flood.text);
                Desk desk({.index = channels::ieee488,
                           .adapter = QString::fromStdString(device.adapter())});
                desk.loop(channels::ieee488);
                const double before = device.bytes();
                judge(table, desk,
                      std::string("IEEE 488 over ") +
                          (line == Flooder::Line::Tcp ? "TCP" : "a pty") +
                          (begin == Flooder::Begin::AtRead ? ", at each read, " : ", always, ") +
                          flood.name,
                      [] { idle(shortFlood * 2); });
                table.note("  arrived", (device.bytes() - before) / shortFlood / 2e6, "MB/s");
                table.note("  kept in the box",
                           static_cast<double>(desk.channel().response().bytes().size()) / 1e6,
                           "MB");
                judgeClose(table, desk);
            }
        }
    }
}

/// A list run over the flooded Channel: the grid follows the box.
void floodList(Table &table)
{
    const QTemporaryDir folder;
    QFile list(folder.filePath(u"flood.kms"_s));
    if (!list.open(QIODevice::WriteOnly) || list.write("= SP 1\n= SP 2\n") < 0)
        throw std::runtime_error("no list file");
    list.close();
    for (const Kind &kind : kinds()) {
        TcpFlooder device;
        Desk desk({.index = channels::tcpIp2, .tcpPort = device.port()});
        desk.window().parts().list.OpenFile(list.fileName());
        judge(table, desk, std::string("TCP/IP-2, a list run, ") + kind.name, [&] {
            desk.window().cmdLoadToChmber_Click(channels::tcpIp2);
            const QLabel &progress = *desk.window().commandList->lblProgress;
            desk.window().waits().waitUntil([&] { return !progress.text().isEmpty(); }, 5000);
            device.start(kind.text, shortFlood * 2, rate);
            idle(shortFlood);
        });
        CommandListArea &area = *desk.window().commandList;
        std::printf("    %s; %s; %s\n", qPrintable(area.lblProgress->text()),
                    qPrintable(desk.window().lblFaults->text()), qPrintable(desk.messages()));
        judgeClose(table, desk);
    }
}

/// A test of the board over the flooded Channel.
void floodBoard(Table &table, int index)
{
    TcpFlooder tcp;
    PtyFeeder pty;
    Desk desk({.index = index,
               .device = index == channels::rs232 ? QString::fromStdString(pty.path()) : QString(),
               .tcpPort = tcp.port()});
    desk.window().mnuSBC->trigger();
    frmSBC &board = *desk.window().boardWindows().boardWindow();
    judge(table, desk, desk.channel().caption().toStdString() + ", a board's test", [&] {
        if (index == channels::rs232)
            pty.startFlood(kinds().front().text, shortFlood * 2, rate);
        else
            tcp.start(kinds().front().text, shortFlood * 2, rate);
        QTimer::singleShot(0, &board, [&] { board.digitalIo->tests->cmdDigTestFull_Click(); });
        // Closing the board's window ends the test, which would take a minute.
        QTimer::singleShot(static_cast<int>(shortFlood * 1000), &desk.window(),
                           [&] { desk.window().mnuSBC->trigger(); });
        idle(shortFlood);
    });
    std::printf("    %s\n", qPrintable(desk.messages()));
    judgeClose(table, desk);
}

/// The traffic window shows the flood, with a filter and without one, while it is recorded in a
/// file.
void floodTraffic(Table &table)
{
    for (const bool isFiltered : {false, true}) {
        TcpFlooder device;
        Desk desk({.index = channels::tcpIp2, .tcpPort = device.port()});
        desk.window().mnuTraffic->trigger();
        TrafficWindow &traffic = *desk.window().trafficWindow();
        if (isFiltered)
            traffic.txtFilter->setText(u"5"_s);
        const QTemporaryDir folder;
        TrafficWriter writer(desk.window().parts().traffic, folder.filePath(u"traffic.jsonl"_s));
        const std::string name = isFiltered ? "filtered and recorded" : "recorded";
        judge(table, desk, "TCP/IP-2, the traffic window open, " + name, [&] {
            device.start(kinds().front().text, shortFlood * 2, rate);
            idle(shortFlood * 2);
        });
        table.note("  arrived", device.join() / (shortFlood * 2) / 1e6, "MB/s");
        const bool isCounted = traffic.lblState->text().contains(u"have been dropped"_s);
        table.atLeast("  dropped events told (1: yes)", isCounted ? 1 : 0, 1, "");
        table.atLeast("  all recorded (1: yes)", writer.finish().isEmpty() ? 1 : 0, 1, "");
        judgeClose(table, desk);
    }
}

/// Disconnect, and closing the window, in mid-flood.
void floodAndEnd(Table &table)
{
    for (const bool overTcp : {true, false}) {
        TcpFlooder tcp;
        PtyFeeder pty;
        const int index = overTcp ? channels::tcpIp2 : channels::rs232;
        Desk desk({.index = index,
                   .device = overTcp ? QString() : QString::fromStdString(pty.path()),
                   .tcpPort = tcp.port()});
        const auto flood = [&] {
            if (overTcp)
                tcp.start(kinds().front().text, 3, rate);
            else
                pty.startFlood(kinds().front().text, 3, rate);
            idle(1);
        };
        std::printf("  %s, ended in mid-flood\n", qPrintable(desk.channel().caption()));
        flood();
        table.atMost("  Disconnect takes", secondsOf([&] {
                         desk.window().cmdDisconnect_Click(index);
                         idle(0.001);
                     }),
                     1, "s");
        if (desk.channel().isOpen())
            throw std::runtime_error("still connected");
        if (!overTcp) {
            desk.window().cmdConnect_Click(index);
            flood();
        }
        judgeClose(table, desk);
    }
}

int measure(const QStringList &parts)
{
    Table table("A device that never stops");
    const auto wants = [&](const char *part) {
        return parts.isEmpty() || parts.contains(QLatin1StringView(part));
    };
    if (wants("tcp")) {
        floodTcp(table, channels::tcpIp2);
        floodTcp(table, channels::tcpIp1);
    }
    if (wants("serial")) {
        floodSerial(table, channels::rs232);
        floodSerial(table, channels::rs485);
    }
    if (wants("gpib"))
        floodGpib(table);
    if (wants("list"))
        floodList(table);
    if (wants("board")) {
        floodBoard(table, channels::rs232);
        floodBoard(table, channels::tcpIp1);
    }
    if (wants("traffic"))
        floodTraffic(table);
    if (wants("end"))
        floodAndEnd(table);
    return table.exitCode();
}

} // namespace

int main(int argc, char **argv)
{
    return runApplication(argc, argv,
                          [] { return measure(QCoreApplication::arguments().sliced(1)); });
}
