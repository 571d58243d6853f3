// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <cstddef>
#include <cstdint>
#include <cstdlib>

namespace corvane::fuzz {

/// The fuzzer's bytes as the text that a wire or a file would give: one character a byte.
inline QString textOf(const uint8_t *data, size_t size)
{
    return QString::fromLatin1(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
}

/// Ends the run, so that the fuzzer keeps the input, when what must hold for every input does not.
inline void require(bool holds)
{
    if (!holds)
        std::abort();
}

} // namespace corvane::fuzz
