// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>

namespace corvane::bench {

/// `size` bytes of the text that floods are made of, from position `from`: the 94 printable
/// characters from "!" on, over and over, so that a lost byte shows.
inline QByteArray floodPattern(qint64 from, qint64 size)
{
    QByteArray bytes(size, Qt::Uninitialized);
    for (qint64 i = 0; i < size; ++i)
        bytes[i] = static_cast<char>('!' + (from + i) % 94);
    return bytes;
}

} // namespace corvane::bench
