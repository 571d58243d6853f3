// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>

namespace corvane {

inline constexpr std::size_t largePageSize = std::size_t{2} << 20;

struct LargePageDeleter
{
    void operator()(char *page) const;
};

/// As much memory as the system's large pages hold, in one of them where the system has some free:
/// filling memory for the first time costs several times what copying into it does.
using LargePage = std::unique_ptr<char[], LargePageDeleter>;
LargePage makeLargePage();

} // namespace corvane
