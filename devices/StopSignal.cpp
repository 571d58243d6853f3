// SPDX-License-Identifier: GPL-3.0-or-later
#include "devices/StopSignal.h"

#include <QCoreApplication>
#include <QObject>
#include <QSocketNotifier>

#include <array>
#include <csignal>
#include <cstring>

#ifdef Q_OS_UNIX
#include <fcntl.h>
#include <poll.h>
#include <unistd.h>
#else
#include <qt_windows.h>
#endif

namespace corvane {

#ifdef Q_OS_UNIX

namespace {

/// The end of the pipe that the signal handler writes into; a handler can reach nothing else.
std::sig_atomic_t volatile wakeUpEnd = -1;

extern "C" void noteStopSignal(int)
{
    const char byte = 0;
    [[maybe_unused]] const auto written = ::write(wakeUpEnd, &byte, 1);
    ::alarm(1); // unless the event loop gets it before
}

bool takesOutput(int stream)
{
    struct pollfd output = {stream, POLLOUT, 0};
    return ::poll(&output, 1, 0) != 0;
}

/// A write to a pipe whose reader stands still never returns to the event loop.
extern "C" void endWhenOutputIsStuck(int)
{
    if (takesOutput(STDOUT_FILENO) && takesOutput(STDERR_FILENO)) {
        ::alarm(1);
        return;
    }
    constexpr char words[] = "corvane: stopped, and the output is read by nobody\n";
    if (takesOutput(STDERR_FILENO)) [[maybe_unused]]
        const auto written = ::write(STDERR_FILENO, words, sizeof words - 1);
    constexpr int stuck = 2;
    ::_exit(stuck);
}

constexpr std::array stopSignals = {SIGINT, SIGTERM, SIGHUP};

/// What is said where no event loop can be told yet; a literal.
const char *volatile earlyWords = "";

extern "C" void endEarly(int)
{
    const char *words = earlyWords;
    [[maybe_unused]] const auto written = ::write(STDERR_FILENO, words, std::strlen(words));
    constexpr int stopped = 2;
    ::_exit(stopped);
}

/// The process is ending already, with an exit code that tells why.
extern "C" void passOver(int) {}

} // namespace

class StopSignal::Private
{
public:
    explicit Private(std::function<void()> stop)
        : m_stop(std::move(stop))
        , m_outerEnd(wakeUpEnd)
    {
        if (::pipe2(m_pipe.data(), O_CLOEXEC | O_NONBLOCK) != 0)
            return;
        m_notifier = std::make_unique<QSocketNotifier>(m_pipe[0], QSocketNotifier::Read);
        QObject::connect(m_notifier.get(), &QSocketNotifier::activated, m_notifier.get(), [this] {
            std::array<char, 16> bytes;
            [[maybe_unused]] const auto read = ::read(m_pipe[0], bytes.data(), bytes.size());
            ::alarm(0);
            m_stopped = true;
            m_stop();
        });
        wakeUpEnd = m_pipe[1];
        std::signal(SIGALRM, endWhenOutputIsStuck);
        struct sigaction action
        {
        };
        action.sa_handler = noteStopSignal;
        action.sa_flags = SA_RESTART;
        for (size_t each = 0; each < stopSignals.size(); ++each) {
            ::sigaction(stopSignals.at(each), nullptr, &m_before.at(each));
            if (m_before.at(each).sa_handler == endEarly)
                m_before.at(each).sa_handler = SIG_DFL; // its words are true no more
            const bool ignored = m_before.at(each).sa_handler == SIG_IGN;
            if (stopSignals.at(each) != SIGHUP || !ignored)
                ::sigaction(stopSignals.at(each), &action, nullptr);
        }
    }

    ~Private()
    {
        if (!m_notifier)
            return;
        for (size_t each = 0; each < stopSignals.size(); ++each)
            restore(each);
        wakeUpEnd = m_outerEnd;
        m_notifier.reset();
        ::close(m_pipe[0]);
        ::close(m_pipe[1]);
    }

    Q_DISABLE_COPY_MOVE(Private)

private:
    void restore(size_t each)
    {
        struct sigaction &before = m_before.at(each);
        if (m_stopped && before.sa_handler == SIG_DFL)
            before.sa_handler = passOver;
        ::sigaction(stopSignals.at(each), &before, nullptr);
    }

    std::function<void()> m_stop;
    bool m_stopped = false;
    const int m_outerEnd;
    std::array<int, 2> m_pipe = {-1, -1};
    std::unique_ptr<QSocketNotifier> m_notifier;
    std::array<struct sigaction, stopSignals.size()> m_before{};
};

void StopSignal::endBeforeLoop(const char *words)
{
    earlyWords = words;
    for (const int each : stopSignals) {
        if (std::signal(each, endEarly) == SIG_IGN && each == SIGHUP)
            std::signal(each, SIG_IGN);
    }
}

#else

namespace {

/// Called for a console event, in a thread of the system's.
std::function<void()> newestStop;

BOOL WINAPI noteConsoleEvent(DWORD)
{
    const auto callNewest = [] {
        if (newestStop)
            newestStop();
    };
    return QMetaObject::invokeMethod(qApp, callNewest, Qt::QueuedConnection) ? TRUE : FALSE;
}

} // namespace

class StopSignal::Private
{
public:
    explicit Private(std::function<void()> stop)
        : m_outer(std::exchange(newestStop, std::move(stop)))
    {
        SetConsoleCtrlHandler(noteConsoleEvent, TRUE);
    }
    ~Private()
    {
        SetConsoleCtrlHandler(noteConsoleEvent, FALSE);
        newestStop = std::move(m_outer);
    }
    Q_DISABLE_COPY_MOVE(Private)

private:
    std::function<void()> m_outer;
};

void StopSignal::endBeforeLoop(const char *) {}

#endif

StopSignal::StopSignal(std::function<void()> stop)
    : d(std::make_unique<Private>(std::move(stop)))
{
}

StopSignal::~StopSignal() = default;

} // namespace corvane
