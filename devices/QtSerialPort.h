// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "devices/SerialPort.h"
#include "devices/SerialPortList.h"

#include <QSerialPort>
#include <QTimer>

namespace corvane {

struct SerialSettings;

/// The serial port on a real device. It owns the device while open and closes it by itself when it
/// goes away; which device a number means is the port list's business.
///
/// onComm comes straight out of the driver's slot: a receiver takes the bytes and neither waits nor
/// shows a box.
class QtSerialPort : public SerialPort
{
public:
    /// Bytes that one arrival holds at most.
    static constexpr qint64 mostAtOnce = qint64{64} * 1024;
    /// Unsent bytes from which an output is refused: a device that stops reading must not fill the
    /// memory of a loop that runs for days.
    static constexpr qint64 mostUnsent = 16'000'000;

    /// `list` must outlive the port.
    explicit QtSerialPort(const SerialPortList &list);
    ~QtSerialPort() override;

    [[nodiscard]] bool isPortOpen() const override { return m_open; }
    void setPortOpen(bool open) override;
    [[nodiscard]] QString place() const override { return m_open ? m_place : QString(); }
    [[nodiscard]] QString openDevice() const override { return m_open ? m_device : QString(); }

protected:
    bool put(const QByteArray &bytes) override;
    QByteArray take() override;

private:
    void open();
    void close();
    void applySettings(const SerialSettings &settings);
    [[nodiscard]] QString openFault(const QString &device) const;
    void handleError(QSerialPort::SerialPortError error);
    void checkLine();
    void lose();

    const SerialPortList &m_list;
    QSerialPort m_port;
    QTimer m_lineCheck;
    QString m_label; ///< what messages call the open port
    QString m_device;
    QString m_place;
    bool m_open = false;
};

} // namespace corvane
