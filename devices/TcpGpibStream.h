// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "devices/GpibStream.h"
#include "devices/QtTcpClient.h"

namespace corvane {

/// A controller on the network.
class TcpGpibStream : public GpibStream
{
public:
    TcpGpibStream(const QString &host, int port);

    [[nodiscard]] QString place() const override;
    bool connectToController(WaitGroup &waits) override;
    [[nodiscard]] bool isConnected() const override;
    void drop() override { m_client.close(); }
    void write(const QByteArray &bytes, WaitGroup &waits) override;

private:
    static constexpr int connectLimitMs = 3000;

    QtTcpClient m_client{connectLimitMs};
    QString m_fault; ///< why the last attempt failed
};

} // namespace corvane
