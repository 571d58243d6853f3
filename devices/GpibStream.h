// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "devices/GpibReply.h"

#include <QByteArray>
#include <QObject>
#include <QString>

namespace corvane {

class WaitGroup;

/// The bytes to and from a "++" controller. It owns the connection and knows nothing of what the
/// bytes mean.
class GpibStream : public QObject
{
public:
    /// Where the controller is, for messages ("127.0.0.1:1234").
    [[nodiscard]] virtual QString place() const = 0;

    /// Connects within 3 s, and waits until the controller has started. Throws PlatformError when
    /// it cannot be reached; false when the waits were closed.
    virtual bool connectToController(WaitGroup &waits) = 0;
    /// False as soon as the controller has gone; what it said before can still be taken.
    [[nodiscard]] virtual bool isConnected() const = 0;
    /// Ends the connection at once.
    virtual void drop() = 0;

    /// Sends the bytes at the pace the controller can take. Throws PlatformError when it is gone.
    virtual void write(const QByteArray &bytes, WaitGroup &waits) = 0;
    [[nodiscard]] bool hasInput() const { return !m_input.isEmpty(); }
    /// Takes everything that has arrived.
    QByteArray take() { return std::exchange(m_input, {}); }

protected:
    /// What comes while nobody reads is dropped from the size on that is too long for a reply.
    void append(const QByteArray &bytes)
    {
        if (m_input.size() <= gpibReply::longest)
            m_input += bytes;
    }

private:
    QByteArray m_input;
};

} // namespace corvane
