#include "devices/SerialLine.h"

#include "devices/Literals.h"

#include <QSerialPort>

#ifdef Q_OS_LINUX
// The kernel's own header: the C library's termios has no arbitrary rates, and the two clash.
#include <asm/termbits.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#endif

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

bool parityTaken(const termios2 &line, SerialSettings::Parity parity, bool pseudo)
{
    using Parity = SerialSettings::Parity;
    const bool on = (line.c_cflag & PARENB) != 0;
    if (!pseudo && on != (parity != Parity::None))
        return false;
    const bool odd = (line.c_cflag & PARODD) != 0;
    const bool sticky = (line.c_cflag & CMSPAR) != 0;
    switch (parity) {
    case Parity::None:
        return true;
    case Parity::Even:
        return !odd && !sticky;
    case Parity::Odd:
        return odd && !sticky;
    case Parity::Mark:
        return odd && sticky;
    case Parity::Space:
        return !odd && sticky;
    }
    return false;
}

int dataBitsOf(const termios2 &line)
{
    switch (line.c_cflag & CSIZE) {
    case CS5:
        return 5;
    case CS6:
        return 6;
    case CS7:
        return 7;
    default:
        return 8;
    }
}

} // namespace

bool isHungUp(const QSerialPort &port)
{
    pollfd query = {port.handle(), POLLIN, 0};
    return poll(&query, 1, 0) > 0 && (query.revents & (POLLHUP | POLLNVAL)) != 0;
}

QString refusedSetting(const QSerialPort &port, const SerialSettings &wanted)
{
    using StopBits = SerialSettings::StopBits;
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
    if (!pseudo && dataBitsOf(line) != wanted.dataBits)
        return u"%1 data bits"_s.arg(wanted.dataBits);
    if (wanted.stopBits == StopBits::OneAndHalf)
        return u"1.5 stop bits"_s;
    if (wanted.stopBits == StopBits::Two && (line.c_cflag & CSTOPB) == 0)
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
