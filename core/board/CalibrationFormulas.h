// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace corvane {

/// What one calibration measured, in volts: the meter's and the board's ADC reading at the low and
/// at the high point.
struct CalibrationReadings
{
    float meterLow = 0;
    float meterHigh = 0;
    float adcLow = 0;
    float adcHigh = 0;
};

/// What the board is given; offsets in volts.
struct CalibrationCoefficients
{
    float dacGain = 1;
    float dacOffset = 0;
    float adcGain = 1;
    float adcOffset = 0;

    bool operator==(const CalibrationCoefficients &) const = default;
};

/// The coefficients, or which value could not be calculated and why.
struct CalibrationResult
{
    CalibrationCoefficients coefficients;
    QString impossible;

    [[nodiscard]] bool isPossible() const { return impossible.isEmpty(); }
};

/// The calibration points, in volts.
inline constexpr float lowDacVolts = 0.5F;
inline constexpr float highDacVolts = 2.0F;

/// Works the coefficients out in single precision. The formulas are this board's own, not a
/// two-point line fit; coefficients far from 1 and 0 are kept as they come out.
CalibrationResult calculateCalibration(const CalibrationReadings &readings);

} // namespace corvane
