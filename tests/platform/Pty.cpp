#include "Pty.h"

#include <asm/termbits.h>
#include <cstdlib>
#include <fcntl.h>
#include <sys/ioctl.h>
#include <unistd.h>

namespace corvane {

Pty::Pty()
    : m_master(posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK))
{
    grantpt(m_master);
    unlockpt(m_master);
    termios2 raw = {};
    ioctl(m_master, TCGETS2, &raw);
    raw.c_iflag = 0;
    raw.c_oflag = 0;
    raw.c_lflag = 0; // a fresh one echoes
    ioctl(m_master, TCSETS2, &raw);
    m_keeper = open(ptsname(m_master), O_RDWR | O_NOCTTY);
}

Pty::~Pty()
{
    unplug();
}

QString Pty::device() const
{
    return QString::fromLocal8Bit(ptsname(m_master));
}

void Pty::write(const QByteArray &bytes) const
{
    (void)!::write(m_master, bytes.constData(), static_cast<size_t>(bytes.size()));
}

QByteArray Pty::read() const
{
    QByteArray buffer(65536, Qt::Uninitialized);
    const auto count = ::read(m_master, buffer.data(), static_cast<size_t>(buffer.size()));
    return buffer.first(std::max<qsizetype>(count, 0));
}

void Pty::unplug()
{
    if (m_master < 0)
        return;
    close(m_keeper);
    close(m_master);
    m_master = m_keeper = -1;
}

Pty::Line Pty::line() const
{
    termios2 line = {};
    ioctl(m_master, TCGETS2, &line);
    return {line.c_ospeed, (line.c_cflag & PARODD) != 0, (line.c_cflag & CMSPAR) != 0,
            (line.c_cflag & CSTOPB) != 0};
}

} // namespace corvane
