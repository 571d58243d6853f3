// SPDX-License-Identifier: GPL-3.0-or-later
#include "bench/PtyPort.h"

#include "bench/Literals.h"
#include "bench/PtyLine.h"

#include <QFile>
#include <QFileInfo>

#include <utility>

#ifdef Q_OS_UNIX
#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <termios.h>
#include <unistd.h>
#endif

namespace corvane::bench {

PtyPort::PtyPort(QString link)
    : m_link(std::move(link))
{
}

PtyPort::~PtyPort()
{
    close();
}

void PtyPort::unplug()
{
    close();
    Q_EMIT closed();
}

void PtyPort::dropPeer()
{
    unplug();
    replug();
}

#ifdef Q_OS_UNIX

namespace {

void closeDescriptor(int &descriptor)
{
    if (descriptor >= 0)
        ::close(std::exchange(descriptor, -1));
}

/// The rate of a fresh port, by which one that no client has set is known: none of them uses it.
constexpr unsigned unsetRate = 50;

/// A notifier may be closed from inside its own signal, so it goes later.
void drop(QSocketNotifier *&notifier)
{
    if (!notifier)
        return;
    notifier->setEnabled(false);
    notifier->deleteLater();
    notifier = nullptr;
}

} // namespace

bool PtyPort::replug()
{
    if (isPlugged())
        return true;
    if (!openPair()) {
        close();
        return false;
    }
    m_readable = new QSocketNotifier(m_master, QSocketNotifier::Read, this);
    m_writable = new QSocketNotifier(m_master, QSocketNotifier::Write, this);
    m_writable->setEnabled(false);
    connect(m_readable, &QSocketNotifier::activated, this, &PtyPort::readInput);
    connect(m_writable, &QSocketNotifier::activated, this, &PtyPort::writeOutput);
    return true;
}

bool PtyPort::openPair()
{
    m_master = ::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
    std::array<char, 128> slave{};
    if (m_master < 0 || ::grantpt(m_master) != 0 || ::unlockpt(m_master) != 0 ||
        ::ptsname_r(m_master, slave.data(), slave.size()) != 0)
        return fail(u"no pseudo terminal"_s);
    m_slave = QString::fromLocal8Bit(slave.data());
    // Raw before anybody opens it: a fresh one echoes and waits for whole lines.
    termios settings{};
    ::tcgetattr(m_master, &settings);
    ::cfmakeraw(&settings);
    ::cfsetspeed(&settings, B50);
    ::tcsetattr(m_master, TCSANOW, &settings);
    m_keeper = ::open(slave.data(), O_RDWR | O_NOCTTY | O_CLOEXEC);
    if (m_keeper < 0 || ::fcntl(m_master, F_SETFL, O_NONBLOCK) != 0)
        return fail(u"cannot open %1"_s.arg(m_slave));
    if (QFileInfo(m_link).isSymLink())
        QFile::remove(m_link);
    if (!QFile::link(m_slave, m_link))
        return fail(u"cannot make the link %1"_s.arg(m_link));
    return true;
}

bool PtyPort::fail(const QString &what)
{
    m_error = what + u": "_s + QString::fromLocal8Bit(std::strerror(errno));
    return false;
}

QString PtyPort::state() const
{
    const auto line = isPlugged() ? lineOf(m_master) : std::nullopt;
    if (!line || line->rate == unsetRate)
        return {};
    return u"%1 baud, %2 stop bit%3"_s.arg(line->rate)
        .arg(line->stopBits)
        .arg(line->stopBits == 1 ? QString() : u"s"_s);
}

void PtyPort::readInput()
{
    std::array<char, 65536> buffer;
    const ssize_t count = ::read(m_master, buffer.data(), buffer.size());
    if (count > 0)
        Q_EMIT received(QByteArray(buffer.data(), count));
}

void PtyPort::send(const QByteArray &bytes)
{
    if (!isPlugged() || m_output.size() > mostBacklog)
        return;
    m_output.append(bytes);
    // Otherwise the notifier goes on with it.
    if (!m_writable->isEnabled())
        writeOutput();
}

void PtyPort::writeOutput()
{
    const bool waited = m_writable->isEnabled();
    while (!m_output.isEmpty()) {
        const ssize_t count =
            ::write(m_master, m_output.constData(), static_cast<size_t>(m_output.size()));
        if (count <= 0)
            break;
        m_output.remove(0, count);
    }
    m_writable->setEnabled(!m_output.isEmpty());
    if (waited && m_output.isEmpty())
        Q_EMIT drained();
}

void PtyPort::discardOutput()
{
    m_output.clear();
    if (!isPlugged())
        return;
    m_writable->setEnabled(false);
    ::tcflush(m_keeper, TCIFLUSH);
}

void PtyPort::close()
{
    drop(m_readable);
    drop(m_writable);
    m_output.clear();
    // Another bench may have taken the link over.
    if (m_master >= 0 && QFileInfo(m_link).symLinkTarget() == m_slave)
        QFile::remove(m_link);
    closeDescriptor(m_keeper);
    closeDescriptor(m_master);
}

#else

bool PtyPort::replug()
{
    m_error = u"This system has no pseudo terminals."_s;
    return false;
}

QString PtyPort::state() const
{
    return {};
}

void PtyPort::send(const QByteArray &) {}
void PtyPort::discardOutput() {}
void PtyPort::close() {}

#endif

} // namespace corvane::bench
