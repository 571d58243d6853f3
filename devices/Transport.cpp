// SPDX-License-Identifier: GPL-3.0-or-later
#include "devices/Transport.h"

#include "devices/PlatformError.h"

namespace corvane {

void Transport::send(const QByteArray &bytes)
{
    bool isSent = false;
    try {
        isSent = put(bytes);
    } catch (const PlatformError &error) {
        Q_EMIT failed(error.description());
        throw;
    }
    if (isSent)
        Q_EMIT sent(bytes);
}

QByteArray Transport::receive()
{
    try {
        QByteArray bytes = take();
        if (!bytes.isEmpty())
            Q_EMIT received(bytes);
        return bytes;
    } catch (const PlatformError &error) {
        Q_EMIT failed(error.description());
        throw;
    }
}

} // namespace corvane
