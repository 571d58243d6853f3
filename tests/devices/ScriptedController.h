// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "devices/GpibStream.h"
#include "devices/PlatformError.h"
#include "tests/support/FakeClock.h"
#include "tests/support/Testing.h"

#include <deque>

namespace corvane {

/// A "++" controller in memory with one device behind it, and with faults that a test can order.
/// It works its lines off one after the other: a read without a reply holds up what follows for the
/// read time-out. Its time is the fake clock's.
class ScriptedController : public GpibStream
{
public:
    enum class Fault {
        None,
        Mute,      ///< answers nothing
        Gone,      ///< closes the connection at a read
        Late,      ///< answers a read after 150 ms
        Twice,     ///< says everything at a read twice
        Garbage,   ///< answers a read with rubbish only
        DropsMark, ///< forgets what it is sent during a read
        MarkFirst, ///< answers the version before the read that came earlier
        Endless    ///< talks without end
    };

    explicit ScriptedController(FakeClock &clock)
        : m_clock(clock)
    {
    }

    [[nodiscard]] QString place() const override { return u"memory"_s; }
    bool connectToController(WaitGroup &) override
    {
        ++connections;
        m_todo.clear();
        m_paused = false;
        return m_connected = true;
    }
    [[nodiscard]] bool isConnected() const override { return m_connected; }
    void drop() override { m_connected = false; }
    void write(const QByteArray &bytes, WaitGroup &) override
    {
        if (!m_connected)
            throw PlatformError(u"not connected"_s);
        QByteArray line;
        for (qsizetype at = 0; at < bytes.size(); ++at) {
            if (bytes[at] == '\n') {
                lines.append(line);
                m_todo.push_back(std::exchange(line, {}));
                continue;
            }
            line += bytes[at];
            if (bytes[at] == '\x1b')
                line += bytes[++at];
        }
        if (fault == Fault::MarkFirst && m_todo.size() > 1)
            std::swap(m_todo[m_todo.size() - 1], m_todo[m_todo.size() - 2]);
        workOff();
    }

    Fault fault = Fault::None;
    QByteArray versionText = "AR488 GPIB controller, ver. 0.53\r\n";
    std::deque<QByteArray> replies; ///< what the device answers, one a read
    QByteArrayList lines;           ///< what came, escapes included
    int connections = 0;

private:
    void workOff()
    {
        while (!m_todo.empty() && !m_paused && fault != Fault::Mute) {
            const QByteArray line = m_todo.front();
            m_todo.pop_front();
            if (line == "++ver")
                append(versionText);
            else if (line.startsWith("++read_tmo_ms "))
                m_readTimeoutMs = line.mid(14).toInt();
            else if (line == "++read eoi")
                answerRead(replies.empty() ? QByteArray() : replies.front());
        }
    }

    void answerRead(const QByteArray &reply)
    {
        if (!replies.empty())
            replies.pop_front();
        if (fault == Fault::Garbage || fault == Fault::DropsMark || fault == Fault::Endless)
            m_todo.clear();
        if (fault == Fault::Gone)
            drop();
        else if (fault == Fault::Twice)
            append(reply + versionText + reply);
        else if (fault == Fault::Garbage)
            append("\x01\xff\x80garbage");
        else if (fault == Fault::Late)
            pause(150, reply);
        else if (fault == Fault::Endless)
            pause(20, "endless ");
        else if (reply.isEmpty() && fault == Fault::None)
            pause(m_readTimeoutMs, {});
        else
            append(reply);
    }

    void pause(int ms, const QByteArray &thenSay)
    {
        m_paused = true;
        m_clock.after(ms, [this, thenSay, connection = connections] {
            if (!m_connected || connection != connections)
                return;
            m_paused = false;
            append(thenSay);
            if (fault == Fault::Endless)
                m_todo.emplace_back("++read eoi");
            workOff();
        });
    }

    FakeClock &m_clock;
    std::deque<QByteArray> m_todo;
    int m_readTimeoutMs = 1200;
    bool m_connected = false;
    bool m_paused = false;
};

} // namespace corvane
