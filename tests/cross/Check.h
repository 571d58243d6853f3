// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdio>
#include <source_location>

/// The few checks that the tests of the Qt-free files need; they run where no test library is.
namespace check {

inline int failures = 0;

inline void that(bool holds, const char *what,
                 const std::source_location &at = std::source_location::current())
{
    if (holds)
        return;
    ++failures;
    std::printf("%s:%u: failed: %s\n", at.file_name(), static_cast<unsigned>(at.line()), what);
}

/// The program's exit code.
inline int result()
{
    return failures == 0 ? 0 : 1;
}

} // namespace check
