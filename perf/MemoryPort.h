// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "devices/SerialPort.h"

#include <utility>

namespace corvane::perf {

/// A serial port without a device: what is fed to it has arrived. It measures the receive path
/// alone.
class MemoryPort : public SerialPort
{
public:
    /// One arrival, signalled as a driver does.
    void feed(const QByteArray &bytes)
    {
        m_waiting += bytes;
        Q_EMIT onComm(CommEvent::receive);
    }

    [[nodiscard]] QString openDevice() const override { return {}; }
    [[nodiscard]] QString place() const override { return {}; }
    [[nodiscard]] bool isPortOpen() const override { return m_open; }
    void setPortOpen(bool open) override { m_open = open; }

protected:
    bool put(const QByteArray &) override { return true; }
    QByteArray take() override { return std::exchange(m_waiting, {}); }

private:
    QByteArray m_waiting;
    bool m_open = false;
};

} // namespace corvane::perf
