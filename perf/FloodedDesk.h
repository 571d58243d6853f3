// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/UnattendedDialogs.h"
#include "app/window/WindowProgram.h"
#include "perf/BenchProcess.h"
#include "windows/main/ChannelTab.h"

#include <QEventLoop>
#include <QTextStream>

#include <atomic>
#include <thread>

namespace corvane::perf {

inline void idle(double seconds)
{
    QEventLoop loop;
    QTimer::singleShot(static_cast<int>(seconds * 1000), Qt::PreciseTimer, &loop,
                       &QEventLoop::quit);
    loop.exec();
}

inline double threadSeconds()
{
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
}

/// How late a thread wakes up that has nothing else to do: the machine's own part of a wait.
class IdleThread
{
public:
    ~IdleThread() { end(); }
    double end()
    {
        m_ends = true;
        if (m_thread.joinable())
            m_thread.join();
        return m_latest;
    }

private:
    std::atomic<bool> m_ends = false;
    double m_latest = 0;
    std::thread m_thread{[this] {
        while (!m_ends) {
            const double due = now() + 0.005;
            sleepUntil(due);
            m_latest = std::max(m_latest, now() - due);
        }
    }};
};

/// The longest time that the window's own event loop has left a timer waiting, what it worked
/// meanwhile, and the most memory.
class Probe : public QObject
{
public:
    Probe()
    {
        m_timer.setTimerType(Qt::PreciseTimer);
        connect(&m_timer, &QTimer::timeout, this, [this] {
            const double time = now();
            const double work = threadSeconds();
            longest = std::max(longest, time - m_lastTick - intervalMs / 1000.0);
            longestWork = std::max(longestWork, work - m_lastWork);
            m_lastTick = time;
            m_lastWork = work;
            memory = std::max(memory, residentBytes());
        });
        m_timer.start(intervalMs);
    }

    double longest = 0;
    double longestWork = 0; ///< processor seconds
    double memory = residentBytes();

private:
    static constexpr int intervalMs = 5;

    QTimer m_timer;
    double m_lastTick = now();
    double m_lastWork = threadSeconds();
};

/// The program with its Channels connected, all but the flooded one to the bench, and those
/// looping.
class Desk
{
public:
    static constexpr int loopMs = 200;

    /// Where the flooded Channel goes instead of to the bench.
    struct Flooded
    {
        int index = 0;
        QString device = {};
        int tcpPort = 0;
        QString adapter = {};
    };

    explicit Desk(Flooded flooded)
        : m_flooded(std::move(flooded))
        , m_program(line(), m_dialogs)
    {
        window().show();
        const QString host = u"127.0.0.1"_s;
        const std::array<ChannelEntries, channelCount> entries{
            ChannelEntries{.port = u"1"_s, .address = u"05"_s}, ChannelEntries{.port = u"2"_s},
            ChannelEntries{.address = u"GPIB0::5"_s},
            ChannelEntries{.port = tcpPort(channels::tcpIp1), .host = host},
            ChannelEntries{.port = tcpPort(channels::tcpIp2), .host = host}};
        for (int index = 0; index < channelCount; ++index) {
            window().parts().channels.at(index).fillIn(entries.at(static_cast<size_t>(index)));
            if (!isFlooded(index))
                connectChannel(window(), index, {});
        }
        window().showChannel(m_flooded.index);
        // A controller that floods from the beginning may not connect.
        window().cmdConnect_Click(m_flooded.index);
        for (int index = 0; index < channelCount; ++index) {
            if (!isFlooded(index))
                loop(index);
        }
        idle(1);
    }

    [[nodiscard]] Main &window() { return m_program.window(); }
    [[nodiscard]] ChannelSession &channel()
    {
        return window().parts().channels.at(m_flooded.index);
    }
    void loop(int index)
    {
        ChannelSession &channel = window().parts().channels.at(index);
        channel.setPeriod(loopMs);
        channel.setLooping(true);
        QObject::connect(&channel, &ChannelSession::replied, &m_counter,
                         [this, index] { ++m_replies.at(static_cast<size_t>(index)); });
    }
    /// The fewest replies that one of the other Channels has had since the last call.
    int fewestReplies()
    {
        int fewest = std::numeric_limits<int>::max();
        for (int index = 0; index < channelCount; ++index) {
            if (!isFlooded(index))
                fewest = std::min(fewest, m_replies.at(static_cast<size_t>(index)));
        }
        m_replies = {};
        return fewest;
    }
    /// What the message boxes said.
    [[nodiscard]] const QString &messages() const { return m_messages; }

private:
    [[nodiscard]] bool isFlooded(int index) const { return index == m_flooded.index; }
    [[nodiscard]] QString tcpPort(int index) const
    {
        return isFlooded(index) ? QString::number(m_flooded.tcpPort) : m_bench.chamberPort();
    }
    [[nodiscard]] CommandLine line() const
    {
        CommandLine line = m_bench.commandLine();
        if (!m_flooded.device.isEmpty())
            line.serialDevices[m_flooded.index + 1] = m_flooded.device;
        if (!m_flooded.adapter.isEmpty())
            line.gpibAdapters.at(0) = m_flooded.adapter;
        return line;
    }

    Flooded m_flooded;
    QString m_messages;
    QTextStream m_messageStream{&m_messages};
    UnattendedDialogs m_dialogs{m_messageStream};
    BenchProcess m_bench;
    WindowProgram m_program;
    std::array<int, channelCount> m_replies{};
    QObject m_counter;
};

} // namespace corvane::perf
