// SPDX-License-Identifier: GPL-3.0-or-later
#include "devices/LibraryAdapter.h"

#include "devices/DeviceAbsent.h"
#include "devices/WaitGroup.h"

namespace corvane {

namespace {

constexpr int controlLimitMs = 3000;
/// The library's own time-out may come a little after the asked one, with part of a reply.
constexpr int marginMs = 200;

} // namespace

LibraryAdapter::LibraryAdapter(std::shared_ptr<BlockingBus> bus)
    : m_bus(std::move(bus))
{
}

LibraryAdapter::~LibraryAdapter()
{
    m_worker.post([bus = m_bus] {
        bus->close();
        return QByteArray();
    });
}

QString LibraryAdapter::version(WaitGroup &)
{
    return m_bus->description();
}

void LibraryAdapter::open(const GpibAddress &address, WaitGroup &waits)
{
    require([bus = m_bus, address] { bus->open(address); }, controlLimitMs, waits);
}

void LibraryAdapter::clear(const GpibAddress &address, WaitGroup &waits)
{
    const auto job = [bus = m_bus, address] {
        try {
            bus->clear(address);
        } catch (const DeviceAbsent &) {
            // nothing to clear
        }
    };
    require(job, controlLimitMs, waits);
}

void LibraryAdapter::write(const GpibAddress &address, const QByteArray &bytes, int timeoutMs,
                           WaitGroup &waits)
{
    if (bytes.isEmpty()) // some libraries answer it with whatever lies around
        return;
    require([bus = m_bus, address, bytes, timeoutMs] { bus->write(address, bytes, timeoutMs); },
            timeoutMs + marginMs, waits);
}

QByteArray LibraryAdapter::read(const GpibAddress &address, int timeoutMs, WaitGroup &waits)
{
    const auto end = std::make_shared<gpibReply::End>(gpibReply::End::Marked);
    const auto reply = m_worker.call(
        [bus = m_bus, address, timeoutMs, end] {
            QByteArray bytes = bus->read(address, timeoutMs);
            *end = bus->replyEnd();
            return bytes;
        },
        timeoutMs + marginMs, waits);
    if (!reply)
        return {};
    m_replyEnd = *end;
    return *reply;
}

void LibraryAdapter::require(const std::function<void()> &work, int limitMs, WaitGroup &waits)
{
    const auto job = [work] {
        work();
        return QByteArray();
    };
    if (!m_worker.call(job, limitMs, waits) && !waits.isClosed())
        throw PlatformError(
            u"%1 has not come back within %2 ms; check the devices "
            "and cables on the bus"_s.arg(m_bus->description(), QString::number(limitMs)));
}

} // namespace corvane
