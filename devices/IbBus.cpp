// SPDX-License-Identifier: GPL-3.0-or-later
#include "devices/IbBus.h"

#include "devices/DeviceAbsent.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <array>
#include <cerrno>

#ifdef Q_OS_UNIX
#include <unistd.h>
#endif

namespace corvane {

namespace {

constexpr int statusError = 0x8000;
constexpr int statusTimeout = 0x4000;
constexpr int statusEnd = 0x2000;
constexpr int statusMask = 0xFFFF;
constexpr int optionTimeout = 3;
constexpr int controlTimeoutMs = 1000;
/// One library loses a descriptor at every failed opening and crashes when it has none left.
constexpr int mostFailedOpenings = 2000;

namespace error {
constexpr int system = 0;
constexpr int noListener = 2;
constexpr int aborted = 6;
constexpr int noBoard = 7;
constexpr int bus = 14;
constexpr int handle = 23;
} // namespace error

/// On a bus without any device nobody takes the commands either.
constexpr std::array deviceAbsent = {error::noListener, error::aborted, error::bus};

struct Reason
{
    int error;
    QLatin1String text;
};

constexpr Reason reasons[] = {
    {1, "the board is not the controller in charge of the bus"_L1},
    {error::noListener, "no device listens at this address; check the address, the "
                        "cable and the device's power"_L1},
    {3, "the board cannot address the device"_L1},
    {4, "the library refused an argument"_L1},
    {5, "the board is not the system controller; configure it as one"_L1},
    {error::aborted, "the device did not take the bytes in time"_L1},
    {error::noBoard, "there is no such board; check it with the library's "
                     "configuration tool"_L1},
    {10, "an earlier operation is still running"_L1},
    {11, "the board cannot do this"_L1},
    {12, "the library cannot read its configuration file"_L1},
    {error::bus, "the bus takes no commands; check the cables and that a device is "
                 "switched on"_L1},
    {16, "a device holds the service request line"_L1},
    {20, "the library's table of devices is full; restart the program"_L1},
    {21, "another program has locked the board"_L1},
    {error::handle, "the library has lost the device; connect again"_L1},
    {26, "another program is using the device"_L1},
    {28, "the board has no power"_L1},
};

QString groupHint(const QString &deviceFile)
{
    return u"permission denied for %1; add your user to the group %2 and log in "
           "again"_s.arg(deviceFile, QFileInfo(deviceFile).group());
}

} // namespace

IbBus::IbBus(std::shared_ptr<const IbLibrary> library, int board, const QString &deviceFiles)
    : m_library(std::move(library))
    , m_board(board)
    , m_deviceFile(deviceFiles + QString::number(board))
{
}

QString IbBus::missing() const
{
#ifdef Q_OS_UNIX
    const QByteArray file = QFile::encodeName(m_deviceFile);
    if (m_library->hasDeviceFiles && access(file.constData(), R_OK | W_OK) != 0)
        return errno == EACCES ? groupHint(m_deviceFile)
                               : u"there is no %1; load the board's kernel driver and configure "
                                 "it (gpib_config)"_s.arg(m_deviceFile);
#endif
    return {};
}

QString IbBus::description() const
{
    return u"board %1 of the GPIB library %2"_s.arg(m_board).arg(m_library->file);
}

void IbBus::open(const GpibAddress &address)
{
    deviceAt(address, controlTimeoutMs);
}

void IbBus::clear(const GpibAddress &address)
{
    if (failed(m_library->ibclr(deviceAt(address, controlTimeoutMs))))
        fail(address);
}

void IbBus::write(const GpibAddress &address, const QByteArray &bytes, int timeoutMs)
{
    const int handle = deviceAt(address, timeoutMs);
    if (failed(m_library->ibwrt(handle, bytes.constData(), static_cast<size_t>(bytes.size()))))
        fail(address);
}

QByteArray IbBus::read(const GpibAddress &address, int timeoutMs)
{
    const int handle = deviceAt(address, timeoutMs);
    QByteArray reply;
    QByteArray block(readBlock, Qt::Uninitialized);
    for (;;) {
        const int status = m_library->ibrd(handle, block.data(), readBlock);
        const bool timedOut = (status & statusTimeout) != 0;
        if (failed(status) && !timedOut && m_library->ThreadIberr() != error::aborted)
            fail(address);
        const auto count = std::clamp<qsizetype>(m_library->count(), 0, readBlock);
        reply.append(block.constData(), count);
        m_replyEnd = failed(status)              ? gpibReply::End::TimedOut
                     : (status & statusEnd) != 0 ? gpibReply::End::Marked
                     : count == 0                ? gpibReply::End::Unmarked
                                                 : gpibReply::End::TooLong;
        if (failed(status) || (status & statusEnd) != 0 || count == 0 ||
            reply.size() >= gpibReply::longest)
            return reply;
    }
}

void IbBus::close()
{
    for (const auto &[address, device] : m_devices)
        m_library->ibonl(device.handle, 0);
    m_devices.clear();
}

int IbBus::deviceAt(const GpibAddress &address, int timeoutMs)
{
    const int code = IbLibrary::timeoutCode(timeoutMs);
    const auto known = m_devices.find(address.toString());
    if (known == m_devices.end())
        return newDevice(address, code);
    Device &device = known->second;
    if (device.timeoutCode != code) {
        if (failed(m_library->ibconfig(device.handle, optionTimeout, code)))
            fail(address);
        device.timeoutCode = code;
    }
    return device.handle;
}

int IbBus::newDevice(const GpibAddress &address, int timeoutCode)
{
    // A library may crash on addresses that do not exist, whoever set them.
    const int secondary = address.secondary.value_or(0);
    if (address.primary < 0 || address.primary > 30 ||
        (secondary != 0 && (secondary < 96 || secondary > 126)))
        throw PlatformError(u"%1 is no address of a device"_s.arg(address.toString()));
    if (const QString why = missing(); !why.isEmpty())
        throw PlatformError(u"%1: %2"_s.arg(address.toString(), why));
    if (m_failedOpenings >= mostFailedOpenings)
        throw PlatformError(
            u"%1: opening has failed too often; restart the program"_s.arg(address.toString()));
    const int handle = m_library->ibdev(m_board, address.primary, secondary, timeoutCode, 1, 0);
    if (handle < 0 || failed(m_library->ThreadIbsta())) {
        ++m_failedOpenings;
        fail(address);
    }
    m_devices[address.toString()] = {handle, timeoutCode};
    return handle;
}

bool IbBus::failed(int status) const
{
    return (status & statusMask & statusError) != 0;
}

void IbBus::fail(const GpibAddress &address)
{
    const int error = m_library->ThreadIberr();
    const QString why = reason(error, m_library->count());
    const auto known = m_devices.find(address.toString());
    if (known != m_devices.end() && (error == error::system || error == error::handle)) {
        m_library->ibonl(known->second.handle, 0); // opened anew at the next use
        m_devices.erase(known);
    }
    const QString text = u"%1: %2"_s.arg(address.toString(), why);
    if (std::ranges::find(deviceAbsent, error) != deviceAbsent.end())
        throw DeviceAbsent(text);
    throw PlatformError(text);
}

QString IbBus::reason(int error, long count) const
{
    if (error == error::system && count == EACCES)
        return groupHint(m_deviceFile);
    if (error == error::system)
        return u"the board does not answer the system (error %1); is its driver "
               "loaded and the board configured?"_s.arg(count);
    const auto known = std::ranges::find(reasons, error, &Reason::error);
    return known == std::end(reasons) ? u"the GPIB library reports error %1"_s.arg(error)
                                      : QString(known->text);
}

} // namespace corvane
