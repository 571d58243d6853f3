// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "tests/support/Testing.h"

#include <asm/termbits.h>
#include <cstdlib>
#include <fcntl.h>
#include <sys/ioctl.h>
#include <unistd.h>

namespace corvane {

/// The far end of a serial line: a pseudo terminal whose other side the code under test opens.
class Pty
{
public:
    Pty()
        : m_master(posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK))
    {
        grantpt(m_master);
        unlockpt(m_master);
        termios2 raw = line();
        raw.c_iflag = raw.c_oflag = raw.c_lflag = 0; // a fresh one echoes
        ioctl(m_master, TCSETS2, &raw);
        m_keeper = open(ptsname(m_master), O_RDWR | O_NOCTTY);
    }
    ~Pty() { unplug(); }
    Q_DISABLE_COPY_MOVE(Pty)

    /// The device that the code under test opens.
    [[nodiscard]] QString device() const { return QString::fromLocal8Bit(ptsname(m_master)); }

    /// How many bytes the line took; below 0: none.
    qsizetype write(const QByteArray &bytes) const // NOLINT(modernize-use-nodiscard)
    {
        return ::write(m_master, bytes.constData(), static_cast<size_t>(bytes.size()));
    }

    /// Everything that has come in; empty when nothing waits.
    [[nodiscard]] QByteArray read() const
    {
        QByteArray buffer(65536, Qt::Uninitialized);
        const auto count = ::read(m_master, buffer.data(), static_cast<size_t>(buffer.size()));
        return buffer.first(std::max<qsizetype>(count, 0));
    }

    /// How many of the written bytes have come and wait for the other side to read them.
    [[nodiscard]] int waiting() const
    {
        int count = 0;
        ioctl(m_keeper, FIONREAD, &count);
        return count;
    }

    /// Pulls the adapter out.
    void unplug()
    {
        close(std::exchange(m_keeper, -1));
        close(std::exchange(m_master, -1));
    }

    /// The line as the driver has it.
    [[nodiscard]] termios2 line() const
    {
        termios2 line = {};
        ioctl(m_master, TCGETS2, &line);
        return line;
    }

private:
    int m_master;
    int m_keeper = -1; ///< holds the far side open, so that closing it is no hang-up
};

} // namespace corvane
