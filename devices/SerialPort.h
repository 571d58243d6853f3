// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "devices/Literals.h"
#include "devices/Transport.h"

#include <QByteArray>
#include <QString>

namespace corvane {

/// The kind of event that says of arrivals, numbered as the serial object numbers them.
namespace CommEvent {
inline constexpr int receive = 2;
} // namespace CommEvent

/// One serial port as the Channels see it. Settings are kept as given and reach the device when the
/// port is opened.
class SerialPort : public Transport
{
    Q_OBJECT

public:
    /// The port's number: COMn on Windows, elsewhere the n-th port that the system lists, unless a
    /// number was pinned to a device. Any whole number may be set; one without a port is a fault
    /// at opening.
    [[nodiscard]] int commPort() const { return m_commPort; }
    void setCommPort(int number) { m_commPort = number; }

    /// A device by its name ("/dev/ttyUSB0", "ttyUSB0") that counts instead of the number; empty:
    /// the number does. One that is not there is a fault at opening.
    [[nodiscard]] QString device() const { return m_device; }
    void setDevice(const QString &name) { m_device = name; }

    /// Baud rate, parity letter, data bits and stop bits, as in "9600,N,8,1". Any text may be set;
    /// a wrong one is a fault at opening that names the wrong part.
    [[nodiscard]] QString settings() const { return m_settings; }
    void setSettings(const QString &settings) { m_settings = settings; }

    [[nodiscard]] virtual bool isPortOpen() const = 0;
    /// The open device and the settings it was opened with, "/dev/ttyUSB0, 9600,N,8,1"; empty while
    /// the port is closed.
    [[nodiscard]] virtual QString place() const = 0;
    /// The open device by the name it was found by, "/dev/ttyUSB0"; empty while the port is closed.
    [[nodiscard]] virtual QString openDevice() const = 0;
    /// Opens or closes the port; no effect when it already is. Throws PlatformError when it cannot
    /// be opened (missing, not permitted, in use, settings that the port cannot do); the port then
    /// stays closed.
    virtual void setPortOpen(bool open) = 0;

    /// Bytes that one input() returns at most; 0 (the default): everything that is buffered.
    [[nodiscard]] int inputLen() const { return m_inputLen; }
    void setInputLen(int bytes) { m_inputLen = bytes; }
    /// Buffered bytes from which onComm is signalled; 0 (the default): never.
    [[nodiscard]] int rThreshold() const { return m_rThreshold; }
    void setRThreshold(int bytes) { m_rThreshold = bytes; }

    /// Queues the bytes for sending; returns at once. Throws PlatformError when the port is closed
    /// or has failed.
    void output(const QByteArray &bytes) { send(bytes); }
    /// Takes buffered bytes, in order. Empty when there are none or the port is closed.
    QByteArray input() { return receive(); }

Q_SIGNALS:
    /// Something happened at the port; `event` is a CommEvent code.
    void onComm(int event);
    /// The port went away while open (unplugged, hung up) and has been closed. Queued, never inside
    /// a driver's slot, once for each loss.
    void lost(const QString &description);

private:
    int m_commPort = 1;
    QString m_device;
    QString m_settings = u"9600,N,8,1"_s;
    int m_inputLen = 0;
    int m_rThreshold = 0;
};

} // namespace corvane
