// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "devices/GpibAddress.h"
#include "devices/GpibReply.h"

#include <QByteArray>
#include <QString>

namespace corvane {

class WaitGroup;

/// The hardware or library that serves one GPIB board. The calls that talk to the bus block their
/// caller inside the event loop, through the group of waits they were given, and one at a time:
/// GpibControl sees to that.
class GpibAdapter
{
public:
    virtual ~GpibAdapter() = default;

    /// What serves the board, for the about box and messages ("\"++\" controller at
    /// 127.0.0.1:1234"). No bus traffic.
    [[nodiscard]] virtual QString description() const = 0;
    /// The adapter's own version text, asked for anew. Throws PlatformError when it is not there.
    virtual QString version(WaitGroup &waits) = 0;

    /// Makes the adapter ready for the address: connects or loads what is needed, as often as it is
    /// called. Throws PlatformError when the adapter is not there.
    virtual void open(const GpibAddress &address, WaitGroup &waits) = 0;
    /// Clears the device at the address (selected device clear). A device that is not there is no
    /// fault. Opens the adapter when needed.
    virtual void clear(const GpibAddress &address, WaitGroup &waits) = 0;
    /// Writes the bytes, the last one marked with END. Opens the adapter when needed. A device that
    /// does not take them within `timeoutMs` is DeviceAbsent or passes unnoticed.
    virtual void write(const GpibAddress &address, const QByteArray &bytes, int timeoutMs,
                       WaitGroup &waits) = 0;
    /// Reads one reply; empty when none came within `timeoutMs` or the waits were closed. Throws
    /// PlatformError when the adapter itself failed.
    virtual QByteArray read(const GpibAddress &address, int timeoutMs, WaitGroup &waits) = 0;
    /// How the reply of the last read ended.
    [[nodiscard]] gpibReply::End replyEnd() const { return m_replyEnd; }

protected:
    GpibAdapter() = default;
    Q_DISABLE_COPY_MOVE(GpibAdapter)

    gpibReply::End m_replyEnd = gpibReply::End::Marked;
};

} // namespace corvane
