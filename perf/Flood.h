#pragma once

#include "perf/PtyFeeder.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>

namespace corvane::perf {

/// A device on loopback that talks without end to whoever connects: a thread of its own writes the
/// same text again and again.
class TcpFlooder
{
public:
    TcpFlooder()
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
        m_port = ntohs(address.sin_port);
    }
    ~TcpFlooder()
    {
        join();
        close(m_listener);
    }
    TcpFlooder(const TcpFlooder &) = delete;
    TcpFlooder &operator=(const TcpFlooder &) = delete;

    [[nodiscard]] int port() const { return m_port; }
    /// Waits for a connection, floods it for that long, ends it with `lastWords` and in order.
    void start(const std::string &text, double seconds, double bytesPerSecond,
               const std::string &lastWords)
    {
        join();
        m_thread = std::thread([=, this] {
            const int peer = accept(m_listener, nullptr, nullptr);
            m_bytes = writeFor(peer, text, seconds, bytesPerSecond);
            (void)!write(peer, lastWords.data(), lastWords.size());
            close(peer);
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
    int m_listener;
    int m_port = 0;
    std::thread m_thread;
    double m_bytes = 0;
};

} // namespace corvane::perf
