#pragma once

#include "devices/PlatformError.h"
#include "devices/WholeNumber.h"

#include <QString>

/// What is wrong with a connection's entry that was given to the program instead of being typed.
namespace corvane::entryFaults {

/// Throws PlatformError when a Channel is given an entry that it does not have.
inline void refuse(const QString &channel, const QString &entry, const QString &value)
{
    if (!value.isEmpty())
        throw PlatformError(u"%1 has no %2 entry"_s.arg(channel, entry));
}

/// The number with two digits. Throws PlatformError when it is none of `first` to `last`.
inline QString number(const QString &value, int first, int last)
{
    const auto number = wholeNumber(value, first, last);
    const auto twoDigits = [](int n) { return u"%1"_s.arg(n, 2, 10, QLatin1Char('0')); };
    if (!number)
        throw PlatformError(
            u"%1 is not one of %2 to %3"_s.arg(value, twoDigits(first), twoDigits(last)));
    return twoDigits(*number);
}

} // namespace corvane::entryFaults
