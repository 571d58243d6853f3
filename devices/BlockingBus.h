// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "devices/GpibAddress.h"
#include "devices/GpibReply.h"

#include <QByteArray>
#include <QString>

namespace corvane {

/// One GPIB board as an installed library serves it. Every call blocks; all but description() are
/// made on one thread, one at a time. Faults are thrown as PlatformError.
class BlockingBus
{
public:
    virtual ~BlockingBus() = default;

    /// What the board is reached by, for messages. From any thread, at once.
    [[nodiscard]] virtual QString description() const = 0;

    virtual void open(const GpibAddress &address) = 0;
    /// Clears the device. Throws DeviceAbsent when there is none.
    virtual void clear(const GpibAddress &address) = 0;
    /// Writes bytes, the last one with END. Throws DeviceAbsent when no device takes them.
    virtual void write(const GpibAddress &address, const QByteArray &bytes, int timeoutMs) = 0;
    /// Reads up to END; at a time-out what has come so far.
    virtual QByteArray read(const GpibAddress &address, int timeoutMs) = 0;
    /// How the last reply ended; after read, on its thread.
    [[nodiscard]] gpibReply::End replyEnd() const { return m_replyEnd; }
    /// Gives all devices back to the library.
    virtual void close() = 0;

protected:
    BlockingBus() = default;
    Q_DISABLE_COPY_MOVE(BlockingBus)

    static constexpr int readBlock = 65536;

    gpibReply::End m_replyEnd = gpibReply::End::Marked;
};

} // namespace corvane
