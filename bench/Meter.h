#pragma once

#include "bench/ScpiDevice.h"

#include <functional>
#include <utility>

namespace corvane::bench {

/// The reference meter: "data?" gives the true voltage of the board's output that its sensor is
/// clipped to, as "+5.00123E-01".
class Meter : public ScpiDevice
{
public:
    /// The volts at the output of a channel, 0 to 7.
    using Probe = std::function<double(int channel)>;

    explicit Meter(Probe probe)
        : ScpiDevice(Acknowledge::No)
        , m_probe(std::move(probe))
    {
    }

    void setSensorChannel(int channel) { m_sensorChannel = channel; }
    [[nodiscard]] int sensorChannel() const { return m_sensorChannel; }
    /// Answers "OVERFLOW" in the place of a reading.
    void setOverflow(bool overflow) { m_overflow = overflow; }
    [[nodiscard]] bool overflow() const { return m_overflow; }

protected:
    [[nodiscard]] QByteArray identity() const override;
    Reply execute(const QByteArray &header, const QByteArray &arguments) override;

private:
    Probe m_probe;
    int m_sensorChannel = 0;
    bool m_overflow = false;
};

} // namespace corvane::bench
