#pragma once

#include "devices/SerialPortList.h"
#include "windows/main/Channel.h"

#include <functional>

namespace corvane {

class SerialPort;

/// A Channel over a serial port: RS-485 with the device's address in front of every command, or
/// RS-232.
class SerialChannel : public Channel
{
    Q_OBJECT

public:
    /// `index` 0: RS-485, 1: RS-232.
    SerialChannel(int index, SerialPort &port, const ChannelContext &context,
                  QWidget *parent = nullptr);

    /// The port entry was edited: an open port is closed.
    void txtPort_Change();
    /// The serial receive event, with its CommEvent code.
    void MSComm1_OnComm(int event);

    /// What the port entry's tool tip lists, asked anew each time it is shown.
    void setPortList(std::function<QList<SerialPortEntry>()> ports) { m_ports = std::move(ports); }
    bool eventFilter(QObject *watched, QEvent *event) override;

    QLineEdit *txtPort = nullptr;
    QPushButton *cmdPortConfig = nullptr;
    /// RS-485 only.
    QComboBox *cboAddress485 = nullptr;
    QLabel *lblPrefix = nullptr;

    [[nodiscard]] bool isOpen() const override;
    [[nodiscard]] QString place() const override;
    [[nodiscard]] SerialPort &port() const { return m_port; }
    /// What a device puts in front of its replies (RS-485 only).
    [[nodiscard]] const QByteArray &echoPrefix() const { return m_echoPrefix; }

Q_SIGNALS:
    void configureRequested();

protected:
    void openTransport() override;
    void closeTransport() override;
    void send(const QByteArray &command) override;
    void poll() override;
    [[nodiscard]] std::optional<QString> statusText() const override;

private:
    [[nodiscard]] QString enteredPlace() const;
    void buildAddress();

    SerialPort &m_port;
    std::function<QList<SerialPortEntry>()> m_ports;
    QByteArray m_echoPrefix; // kept, as every arrival of both serial Channels asks for it
};

} // namespace corvane
