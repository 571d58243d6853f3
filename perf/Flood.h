// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "perf/PtyFeeder.h"

#include <arpa/inet.h>
#include <atomic>
#include <netinet/in.h>
#include <sys/socket.h>

namespace corvane::perf {

/// A port on loopback that one program may connect to at a time.
class LoopbackPort
{
public:
    /// Throws std::system_error when there is none.
    LoopbackPort()
        : m_listener(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0))
    {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        auto *const any = reinterpret_cast<sockaddr *>(&address);
        socklen_t size = sizeof address;
        if (bind(m_listener, any, size) != 0 || listen(m_listener, 1) != 0)
            throw std::system_error(errno, std::generic_category(), "no listener");
        getsockname(m_listener, any, &size);
        m_number = ntohs(address.sin_port);
    }
    ~LoopbackPort() { close(m_listener); }
    LoopbackPort(const LoopbackPort &) = delete;
    LoopbackPort &operator=(const LoopbackPort &) = delete;

    [[nodiscard]] int number() const { return m_number; }
    /// The descriptor of who connects within that time, or -1.
    [[nodiscard]] int accept(int ms) const
    {
        pollfd wanted{.fd = m_listener, .events = POLLIN, .revents = 0};
        if (poll(&wanted, 1, ms) <= 0)
            return -1;
        return accept4(m_listener, nullptr, nullptr, SOCK_CLOEXEC);
    }

private:
    int m_listener;
    int m_number = 0;
};

/// A device on loopback that talks without end to who has connected, from a thread of its own.
class TcpFlooder
{
public:
    TcpFlooder() = default;
    ~TcpFlooder()
    {
        join();
        close(m_peer);
    }
    TcpFlooder(const TcpFlooder &) = delete;
    TcpFlooder &operator=(const TcpFlooder &) = delete;

    [[nodiscard]] int port() const { return m_port.number(); }
    /// Floods who has connected for that long; ends the connection in order with `lastWords`, or
    /// leaves it open without any.
    void start(const std::string &text, double seconds, double bytesPerSecond,
               const std::string &lastWords = {})
    {
        join();
        m_thread = std::thread([=, this] {
            if (m_peer < 0)
                m_peer = m_port.accept(0);
            m_bytes = writeFor(m_peer, text, seconds, bytesPerSecond);
            if (lastWords.empty())
                return;
            [[maybe_unused]] const ssize_t written =
                write(m_peer, lastWords.data(), lastWords.size());
            close(std::exchange(m_peer, -1));
        });
    }
    /// Waits until everything is written; the bytes of the flood.
    double join()
    {
        if (m_thread.joinable())
            m_thread.join();
        return m_bytes;
    }

private:
    LoopbackPort m_port;
    int m_peer = -1;
    std::thread m_thread;
    double m_bytes = 0;
};

/// A "++" controller, on loopback and on a pseudo terminal, that tells its version and floods from
/// a read on, or from the beginning.
class ControllerFlooder
{
public:
    enum class Line { Tcp, Serial };
    enum class Begin { AtRead, AtOnce };

    ControllerFlooder(Line line, Begin begin, std::string text)
        : m_line(line)
        , m_begin(begin)
        , m_text(std::move(text))
        , m_thread([this] { run(); })
    {
    }
    ~ControllerFlooder()
    {
        m_ends = true;
        m_thread.join();
    }
    ControllerFlooder(const ControllerFlooder &) = delete;
    ControllerFlooder &operator=(const ControllerFlooder &) = delete;

    /// As the program's command line names it.
    [[nodiscard]] std::string adapter() const
    {
        return m_line == Line::Tcp ? "tcp:127.0.0.1:" + std::to_string(m_port.number())
                                   : "serial:" + m_pty.path();
    }
    [[nodiscard]] double bytes() const { return m_bytes; }

private:
    static constexpr double burstSeconds = 1;
    static constexpr int lookMs = 50;

    void run()
    {
        while (!m_ends) {
            const int peer = m_line == Line::Tcp ? m_port.accept(lookMs) : m_pty.otherEnd();
            if (peer < 0)
                continue;
            serve(peer);
            if (m_line == Line::Tcp)
                close(peer);
        }
    }
    void serve(int peer)
    {
        char buffer[4096];
        while (!m_ends) {
            pollfd wanted{.fd = peer, .events = POLLIN, .revents = 0};
            if (poll(&wanted, 1, m_begin == Begin::AtOnce ? 0 : lookMs) > 0) {
                const ssize_t size = read(peer, buffer, sizeof buffer);
                if (size <= 0)
                    return;
                answer(peer, {buffer, static_cast<size_t>(size)});
            } else if (m_begin == Begin::AtOnce) {
                flood(peer);
            }
        }
    }
    void answer(int peer, const std::string &lines)
    {
        constexpr std::string_view version = "AR488 GPIB controller, ver. 0.53\r\n";
        if (lines.find("++read eoi") != std::string::npos)
            flood(peer);
        else if (lines.find("++ver") != std::string::npos)
            send(peer, version);
    }
    static void send(int peer, std::string_view text)
    {
        [[maybe_unused]] const ssize_t written = ::write(peer, text.data(), text.size());
    }
    void flood(int peer) { m_bytes = m_bytes + writeFor(peer, m_text, burstSeconds, 200e6); }

    Line m_line;
    Begin m_begin;
    std::string m_text;
    LoopbackPort m_port;
    PtyFeeder m_pty;
    std::atomic<double> m_bytes = 0;
    std::atomic<bool> m_ends = false;
    std::thread m_thread;
};

} // namespace corvane::perf
