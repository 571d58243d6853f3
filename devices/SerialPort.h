#pragma once

#include <QByteArray>
#include <QObject>
#include <QString>

namespace corvane {

/// The kinds of receive event, numbered as the serial object numbers them.
namespace CommEvent {
inline constexpr int transmit = 1;
inline constexpr int receive = 2;
} // namespace CommEvent

/// One serial port as the Channels see it. Settings are kept as given and reach the device when the
/// port is opened.
class SerialPort : public QObject
{
    Q_OBJECT

public:
    /// The port's number: COMn on Windows, elsewhere the n-th port that the system lists, unless a
    /// number was pinned to a device. Any whole number may be set; one without a port is a fault
    /// at opening.
    [[nodiscard]] virtual int commPort() const = 0;
    virtual void setCommPort(int number) = 0;

    /// A device by its name ("/dev/ttyUSB0", "ttyUSB0") that counts instead of the number; empty:
    /// the number does. One that is not there is a fault at opening.
    [[nodiscard]] virtual QString device() const = 0;
    virtual void setDevice(const QString &name) = 0;

    /// Baud rate, parity letter, data bits and stop bits, as in "9600,N,8,1". Any text may be set;
    /// a wrong one is a fault at opening that names the wrong part.
    [[nodiscard]] virtual QString settings() const = 0;
    virtual void setSettings(const QString &settings) = 0;

    [[nodiscard]] virtual bool isPortOpen() const = 0;
    /// The open device and the settings it was opened with, "/dev/ttyUSB0, 9600,N,8,1"; empty while
    /// the port is closed.
    [[nodiscard]] virtual QString place() const = 0;
    /// Opens or closes the port; no effect when it already is. Throws PlatformError when it cannot
    /// be opened (missing, not permitted, in use, settings that the port cannot do); the port then
    /// stays closed.
    virtual void setPortOpen(bool open) = 0;

    /// Bytes that one input() returns at most; 0 (the default): everything that is buffered.
    [[nodiscard]] virtual int inputLen() const = 0;
    virtual void setInputLen(int bytes) = 0;
    /// Buffered bytes from which commEvent is signalled; 0 (the default): never.
    [[nodiscard]] virtual int rThreshold() const = 0;
    virtual void setRThreshold(int bytes) = 0;

    /// Queues the bytes for sending; returns at once. Throws PlatformError when the port is closed
    /// or has failed.
    virtual void output(const QByteArray &bytes) = 0;
    /// Takes buffered bytes, in order. Empty when there are none or the port is closed.
    virtual QByteArray input() = 0;

Q_SIGNALS:
    /// Something happened at the port; `event` is a CommEvent code.
    void onComm(int event);
    /// The port went away while open (unplugged, hung up) and has been closed. Queued, never inside
    /// a driver's slot, once for each loss.
    void lost(const QString &description);
};

} // namespace corvane
