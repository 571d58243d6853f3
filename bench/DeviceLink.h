// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "bench/ByteStream.h"
#include "bench/FaultLine.h"

namespace corvane::bench {

/// Puts a device behind streams: cuts what arrives into command lines and sends the replies to the
/// stream that asked, as the fault in force leaves them.
class DeviceLink : public QObject
{
public:
    /// The device outlives the link.
    explicit DeviceLink(Responder &device)
        : m_device(device)
    {
    }

    /// The stream must not outlive the link.
    void attach(ByteStream &stream);
    [[nodiscard]] FaultLine &faults() { return m_faults; }

private:
    Responder &m_device;
    FaultLine m_faults;
};

} // namespace corvane::bench
