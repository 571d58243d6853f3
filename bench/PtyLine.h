// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>

namespace corvane::bench {

/// How a serial line is set, as far as a pseudo terminal keeps it.
struct PtyLine
{
    unsigned rate = 0;
    int stopBits = 1;
};

/// Any rate, the odd ones too. Nothing when the system does not tell.
std::optional<PtyLine> lineOf(int descriptor);

} // namespace corvane::bench
