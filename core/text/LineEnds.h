// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

/// Carriage returns and line feeds, which end the lines of devices and files.
namespace corvane::lineEnds {

/// Of a char or a QChar.
inline constexpr auto isOne = [](auto c) { return c == u'\r' || c == u'\n'; };

/// The QString or QByteArray without any.
template <typename Text>
[[nodiscard]] Text removed(Text text)
{
    text.removeIf(isOne);
    return text;
}

} // namespace corvane::lineEnds
