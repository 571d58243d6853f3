// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "bench/ScpiDevice.h"

#include <functional>
#include <utility>

namespace corvane::bench {

/// The reference meter: "data?" gives the true voltage of the board's output that its sensor is
/// clipped to, as "+5.00123E-01". The sensor stays on one channel or, as if somebody moved it each
/// time, follows the channel that the board was told about last; at first it follows.
class Meter : public ScpiDevice
{
public:
    /// The volts at the output of a channel, 0 to 7.
    using Probe = std::function<double(int channel)>;
    /// The channel that a following sensor is on.
    using Followed = std::function<int()>;

    Meter(Probe probe, Followed followed)
        : ScpiDevice(Acknowledge::No)
        , m_probe(std::move(probe))
        , m_followed(std::move(followed))
    {
    }

    void pinSensor(int channel) { m_pinnedChannel = channel; }
    void followWithSensor() { m_pinnedChannel.reset(); }
    [[nodiscard]] bool isSensorPinned() const { return m_pinnedChannel.has_value(); }
    /// Where the sensor is now.
    [[nodiscard]] int sensorChannel() const
    {
        return m_pinnedChannel ? *m_pinnedChannel : m_followed();
    }
    /// Answers "OVERFLOW" in the place of a reading.
    void setOverflow(bool overflow) { m_overflow = overflow; }
    [[nodiscard]] bool overflow() const { return m_overflow; }

protected:
    [[nodiscard]] QByteArray identity() const override;
    Reply execute(const QByteArray &header, const QByteArray &arguments) override;

private:
    Probe m_probe;
    Followed m_followed;
    std::optional<int> m_pinnedChannel;
    bool m_overflow = false;
};

} // namespace corvane::bench
