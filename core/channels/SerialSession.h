// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/channels/ChannelSession.h"
#include "devices/SerialPortList.h"

#include <functional>

namespace corvane {

class SerialPort;

/// A Channel over a serial port: RS-485 with the device's address in front of every command, or
/// RS-232.
class SerialSession : public ChannelSession
{
    Q_OBJECT

public:
    using PortList = std::function<QList<SerialPortEntry>()>;

    static constexpr int lastAddress = 30;
    /// An entry as addressText. Throws PlatformError when it is no address.
    static QString knownAddress(const QString &entry);
    /// An address 1..30 as it is sent: "05".
    static QString addressText(int number) { return u"%1"_s.arg(number, 2, 10, QLatin1Char('0')); }

    /// `index` 0: RS-485, 1: RS-232. `ports` lists the serial ports there are now. The echo of
    /// `addressed`, another one or none, is taken out of this Channel's replies as well.
    SerialSession(int index, SerialPort &port, PortList ports, const ChannelContext &context,
                  const SerialSession *addressed = nullptr);

    [[nodiscard]] SerialPort &port() const { return m_port; }
    /// The port entry: a number or a device.
    [[nodiscard]] const QString &portEntry() const { return m_portEntry; }
    /// An open port is closed.
    void setPortEntry(const QString &entry);
    /// The device's address "01".."30" on RS-485; empty on RS-232.
    [[nodiscard]] const QString &address() const { return m_address; }
    void setAddress(const QString &address);
    /// What stands in front of every command: ">05" for the address 05.
    [[nodiscard]] QString prefix() const { return u">"_s + m_address; }
    /// What a device puts in front of its replies: "<05:".
    [[nodiscard]] const QByteArray &echoPrefix() const { return m_echoPrefix; }
    [[nodiscard]] QList<SerialPortEntry> ports() const { return m_ports(); }

    /// The serial receive event, with its CommEvent code.
    void MSComm1_OnComm(int event);

    [[nodiscard]] bool isOpen() const override;
    [[nodiscard]] QString place() const override;
    void fillIn(const ChannelEntries &entries) override;

protected:
    void openTransport() override;
    void reopenTransport() override;
    void closeTransport() override;
    void transmit(const QByteArray &command) override;
    void poll() override;
    [[nodiscard]] QString statusText() const override;

private:
    void openPort();
    [[nodiscard]] QString enteredPlace() const;

    SerialPort &m_port;
    const PortList m_ports;
    const SerialSession &m_addressed; // whose echo is taken out
    QString m_portEntry = u"1"_s;
    QString m_opened; ///< the device that was open last
    QString m_address;
    QByteArray m_echoPrefix; // kept, as every arrival of both serial Channels asks for it
};

} // namespace corvane
