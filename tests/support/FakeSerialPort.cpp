// SPDX-License-Identifier: GPL-3.0-or-later
#include "FakeSerialPort.h"

#include "devices/PlatformError.h"

namespace corvane {

void FakeSerialPort::setPortOpen(bool open)
{
    if (open == m_open)
        return;
    if (open && !failOpen.isEmpty())
        throw PlatformError(failOpen);
    m_open = open;
    ++(open ? opened : closed);
}

bool FakeSerialPort::put(const QByteArray &bytes)
{
    if (!failWrite.isEmpty())
        throw PlatformError(failWrite);
    if (!m_open)
        throw PlatformError(u"the port is closed"_s);
    written.push_back(bytes);
    if (onOutput)
        onOutput(bytes);
    return true;
}

void FakeSerialPort::feed(const QByteArray &bytes)
{
    m_buffer += bytes;
    if (rThreshold() > 0 && m_buffer.size() >= rThreshold())
        Q_EMIT onComm(CommEvent::receive);
}

void FakeSerialPort::unplug(const QString &description)
{
    m_open = false;
    Q_EMIT lost(description);
}

} // namespace corvane
