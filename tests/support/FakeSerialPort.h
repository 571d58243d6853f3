// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "devices/SerialPort.h"

#include <functional>
#include <vector>

namespace corvane {

/// A serial port in memory: feed it bytes, read what was written, let opening or writing fail,
/// unplug it.
class FakeSerialPort : public SerialPort
{
public:
    /// With an InputLen that nobody asks for, so that a Channel has to set it.
    FakeSerialPort() { setInputLen(-1); }

    [[nodiscard]] QString place() const override
    {
        return m_open
                   ? u"fake port "_s + (device().isEmpty() ? QString::number(commPort()) : device())
                   : QString();
    }
    [[nodiscard]] QString openDevice() const override
    {
        return m_open ? u"fake%1"_s.arg(commPort()) : QString();
    }
    [[nodiscard]] bool isPortOpen() const override { return m_open; }
    void setPortOpen(bool open) override;

    /// Bytes arrive; the receive event follows when the threshold asks for it.
    void feed(const QByteArray &bytes);
    /// The adapter is pulled out.
    void unplug(const QString &description);

    /// Everything written, one entry a write.
    std::vector<QByteArray> written;
    /// Runs after each of them; may be empty.
    std::function<void(const QByteArray &bytes)> onOutput;
    /// Not empty: opening (writing) fails with this description.
    QString failOpen;
    QString failWrite;
    /// How often the port was opened and closed.
    int opened = 0;
    int closed = 0;

protected:
    bool put(const QByteArray &bytes) override;
    QByteArray take() override { return std::exchange(m_buffer, {}); }

private:
    bool m_open = false;
    QByteArray m_buffer;
};

} // namespace corvane
