// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "devices/GpibStream.h"
#include "devices/QtSerialPort.h"
#include "devices/SerialPortList.h"

namespace corvane {

/// A controller on a serial device, usually behind USB. Some restart when the port is opened, and
/// many hold no more than 64 bytes that they have not yet put on the bus.
class SerialGpibStream : public GpibStream
{
public:
    explicit SerialGpibStream(const QString &device);

    [[nodiscard]] QString place() const override { return m_device; }
    bool connectToController(WaitGroup &waits) override;
    [[nodiscard]] bool isConnected() const override { return m_port.isPortOpen(); }
    void drop() override { m_port.setPortOpen(false); }
    void write(const QByteArray &bytes, WaitGroup &waits) override;

private:
    QString m_device;
    SerialPortList m_list;
    QtSerialPort m_port{m_list};
};

} // namespace corvane
