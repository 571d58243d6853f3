// SPDX-License-Identifier: GPL-3.0-or-later
#include "FakeTcpClient.h"

#include "devices/PlatformError.h"

namespace corvane {

void FakeTcpClient::connectToPeer()
{
    ++connects;
    if (!failConnect.isEmpty())
        throw PlatformError(failConnect);
    setState(stateAfterConnect);
}

void FakeTcpClient::close()
{
    ++closes;
    m_buffer.clear();
    setState(SocketState::Closed);
}

bool FakeTcpClient::put(const QByteArray &bytes)
{
    if (!failSend.isEmpty())
        throw PlatformError(failSend);
    if (m_state != SocketState::Connected)
        throw PlatformError(u"the socket is not connected"_s);
    sent.push_back(bytes);
    if (onSend)
        onSend(bytes);
    return true;
}

void FakeTcpClient::setState(SocketState state)
{
    m_state = state;
    Q_EMIT stateChanged();
}

void FakeTcpClient::feed(const QByteArray &bytes)
{
    m_buffer += bytes;
    Q_EMIT dataArrived();
}

void FakeTcpClient::fail(int number, const QString &description)
{
    setState(SocketState::Error);
    Q_EMIT errorOccurred(number, description);
}

} // namespace corvane
