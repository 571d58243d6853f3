// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "devices/GpibAdapter.h"
#include "devices/PlatformError.h"
#include "devices/WaitGroup.h"
#include "tests/support/Testing.h"

#include <deque>
#include <map>

namespace corvane {

/// What the fake adapters of one test share: the record of every call and the scripted replies.
struct FakeGpibBus
{
    /// "open GPIB0::5", "clear GPIB0::5", "write GPIB0::5 *IDN?", "read GPIB0::5"; in order.
    QStringList calls;
    /// The replies waiting at an address ("GPIB0::5"), first one next. No reply: the read waits for
    /// its time-out and returns nothing.
    std::map<QString, std::deque<QByteArray>> replies;
    /// Answers a write with a reply for the next read; may be empty.
    std::function<std::optional<QByteArray>(const QString &address, const QByteArray &text)>
        onWrite;
    /// How a reply ends.
    gpibReply::End end = gpibReply::End::Marked;
    /// Run inside an open, while the version is asked for and when a read is over; may be empty.
    std::function<void()> onOpen;
    std::function<void()> whileAsked;
    std::function<void()> afterRead;
    /// Not empty: every call fails with this description.
    QString fault;
};

class FakeGpibAdapter : public GpibAdapter
{
public:
    explicit FakeGpibAdapter(FakeGpibBus &bus)
        : m_bus(bus)
    {
    }

    [[nodiscard]] QString description() const override { return u"fake adapter"_s; }
    QString version(WaitGroup &) override
    {
        record(u"version"_s);
        if (m_bus.whileAsked)
            m_bus.whileAsked();
        return u"fake 1.0"_s;
    }
    void open(const GpibAddress &address, WaitGroup &) override
    {
        if (m_bus.onOpen)
            m_bus.onOpen();
        record(u"open "_s + address.toString());
    }
    void clear(const GpibAddress &address, WaitGroup &) override
    {
        record(u"clear "_s + address.toString());
    }
    void write(const GpibAddress &address, const QByteArray &bytes, int, WaitGroup &) override
    {
        record(u"write %1 %2"_s.arg(address.toString(), QString::fromLatin1(bytes)));
        if (!m_bus.onWrite)
            return;
        if (const auto reply = m_bus.onWrite(address.toString(), bytes))
            m_bus.replies[address.toString()].push_back(*reply);
    }
    QByteArray read(const GpibAddress &address, int timeoutMs, WaitGroup &waits) override
    {
        record(u"read "_s + address.toString());
        const auto over = qScopeGuard([this] {
            if (m_bus.afterRead)
                m_bus.afterRead();
        });
        auto &queue = m_bus.replies[address.toString()];
        if (waits.waitUntil([&queue] { return !queue.empty(); }, timeoutMs) != WaitEnd::Done)
            return {};
        m_replyEnd = m_bus.end;
        QByteArray reply = queue.front();
        queue.pop_front();
        return reply;
    }

private:
    void record(const QString &call)
    {
        m_bus.calls.append(call);
        if (!m_bus.fault.isEmpty())
            throw PlatformError(m_bus.fault);
    }

    FakeGpibBus &m_bus;
};

} // namespace corvane
