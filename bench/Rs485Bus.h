// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "bench/BenchDevice.h"

#include <utility>
#include <vector>

namespace corvane::bench {

/// The two wires of RS-485: every line goes to every device on them, and the addressed one answers.
/// A line without an address is nobody's.
class Rs485Bus : public BenchDevice
{
public:
    /// The devices are the caller's and outlive the bus.
    explicit Rs485Bus(std::vector<BenchDevice *> devices)
        : m_devices(std::move(devices))
    {
    }

    std::optional<QByteArray> answer(const QByteArray &line) override
    {
        if (!line.startsWith('>'))
            return std::nullopt;
        for (BenchDevice *device : m_devices) {
            if (auto reply = device->answer(line))
                return reply;
        }
        return std::nullopt;
    }

private:
    std::vector<BenchDevice *> m_devices;
};

} // namespace corvane::bench
