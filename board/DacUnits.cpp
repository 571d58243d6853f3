#include "board/DacUnits.h"

#include "common/Numbers.h"

#include <algorithm>
#include <cmath>

namespace corvane::dacUnits {

double voltsOf(double counts)
{
    return counts * fullScaleVolts / fullScaleCounts;
}

int countsOf(double volts)
{
    const double counts = std::nearbyint(volts / fullScaleVolts * fullScaleCounts);
    return static_cast<int>(std::clamp(counts, 0.0, double{fullScaleCounts}));
}

QString toHexText(const QString &volts)
{
    const auto value = numbers::numericValue(volts);
    return value ? numbers::toHex(countsOf(*value)) : volts;
}

QString toVoltsText(const QString &hex)
{
    bool isHex = false;
    const uint counts = hex.trimmed().toUInt(&isHex, 16);
    return isHex ? numbers::fixed5(voltsOf(counts)) : hex;
}

} // namespace corvane::dacUnits
