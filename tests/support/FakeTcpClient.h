// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "devices/TcpClient.h"

#include <functional>
#include <vector>

namespace corvane {

/// A TCP client in memory: set its state, feed it bytes, read what was sent, let it fail.
class FakeTcpClient : public TcpClient
{
public:
    [[nodiscard]] SocketState state() const override { return m_state; }
    [[nodiscard]] bool wasReset() const override { return reset; }
    void connectToPeer() override;
    void close() override;

    void setState(SocketState state);
    /// Bytes arrive in one piece.
    void feed(const QByteArray &bytes);
    /// The connection fails: state Error, then the error event.
    void fail(int number, const QString &description);

    /// Everything sent, one entry a call.
    std::vector<QByteArray> sent;
    /// Runs after each of them; may be empty.
    std::function<void(const QByteArray &bytes)> onSend;
    /// The state that connecting leads to at once.
    SocketState stateAfterConnect = SocketState::Connected;
    /// Not empty: connecting (sending) fails with this description.
    QString failConnect;
    QString failSend;
    /// The peer breaks the connection off.
    bool reset = false;
    int connects = 0;
    int closes = 0;

protected:
    bool put(const QByteArray &bytes) override;
    QByteArray take() override { return std::exchange(m_buffer, {}); }

private:
    SocketState m_state = SocketState::Closed;
    QByteArray m_buffer;
};

} // namespace corvane
