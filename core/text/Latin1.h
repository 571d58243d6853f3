// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "devices/Literals.h"

#include <QString>

#include <algorithm>

/// Wires and files carry 8-bit text: a character is one byte, and has one of the codes 0 to 255.
namespace corvane::latin1 {

[[nodiscard]] inline bool holds(QChar c)
{
    return c.unicode() <= 0xFF;
}

/// Where the first character stands that has no byte; the length of the text when all have one.
[[nodiscard]] inline qsizetype misfitAt(QStringView text)
{
    return std::find_if_not(text.begin(), text.end(), holds) - text.begin();
}

[[nodiscard]] inline bool fits(QStringView text)
{
    return misfitAt(text) == text.size();
}

/// The first character that has no byte, a surrogate pair as a whole; empty when all have one.
[[nodiscard]] inline QString misfit(QStringView text)
{
    const QStringView rest = text.sliced(misfitAt(text));
    return rest
        .first(std::min<qsizetype>(rest.size(),
                                   !rest.isEmpty() && rest.front().isHighSurrogate() ? 2 : 1))
        .toString();
}

} // namespace corvane::latin1
