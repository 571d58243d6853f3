// SPDX-License-Identifier: GPL-3.0-or-later
#include "devices/SerialGpibStream.h"

#include "devices/WaitGroup.h"

namespace corvane {

namespace {

constexpr int startMs = 2000;
constexpr int pieceBytes = 48;
constexpr int pieceMs = 10;

} // namespace

SerialGpibStream::SerialGpibStream(const QString &device)
    : m_device(device)
{
    m_list.pin(0, device);
    m_port.setCommPort(0);
    m_port.setSettings(u"115200,N,8,1"_s);
    m_port.setRThreshold(1);
    connect(&m_port, &SerialPort::onComm, this, [this] { append(m_port.input()); });
}

bool SerialGpibStream::connectToController(WaitGroup &waits)
{
    drop();
    m_port.setPortOpen(true);
    if (waits.wait(startMs) == WaitEnd::Cancelled) {
        drop();
        return false;
    }
    take();
    return true;
}

void SerialGpibStream::write(const QByteArray &bytes, WaitGroup &waits)
{
    for (qsizetype at = 0; at < bytes.size(); at += pieceBytes) {
        if (at > 0 && waits.wait(pieceMs) == WaitEnd::Cancelled)
            return;
        m_port.output(bytes.mid(at, pieceBytes));
    }
}

} // namespace corvane
