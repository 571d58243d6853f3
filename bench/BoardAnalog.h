// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>

namespace corvane::bench {

/// A correction of one converter: corrected = (uncorrected + offset) * gain.
///
/// For an ADC the uncorrected value is what the converter measured and the corrected one what the
/// board reports. For a DAC the uncorrected value is the set one and the corrected one what the
/// converter is given. So an offset of (0.5 - meter at 0.5 V) and then a gain of
/// 2.0 / (offset + meter at 2.0 V) take the first-order error of gain and offset out at 2 V.
struct Calibration
{
    double gain = 1;
    double offset = 0;

    [[nodiscard]] double corrected(double value) const { return (value + offset) * gain; }
};

/// What the parts of one channel really do: true = ideal * gain + offset.
struct ConverterErrors
{
    double dacGain;
    double dacOffset;
    double adcGain;
    double adcOffset;
};

/// The board's eight DACs and the ADCs that measure their outputs: 16-bit converters with true gain
/// and offset errors, and the calibrations that correct them, which a power cycle loses unless they
/// were saved. Channels are 0 to 7; volts are the caller's to check.
class BoardAnalog
{
public:
    static constexpr int channelCount = 8;
    static constexpr double fullScale = 2.5;
    static constexpr int fullCounts = 65535;

    struct Channel
    {
        double set = 0;
        Calibration dac;
        Calibration adc;
    };

    static const std::array<ConverterErrors, channelCount> &errors();

    [[nodiscard]] Channel &channel(int index) { return m_channels.at(static_cast<size_t>(index)); }
    [[nodiscard]] const Channel &channel(int index) const
    {
        return m_channels.at(static_cast<size_t>(index));
    }

    /// The volts that really stand at the DAC's output.
    [[nodiscard]] double outputVolts(int index) const;
    /// The volts that the board reports for its ADC.
    [[nodiscard]] double adcVolts(int index) const;

    /// Keeps all calibrations over a power cycle.
    void save();
    /// Outputs at 0 V, the saved calibrations in force.
    void powerCycle();

    /// The nearest step of a converter, 0 to 65535.
    static int counts(double volts);
    static double volts(int counts);

private:
    std::array<Channel, channelCount> m_channels;
    std::array<Channel, channelCount> m_saved;
};

} // namespace corvane::bench
