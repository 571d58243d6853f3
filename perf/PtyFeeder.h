// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "perf/Harness.h"

#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <fcntl.h>
#include <poll.h>
#include <string>
#include <system_error>
#include <termios.h>
#include <thread>
#include <unistd.h>

namespace corvane::perf {

inline void sleepUntil(double time)
{
    const double left = time - now();
    if (left > 0)
        std::this_thread::sleep_for(std::chrono::duration<double>(left));
}

/// Writes the text again and again for so many seconds, at a rate at most; the bytes written. It
/// ends in time also when nobody reads.
inline double writeFor(int descriptor, const std::string &text, double seconds,
                       double bytesPerSecond)
{
    const int flags = fcntl(descriptor, F_GETFL);
    fcntl(descriptor, F_SETFL, flags | O_NONBLOCK);
    const double begin = now();
    double written = 0;
    size_t at = 0; // a part of the text may be taken
    while (now() - begin < seconds) {
        sleepUntil(begin + written / bytesPerSecond);
        pollfd wanted{.fd = descriptor, .events = POLLOUT, .revents = 0};
        if (poll(&wanted, 1, 100) == 0)
            continue;
        const ssize_t size = write(descriptor, text.data() + at, text.size() - at);
        if (size < 0 && errno != EINTR && errno != EAGAIN)
            break;
        written += static_cast<double>(std::max<ssize_t>(size, 0));
        at = (at + static_cast<size_t>(std::max<ssize_t>(size, 0))) % text.size();
    }
    fcntl(descriptor, F_SETFL, flags);
    return written;
}

/// A pseudo terminal whose other end is fed by a thread: the device of a serial benchmark. The
/// kernel holds only some kB, so the time a feed takes is the time its reader needed.
class PtyFeeder
{
public:
    /// Throws std::system_error when the system has no pseudo terminal left.
    PtyFeeder()
        : m_master(posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC))
    {
        if (m_master < 0 || grantpt(m_master) != 0 || unlockpt(m_master) != 0)
            throw std::system_error(errno, std::generic_category(), "no pseudo terminal");
        m_path = ptsname(m_master);
        // Raw before anybody opens it: a fresh one echoes and waits for whole lines.
        m_slave = open(m_path.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC);
        termios settings{};
        tcgetattr(m_slave, &settings);
        cfmakeraw(&settings);
        tcsetattr(m_slave, TCSANOW, &settings);
    }
    ~PtyFeeder()
    {
        join();
        close(m_slave);
        close(m_master);
    }
    PtyFeeder(const PtyFeeder &) = delete;
    PtyFeeder &operator=(const PtyFeeder &) = delete;

    /// The device that the reader opens.
    [[nodiscard]] const std::string &path() const { return m_path; }
    /// The device's own end.
    [[nodiscard]] int otherEnd() const { return m_master; }

    /// The text of one piece: printable, without a blank.
    [[nodiscard]] static std::string pattern(size_t piece)
    {
        std::string text(piece, ' ');
        for (size_t i = 0; i < piece; ++i)
            text[i] = static_cast<char>('!' + i % 90);
        return text;
    }
    /// Starts to write `bytes` bytes, that text again and again, `piece` at a time; at
    /// `bytesPerSecond`, or as fast as they are read with 0.
    void start(size_t bytes, size_t piece, double bytesPerSecond = 0)
    {
        join();
        m_thread = std::thread([this, bytes, piece, bytesPerSecond] {
            const double begin = now();
            feed(bytes, piece, bytesPerSecond);
            m_seconds = now() - begin;
        });
    }
    /// Starts to write the text again and again for so many seconds, at a rate at most.
    void startFlood(const std::string &text, double seconds, double bytesPerSecond)
    {
        join();
        m_thread = std::thread([this, text, seconds, bytesPerSecond] {
            m_flooded = writeFor(m_master, text, seconds, bytesPerSecond);
        });
    }
    [[nodiscard]] double flooded() const { return m_flooded; }
    /// Waits until everything is written; the seconds that took.
    double join()
    {
        if (m_thread.joinable())
            m_thread.join();
        return m_seconds;
    }

private:
    void feed(size_t bytes, size_t piece, double bytesPerSecond) const
    {
        const std::string text = pattern(piece);
        const double begin = now();
        for (size_t written = 0; written < bytes;) {
            if (bytesPerSecond > 0)
                sleepUntil(begin + static_cast<double>(written) / bytesPerSecond);
            const ssize_t size = write(m_master, text.data(), std::min(piece, bytes - written));
            if (size < 0 && errno != EINTR)
                return;
            written += size > 0 ? static_cast<size_t>(size) : 0;
        }
    }
    int m_master;
    int m_slave = -1;
    std::string m_path;
    std::thread m_thread;
    double m_seconds = 0;
    double m_flooded = 0;
};

} // namespace corvane::perf
