// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/board/DacUnits.h"

#include "core/text/Numbers.h"

#include <algorithm>

namespace corvane::dacUnits {

double voltsOf(double counts)
{
    return counts * fullScaleVolts / fullScaleCounts;
}

int countsOf(double volts)
{
    return std::clamp(numbers::nearest(volts / fullScaleVolts * fullScaleCounts), 0,
                      fullScaleCounts);
}

std::optional<int> countsFromHex(const QString &text)
{
    const auto value = numbers::fromHex(text);
    if (!value || *value > fullScaleCounts)
        return std::nullopt;
    return static_cast<int>(*value);
}

QString toHexText(const QString &volts)
{
    const auto value = numbers::numericValue(volts);
    return value ? numbers::toHex(countsOf(*value)) : volts;
}

QString toVoltsText(const QString &hex)
{
    const auto counts = countsFromHex(hex);
    return counts ? numbers::fixed5(voltsOf(*counts)) : hex;
}

} // namespace corvane::dacUnits
