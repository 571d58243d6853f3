// SPDX-License-Identifier: GPL-3.0-or-later
#include "devices/SerialLine.h"

#include "devices/Literals.h"

#ifdef Q_OS_LINUX
// The kernel's own header: the C library's termios has no arbitrary rates, and the two clash.
#include <asm/termbits.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#endif

#include <array>
#include <cmath>

namespace corvane::serialLine {

#ifdef Q_OS_LINUX

namespace {

constexpr double rateTolerance = 0.03;

/// A pseudo terminal keeps neither the number of data bits nor the parity bit: it has no line.
bool isPseudoTerminal(int descriptor)
{
    struct stat status = {};
    if (fstat(descriptor, &status) != 0)
        return false;
    const auto major = major(status.st_rdev);
    return major >= 136 && major <= 143;
}

bool parityTaken(const termios2 &line, QSerialPort::Parity parity, bool pseudo)
{
    const bool on = (line.c_cflag & PARENB) != 0;
    if (!pseudo && on != (parity != QSerialPort::NoParity))
        return false;
    const bool odd = (line.c_cflag & PARODD) != 0;
    const bool sticky = (line.c_cflag & CMSPAR) != 0;
    switch (parity) {
    case QSerialPort::NoParity:
        return true;
    case QSerialPort::EvenParity:
        return !odd && !sticky;
    case QSerialPort::OddParity:
        return odd && !sticky;
    case QSerialPort::MarkParity:
        return odd && sticky;
    case QSerialPort::SpaceParity:
        return !odd && sticky;
    }
    return false;
}

tcflag_t sizeFlag(QSerialPort::DataBits dataBits)
{
    constexpr std::array<tcflag_t, 4> flags = {CS5, CS6, CS7, CS8};
    return flags.at(static_cast<size_t>(dataBits) - QSerialPort::Data5);
}

} // namespace

bool isHungUp(const QSerialPort &port)
{
    pollfd query = {port.handle(), POLLIN, 0};
    return poll(&query, 1, 0) > 0 && (query.revents & (POLLHUP | POLLNVAL)) != 0;
}

QString refusedSetting(const QSerialPort &port, const SerialSettings &wanted)
{
    termios2 line = {};
    if (ioctl(port.handle(), TCGETS2, &line) != 0)
        return {};
    const bool pseudo = isPseudoTerminal(port.handle());
    const double rate = line.c_ospeed;
    if (std::abs(rate - wanted.baud) > rateTolerance * wanted.baud)
        return u"the baud rate %1; the nearest it can do is %2"_s.arg(wanted.baud)
            .arg(line.c_ospeed);
    if (!parityTaken(line, wanted.parity, pseudo))
        return u"the parity in %1"_s.arg(wanted.toString());
    if (!pseudo && (line.c_cflag & CSIZE) != sizeFlag(wanted.dataBits))
        return u"%1 data bits"_s.arg(wanted.dataBits);
    if (wanted.stopBits == QSerialPort::OneAndHalfStop)
        return u"1.5 stop bits"_s;
    if (wanted.stopBits == QSerialPort::TwoStop && (line.c_cflag & CSTOPB) == 0)
        return u"2 stop bits"_s;
    return {};
}

#else

bool isHungUp(const QSerialPort &)
{
    return false;
}

QString refusedSetting(const QSerialPort &, const SerialSettings &)
{
    return {};
}

#endif

} // namespace corvane::serialLine
