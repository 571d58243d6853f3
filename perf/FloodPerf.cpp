// What a device that never stops costs the rest of the program: memory, how long the window takes
// to answer, whether the other Channels go on. Each flood comes over a real transport.
#include "lists/CommandListArea.h"
#include "main/Program.h"
#include "main/SerialChannel.h"
#include "main/TcpChannel.h"
#include "perf/Application.h"
#include "perf/BenchProcess.h"
#include "perf/Flood.h"
#include "platform/QtDialogs.h"

#include <QFile>

using namespace corvane;
using namespace corvane::perf;

namespace {

constexpr double rate = 50e6;
constexpr double longFlood = 30;
constexpr double shortFlood = 4;
constexpr int loopMs = 200;

void idle(double seconds)
{
    QEventLoop loop;
    QTimer::singleShot(static_cast<int>(seconds * 1000), Qt::PreciseTimer, &loop,
                       &QEventLoop::quit);
    loop.exec();
}

/// The longest time that the window's own event loop has left a timer and a posted event waiting,
/// and the most memory meanwhile.
class Probe : public QObject
{
public:
    Probe()
    {
        m_timer.setTimerType(Qt::PreciseTimer);
        connect(&m_timer, &QTimer::timeout, this, [this] {
            const double time = now();
            if (m_lastTick > 0)
                longest = std::max(longest, time - m_lastTick - intervalMs / 1000.0);
            m_lastTick = time;
            memory = std::max(memory, residentBytes());
            if (std::exchange(m_posted, true))
                return;
            QMetaObject::invokeMethod(
                this,
                [this, time] {
                    m_posted = false;
                    longest = std::max(longest, now() - time);
                },
                Qt::QueuedConnection);
        });
        m_timer.start(intervalMs);
    }

    double longest = 0;
    double memory = residentBytes();

private:
    static constexpr int intervalMs = 5;

    QTimer m_timer;
    double m_lastTick = 0;
    bool m_posted = false;
};

/// The program with its five Channels connected, all but the flooded one to the bench, and those
/// looping.
class Desk
{
public:
    explicit Desk(int flooded, const QString &device, int tcpPort)
        : m_flooded(flooded)
        , m_program(line(device), m_dialogs)
    {
        window().show();
        const QString host = QStringLiteral("127.0.0.1");
        const auto port = [&](int index) {
            return index == flooded ? QString::number(tcpPort) : m_bench.chamberPort();
        };
        connectChannel(window(), channels::rs485,
                       {.port = QStringLiteral("1"), .address = QStringLiteral("05")});
        connectChannel(window(), channels::rs232, {.port = QStringLiteral("2")});
        connectChannel(window(), channels::ieee488, {.address = QStringLiteral("GPIB0::5")});
        for (const int index : {channels::tcpIp1, channels::tcpIp2})
            connectChannel(window(), index, {.port = port(index), .host = host});
        window().showChannel(flooded);
        for (int index = 0; index < channelCount; ++index) {
            const Channel &channel = *window().channel(index);
            if (index == flooded)
                continue;
            channel.cboMs->setEditText(QString::number(loopMs));
            window().channel(index)->cboMs_Change();
            channel.chkLoop->setChecked(true);
            QObject::connect(&channel, &Channel::replied, &m_counter,
                             [this, index] { ++m_replies.at(static_cast<size_t>(index)); });
        }
        idle(1);
    }

    [[nodiscard]] Main &window() { return m_program.window(); }
    /// The fewest replies that one of the other Channels has had since the last call.
    int fewestReplies()
    {
        int fewest = std::numeric_limits<int>::max();
        for (int index = 0; index < channelCount; ++index) {
            if (index != m_flooded)
                fewest = std::min(fewest, m_replies.at(static_cast<size_t>(index)));
        }
        m_replies = {};
        return fewest;
    }

private:
    [[nodiscard]] CommandLine line(const QString &device) const
    {
        CommandLine line = m_bench.commandLine();
        if (!device.isEmpty())
            line.serialDevices[m_flooded + 1] = device;
        return line;
    }

    int m_flooded;
    QtDialogs m_dialogs;
    BenchProcess m_bench;
    Program m_program;
    std::array<int, channelCount> m_replies{};
    QObject m_counter;
};

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

/// What one flood did; `run` floods for so long and returns the bytes.
void judge(Table &table, Desk &desk, const std::string &name, double seconds,
           const std::function<double()> &run)
{
    desk.fewestReplies();
    const double memoryBefore = residentBytes();
    const double begin = now();
    Probe probe;
    const double bytes = run();
    const double took = now() - begin;
    table.note(name + ": arrived", bytes / seconds / 1e6, "MB/s");
    table.atMost("  longest wait of the window", probe.longest * 1000, 100, "ms");
    table.atMost("  memory above before", (probe.memory - memoryBefore) / 1e6, 200, "MB");
    // A GPIB reply is read a period after its command, so that Channel has half as many.
    table.atLeast("  replies on the slowest other Channel",
                  desk.fewestReplies() / (took * 1000 / loopMs / 2), 0.7, "of all");
}

void floodTcp(Table &table, int index)
{
    TcpFlooder device;
    for (const Kind &kind : kinds()) {
        device.start(kind.text, kind.seconds + 1.5, rate, "the end");
        Desk desk(index, {}, device.port());
        Main &window = desk.window();
        const Channel &channel = *window.channel(index);
        channel.chkLog->setChecked(true);
        const std::string name = channel.caption().toStdString() + ", log on, " + kind.name;
        judge(table, desk, name, kind.seconds, [&] {
            idle(kind.seconds);
            return 0.0;
        });
        const double bytes = device.join();
        window.waits().waitUntil([&] { return !channel.isOpen(); }, 10'000);
        table.note("  in all", bytes / (kind.seconds + 1.5) / 1e6, "MB/s");
        table.atLeast("  last bytes kept (1: yes)",
                      channel.txtIn->bytes().endsWith("the end") ? 1 : 0, 1, "");
        window.close();
    }
}

void floodSerial(Table &table, int index)
{
    for (const Kind &kind : kinds()) {
        PtyFeeder device;
        Desk desk(index, QString::fromStdString(device.path()), 0);
        judge(table, desk, desk.window().channel(index)->caption().toStdString() + ", " + kind.name,
              kind.seconds, [&] {
                  device.startFlood(kind.text, kind.seconds, rate);
                  idle(kind.seconds + 0.2);
                  device.join();
                  return device.flooded();
              });
        desk.window().close();
    }
}

/// A list run over the flooded Channel: the grid follows the box.
void floodList(Table &table)
{
    const QTemporaryDir folder;
    QFile list(folder.filePath(QStringLiteral("flood.kms")));
    if (!list.open(QIODevice::WriteOnly) || list.write("= SP 1\n= SP 2\n") < 0)
        throw std::runtime_error("no list file");
    list.close();
    TcpFlooder device;
    device.start(kinds().front().text, shortFlood + 1.5, rate, {});
    Desk desk(channels::tcpIp2, {}, device.port());
    desk.window().loadList(list.fileName());
    judge(table, desk, "TCP/IP-2, a list run", shortFlood, [&] {
        desk.window().cmdLoadToChmber_Click(channels::tcpIp2);
        idle(shortFlood);
        return 0.0;
    });
    device.join();
    desk.window().close();
}

int measure()
{
    Table table("A device that never stops");
    floodTcp(table, channels::tcpIp2);
    floodTcp(table, channels::tcpIp1);
    floodSerial(table, channels::rs232);
    floodSerial(table, channels::rs485);
    floodList(table);
    return table.exitCode();
}

} // namespace

int main(int argc, char **argv)
{
    return runApplication(argc, argv, measure);
}
