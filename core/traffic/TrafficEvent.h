// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArrayView>
#include <QString>

namespace corvane {

enum class TrafficKind : quint8 {
    Sent,         ///< the bytes that one call sent
    Received,     ///< the bytes of one arrival
    Connected,    ///< the text is the place connected to
    Disconnected, ///< by whichever side
    Addressed,    ///< what follows is for the device of the bus that the text names
    Fault,        ///< the text says what went wrong
    TimedOut      ///< a read found nothing within its time-out
};

/// One thing that happened on a Channel.
struct TrafficEvent
{
    qint64 time = 0; ///< µs since the recording began, never less than that of the event before
    int channel = 0; ///< 0..4
    TrafficKind kind = TrafficKind::Sent;
    /// Of Sent and Received the bytes, of the others a text as UTF-8, which may be empty.
    QByteArrayView content;

    [[nodiscard]] bool isBytes() const
    {
        return kind == TrafficKind::Sent || kind == TrafficKind::Received;
    }
    /// A character a byte of what is bytes, else the text.
    [[nodiscard]] QString text() const
    {
        return isBytes() ? QString::fromLatin1(content) : QString::fromUtf8(content);
    }
};

} // namespace corvane
