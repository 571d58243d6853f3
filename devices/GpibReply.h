// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArrayView>
#include <QString>

/// What is known of a GPIB reply beside its bytes.
namespace corvane::gpibReply {

/// A reply longer than this is cut: the device talks without end.
inline constexpr qsizetype longest = 16'000'000;

/// How a reply ended.
enum class End {
    Marked,   ///< by the device's own end mark (END)
    Unmarked, ///< nothing tells whether more would have come
    TimedOut, ///< no byte came for the length of the time-out
    Endless,  ///< the device was still talking when its time was over
    TooLong   ///< cut after `longest` bytes
};

/// Why the reply is only a part of one, or may be; empty when it is whole. A reply that ends with a
/// line feed is, with or without an end mark.
QString whyIncomplete(QByteArrayView reply, End end);

} // namespace corvane::gpibReply
