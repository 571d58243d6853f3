// SPDX-License-Identifier: GPL-3.0-or-later
#include "devices/TcpLine.h"

#include <algorithm>

#ifdef Q_OS_LINUX
#include <fcntl.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <unistd.h>
#endif

namespace corvane {

#ifdef Q_OS_LINUX

void TcpLine::hold(qintptr socket)
{
    release();
    m_descriptor = fcntl(static_cast<int>(socket), F_DUPFD_CLOEXEC, 0);
}

void TcpLine::release()
{
    if (m_descriptor >= 0)
        ::close(m_descriptor);
    m_descriptor = -1;
}

bool TcpLine::wasReset() const
{
    // A peer that has ended the connection in order leaves it half open; only a reset closes it.
    tcp_info info = {};
    socklen_t size = sizeof info;
    return m_descriptor >= 0 &&
           getsockopt(m_descriptor, IPPROTO_TCP, TCP_INFO, &info, &size) == 0 &&
           info.tcpi_state == TCP_CLOSE;
}

QByteArray TcpLine::takeRest() const
{
    constexpr qsizetype block = 65536;
    QByteArray rest;
    for (;;) {
        const qsizetype before = rest.size();
        rest.resize(before + block);
        const ssize_t taken = recv(m_descriptor, rest.data() + before, block, MSG_DONTWAIT);
        rest.resize(before + std::max<ssize_t>(taken, 0));
        if (taken <= 0)
            return rest;
    }
}

#else

void TcpLine::hold(qintptr) {}

void TcpLine::release() {}

bool TcpLine::wasReset() const
{
    return false;
}

QByteArray TcpLine::takeRest() const
{
    return {};
}

#endif

} // namespace corvane
