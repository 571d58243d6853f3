// SPDX-License-Identifier: GPL-3.0-or-later
#include "bench/BoardAnalog.h"

#include <algorithm>
#include <cmath>

namespace corvane::bench {

const std::array<ConverterErrors, BoardAnalog::channelCount> &BoardAnalog::errors()
{
    // Channel 4 is an ideal one: its calibration comes out neutral.
    static constexpr std::array<ConverterErrors, channelCount> table = {{
        {1.0100, 0.0100, 0.9950, -0.0040},
        {0.9920, -0.0060, 1.0060, 0.0050},
        {1.0045, 0.0120, 1.0020, -0.0070},
        {0.9880, 0.0080, 0.9970, 0.0030},
        {1.0000, 0.0000, 1.0000, 0.0000},
        {1.0150, -0.0110, 0.9900, 0.0090},
        {0.9960, 0.0040, 1.0085, -0.0020},
        {1.0070, -0.0090, 0.9985, 0.0060},
    }};
    return table;
}

int BoardAnalog::counts(double volts)
{
    const double exact = std::clamp(volts / fullScale * fullCounts, 0.0, double(fullCounts));
    return static_cast<int>(std::lround(exact));
}

double BoardAnalog::volts(int counts)
{
    return counts * fullScale / fullCounts;
}

double BoardAnalog::outputVolts(int index) const
{
    const ConverterErrors &error = errors().at(static_cast<size_t>(index));
    const Channel &own = channel(index);
    return volts(counts(own.dac.corrected(own.set))) * error.dacGain + error.dacOffset;
}

double BoardAnalog::adcVolts(int index) const
{
    const ConverterErrors &error = errors().at(static_cast<size_t>(index));
    const double seen = outputVolts(index) * error.adcGain + error.adcOffset;
    return channel(index).adc.corrected(volts(counts(seen)));
}

void BoardAnalog::save()
{
    m_saved = m_channels;
    for (Channel &channel : m_saved)
        channel.set = 0;
}

void BoardAnalog::powerCycle()
{
    m_channels = m_saved;
}

} // namespace corvane::bench
