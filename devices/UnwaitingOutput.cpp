// SPDX-License-Identifier: GPL-3.0-or-later
#include "devices/UnwaitingOutput.h"

#include "devices/Literals.h"
#include "devices/StandardStreams.h"

#include <algorithm>
#include <cerrno>

#ifdef Q_OS_UNIX
#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>
#else
#include <cstdio>
#include <io.h>
#endif

namespace corvane {

#ifdef Q_OS_UNIX

/// Opened anew: whether a write waits is a property of what was opened, which other processes
/// share. What was opened for reading alone, as in place of a stream that was closed, stays so.
UnwaitingOutput::UnwaitingOutput()
{
    struct stat there = {};
    if (standardStreams::canPrint() && ::fstat(STDOUT_FILENO, &there) == 0 &&
        (S_ISFIFO(there.st_mode) || S_ISCHR(there.st_mode)))
        m_own = ::open("/dev/fd/1", O_WRONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
}

UnwaitingOutput::~UnwaitingOutput()
{
    if (m_own >= 0)
        ::close(m_own);
}

std::optional<qsizetype> UnwaitingOutput::write(QByteArrayView bytes)
{
    // What says that it can be written takes so much at least, without a descriptor of our own.
    constexpr qsizetype pipePiece = 4096;
    pollfd output{STDOUT_FILENO, POLLOUT, 0};
    if (m_own < 0 && ::poll(&output, 1, 0) <= 0)
        return 0;
    const qsizetype size = m_own < 0 ? std::min(bytes.size(), pipePiece) : bytes.size();
    const auto taken =
        ::write(m_own < 0 ? STDOUT_FILENO : m_own, bytes.data(), static_cast<size_t>(size));
    if (taken >= 0)
        return taken;
    if (errno == EAGAIN || errno == EINTR)
        return 0;
    m_error = errno == EBADF ? u"it is closed"_s : qt_error_string(errno);
    return std::nullopt;
}

#else

UnwaitingOutput::UnwaitingOutput() = default;
UnwaitingOutput::~UnwaitingOutput() = default;

/// The system has no question whether a write would wait.
std::optional<qsizetype> UnwaitingOutput::write(QByteArrayView bytes)
{
    constexpr qsizetype piece = 4096;
    const int taken = ::_write(_fileno(stdout), bytes.data(),
                               static_cast<unsigned>(std::min(bytes.size(), piece)));
    if (taken >= 0)
        return taken;
    m_error = qt_error_string(errno);
    return std::nullopt;
}

#endif

} // namespace corvane
