// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/ChannelDriver.h"
#include "app/CommandLine.h"
#include "perf/Child.h"

#include <QRegularExpression>
#include <QTemporaryDir>

#include <stdexcept>

namespace corvane::perf {

/// The simulated bench in a process of its own, so that its work is not counted as the program's.
class BenchProcess
{
public:
    /// Throws std::runtime_error when it does not start.
    BenchProcess()
        : m_child({programBeside(u"corvane-bench"_s), u"--chamber-port"_s, u"0"_s,
                   u"--board-port"_s, u"0"_s, u"--gpib-port"_s, u"0"_s, u"--links"_s,
                   m_links.path()},
                  Child::Input::Told)
    {
        if (!m_child.waitForOutput("\"quit\" ends."))
            throw std::runtime_error("corvane-bench does not start");
    }

    /// The program's arguments against it, as it says them itself.
    [[nodiscard]] CommandLine commandLine() const
    {
        return CommandLine::parse(said(u"\n  (corvane .*)\n"_s).split(u' '));
    }
    /// The TCP port of the chamber controller.
    [[nodiscard]] QString chamberPort() const { return said(u"port (\\d+) \\(chamber\\)"_s); }
    /// Gives an order, as in "connector on". `answer` is in what it says when it is done.
    void order(const QByteArray &text, const QByteArray &answer)
    {
        m_child.tell(text);
        if (!m_child.waitForOutput(answer))
            throw std::runtime_error("corvane-bench has ended");
    }

private:
    [[nodiscard]] QString said(const QString &pattern) const
    {
        const QString output = QString::fromLocal8Bit(m_child.output());
        return QRegularExpression(pattern).match(output).captured(1);
    }

    QTemporaryDir m_links;
    Child m_child;
};

/// Presses Connect on a Channel. Throws std::runtime_error when it does not open.
inline void connectChannel(Main &window, int index, const ChannelEntries &entries)
{
    constexpr int patienceMs = 10'000;
    ChannelSession &session = window.parts().channels.at(index);
    session.fillIn(entries);
    if (!channelDriver::open(session, window.waits(), patienceMs))
        throw std::runtime_error("Channel " + std::to_string(index) + " does not connect");
}

} // namespace corvane::perf
