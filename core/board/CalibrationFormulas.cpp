// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/board/CalibrationFormulas.h"

#include "core/text/Numbers.h"

#include <cmath>

namespace corvane {

namespace {

struct Division
{
    QString name;
    QString dividendName;
    QString divisorName;
    float dividend;
    float divisor;
};

QString whyImpossible(const Division &division)
{
    return u"The %1 cannot be calculated: it is %2 (%3) divided by %4 (%5)."_s.arg(
        division.name, division.dividendName, QString::number(division.dividend),
        division.divisorName, QString::number(division.divisor));
}

} // namespace

CalibrationResult calculateCalibration(const CalibrationReadings &readings)
{
    CalibrationResult result;
    CalibrationCoefficients &c = result.coefficients;

    c.dacOffset = lowDacVolts - readings.meterLow;
    const Division dac{u"DAC gain"_s, u"the high DAC value"_s, u"DAC offset + high meter reading"_s,
                       highDacVolts, c.dacOffset + readings.meterHigh};
    c.dacGain = dac.divisor == 0 ? INFINITY : dac.dividend / dac.divisor;
    c.adcOffset = readings.meterLow - readings.adcLow;
    const Division adc{u"ADC gain"_s, u"the high meter reading"_s,
                       u"ADC offset + high ADC reading"_s, readings.meterHigh,
                       c.adcOffset + readings.adcHigh};
    c.adcGain = adc.divisor == 0 ? INFINITY : adc.dividend / adc.divisor;

    if (!std::isfinite(c.dacOffset) || !std::isfinite(c.dacGain))
        result.impossible = whyImpossible(dac);
    else if (!std::isfinite(c.adcOffset) || !std::isfinite(c.adcGain))
        result.impossible = whyImpossible(adc);
    return result;
}

} // namespace corvane
