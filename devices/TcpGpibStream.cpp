// SPDX-License-Identifier: GPL-3.0-or-later
#include "devices/TcpGpibStream.h"

#include "devices/PlatformError.h"
#include "devices/WaitGroup.h"

namespace corvane {

TcpGpibStream::TcpGpibStream(const QString &host, int port)
{
    m_client.setRemoteHost(host);
    m_client.setRemotePort(port);
    connect(&m_client, &TcpClient::dataArrived, this, [this] { append(m_client.getData()); });
    connect(&m_client, &TcpClient::errorOccurred, this,
            [this](int, const QString &description) { m_fault = description; });
}

QString TcpGpibStream::place() const
{
    return u"%1:%2"_s.arg(m_client.remoteHost(), QString::number(m_client.remotePort()));
}

bool TcpGpibStream::connectToController(WaitGroup &waits)
{
    drop();
    take();
    m_fault.clear();
    m_client.connectToPeer();
    const auto settled = [this] {
        return m_client.state() == SocketState::Connected ||
               m_client.state() == SocketState::PeerClosing || !m_fault.isEmpty();
    };
    if (waits.waitUntil(settled, Clock::forever) == WaitEnd::Cancelled) {
        drop();
        return false;
    }
    if (!m_fault.isEmpty())
        throw PlatformError(m_fault);
    return true;
}

bool TcpGpibStream::isConnected() const
{
    return m_client.state() == SocketState::Connected;
}

void TcpGpibStream::write(const QByteArray &bytes, WaitGroup &)
{
    m_client.sendData(bytes);
}

} // namespace corvane
