#pragma once

#include "windows/main/Channel.h"

namespace corvane {

class TcpClient;

/// A Channel over a TCP client socket: TCP/IP-1, which sends a command as one line and shows the
/// newest arrival, or TCP/IP-2, which sends the pieces between ";" one reply apart and collects.
class TcpChannel : public Channel
{
    Q_OBJECT

public:
    /// `index` 3: TCP/IP-1, 4: TCP/IP-2.
    TcpChannel(int index, TcpClient &client, const ChannelContext &context,
               QWidget *parent = nullptr);

    /// The port entry was edited.
    void txtPort_Change();
    void tcpClient_DataArrival();
    void tcpClient_Error(int number, const QString &description);
    void chkLoop_Click() override;

    QLineEdit *txtAddress = nullptr;
    QLineEdit *txtPort = nullptr;

    [[nodiscard]] TcpClient &client() const { return m_client; }
    [[nodiscard]] bool isOpen() const override;
    [[nodiscard]] QString place() const override;

protected:
    void openTransport() override;
    void closeTransport() override;
    void send(const QByteArray &command) override;
    void poll() override;
    void forgetExchange() override;
    [[nodiscard]] std::optional<QString> statusText() const override;

private:
    [[nodiscard]] std::optional<qint32> enteredPort() const;
    [[nodiscard]] QString enteredPlace() const;
    void closeUntilClosed();
    /// The pieces that wait are not sent any more; says `note` when there are any.
    void dropRest(const QString &note);
    void sendNextPiece();

    TcpClient &m_client;
    QString m_place; ///< of the newest connect
    /// A piece is out, others follow it, and its reply has not come yet (TCP/IP-2).
    bool TcpSegmentWait = false;
    /// What is still to be sent of the command, each piece after the reply to the one before.
    QList<QByteArray> m_pieces;
    /// Something was sent by hand or has arrived since the last tick.
    bool m_answered = false;
    /// The loop's tick is sending: what it has lost before stays said.
    bool m_looping = false;
    /// Something has arrived since the last command.
    bool m_arrived = false;
};

} // namespace corvane
