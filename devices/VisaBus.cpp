// SPDX-License-Identifier: GPL-3.0-or-later
#include "devices/VisaBus.h"

#include "devices/DeviceAbsent.h"

#include <algorithm>
#include <array>

namespace corvane {

namespace {

using Status = VisaLibrary::Status;

constexpr std::uint32_t attributeTimeout = 0x3FFF001A;
constexpr std::uint32_t openLimitMs = 2000;
constexpr Status moreToCome = 0x3FFF0006;
constexpr size_t descriptionSize = 256;

/// An error as the library numbers it.
constexpr Status errorStatus(std::uint32_t number)
{
    return static_cast<Status>(0xBFFF0000U | number);
}

constexpr Status invalidSession = errorStatus(0x000E);
constexpr Status notFound = errorStatus(0x0011);
constexpr Status timedOut = errorStatus(0x0015);
constexpr Status noListener = errorStatus(0x005F);
constexpr Status connectionLost = errorStatus(0x00A6);
constexpr std::array deviceAbsent = {notFound, timedOut, noListener};

struct Hint
{
    Status status;
    QLatin1String text;
};

constexpr Hint hints[] = {
    {errorStatus(0x000F), "another program has locked the device"_L1},
    {notFound, "the board or device is not there; check it with the "
               "library's configuration tool"_L1},
    {timedOut, "the device did not take the bytes in time"_L1},
    {errorStatus(0x0038), "the bus reports an error; check the cables"_L1},
    {noListener, "no device listens at this address; check the address, the cable "
                 "and the device's power"_L1},
    {errorStatus(0x0060), "the board is not the controller in charge of the bus"_L1},
    {errorStatus(0x0072), "another program is using the device"_L1},
    {errorStatus(0x009E), "the library lacks a part of its own; install it again"_L1},
    {errorStatus(0x00A5), "the board is not configured; use the library's "
                          "configuration tool"_L1},
    {connectionLost, "the connection to the device is lost; connect again"_L1},
    {errorStatus(0x00A8), "permission denied; ask the administrator for access to "
                          "the board"_L1},
};

} // namespace

VisaBus::VisaBus(std::shared_ptr<const VisaLibrary> library, int board)
    : m_library(std::move(library))
    , m_board(board)
{
}

QString VisaBus::description() const
{
    return u"GPIB%1 of the VISA library %2"_s.arg(m_board).arg(m_library->file);
}

void VisaBus::open(const GpibAddress &address)
{
    sessionOf(address);
}

void VisaBus::clear(const GpibAddress &address)
{
    const Status status = m_library->viClear(sessionOf(address));
    if (status < 0)
        fail(address, status);
}

void VisaBus::write(const GpibAddress &address, const QByteArray &bytes, int timeoutMs)
{
    const Session session = sessionOf(address, timeoutMs);
    const auto *const data = reinterpret_cast<const unsigned char *>(bytes.constData());
    std::uint32_t written = 0;
    const Status status =
        m_library->viWrite(session, data, static_cast<std::uint32_t>(bytes.size()), &written);
    if (status < 0)
        fail(address, status);
}

QByteArray VisaBus::read(const GpibAddress &address, int timeoutMs)
{
    const Session session = sessionOf(address, timeoutMs);
    QByteArray reply;
    std::array<unsigned char, readBlock> block;
    for (;;) {
        std::uint32_t count = 0;
        const Status status = m_library->viRead(session, block.data(), readBlock, &count);
        if (status < 0 && status != timedOut)
            fail(address, status);
        reply.append(reinterpret_cast<const char *>(block.data()),
                     std::min<qsizetype>(count, readBlock));
        m_replyEnd = status == timedOut     ? gpibReply::End::TimedOut
                     : status != moreToCome ? gpibReply::End::Marked
                     : count == 0           ? gpibReply::End::Unmarked
                                            : gpibReply::End::TooLong;
        if (status != moreToCome || count == 0 || reply.size() >= gpibReply::longest)
            return reply;
    }
}

void VisaBus::close()
{
    for (const auto &[address, session] : m_sessions)
        m_library->viClose(session);
    m_sessions.clear();
    if (m_manager != 0)
        m_library->viClose(m_manager);
    m_manager = 0;
}

VisaBus::Session VisaBus::sessionOf(const GpibAddress &address)
{
    if (const auto known = m_sessions.find(address.toString()); known != m_sessions.end())
        return known->second;
    if (m_manager == 0) {
        if (const Status status = m_library->viOpenDefaultRM(&m_manager); status < 0) {
            m_manager = 0;
            fail(address, status);
        }
    }
    QString name = u"GPIB%1::%2"_s.arg(m_board).arg(address.primary);
    if (address.secondary) // this library counts them from 0
        name += u"::%1"_s.arg(*address.secondary - 96);
    const QByteArray resource = (name + u"::INSTR"_s).toLatin1();
    Session session = 0;
    const Status status =
        m_library->viOpen(m_manager, resource.constData(), 0, openLimitMs, &session);
    if (status < 0)
        fail(address, status);
    return m_sessions[address.toString()] = session;
}

VisaBus::Session VisaBus::sessionOf(const GpibAddress &address, int timeoutMs)
{
    const Session session = sessionOf(address);
    const Status status = m_library->viSetAttribute(session, attributeTimeout,
                                                    static_cast<std::uintptr_t>(timeoutMs));
    if (status < 0)
        fail(address, status);
    return session;
}

void VisaBus::fail(const GpibAddress &address, Status status)
{
    std::array<char, descriptionSize> described = {};
    if (m_manager != 0)
        m_library->viStatusDesc(m_manager, status, described.data());
    described.back() = '\0';
    const auto known = m_sessions.find(address.toString());
    if (known != m_sessions.end() && (status == connectionLost || status == invalidSession)) {
        m_library->viClose(known->second); // opened anew at the next use
        m_sessions.erase(known);
    }
    const auto hint = std::ranges::find(hints, status, &Hint::status);
    QString why = hint != std::end(hints) ? QString(hint->text)
                                          : QString::fromLocal8Bit(described.data()).trimmed();
    if (why.isEmpty())
        why = u"the VISA library does not start; check its installation"_s;
    const QString text = u"%1: %2 (VISA status %3)"_s.arg(
        address.toString(), why,
        u"%1"_s.arg(static_cast<std::uint32_t>(status), 8, 16, QChar(u'0')));
    if (std::ranges::find(deviceAbsent, status) != deviceAbsent.end())
        throw DeviceAbsent(text);
    throw PlatformError(text);
}

} // namespace corvane
