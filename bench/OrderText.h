// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QLatin1String>

namespace corvane::bench {

/// What people are told of one order or fault; the console's help and a window show the same.
struct OrderText
{
    QLatin1String word;
    /// What follows the word, a blank between each: "on|off" is one of these, "PORT" a value,
    /// "once" that word; what stands in brackets may be left out. Empty: nothing follows.
    QLatin1String arguments;
    QLatin1String about;
};

} // namespace corvane::bench
