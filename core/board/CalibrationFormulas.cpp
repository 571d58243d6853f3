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
    return QStringLiteral("The %1 cannot be calculated: it is %2 (%3) divided by %4 (%5).")
        .arg(division.name, division.dividendName, QString::number(division.dividend),
             division.divisorName, QString::number(division.divisor));
}

} // namespace

CalibrationResult calculateCalibration(const CalibrationReadings &readings)
{
    CalibrationResult result;
    CalibrationCoefficients &c = result.coefficients;

    c.dacOffset = lowDacVolts - readings.meterLow;
    const Division dac{QStringLiteral("DAC gain"), QStringLiteral("the high DAC value"),
                       QStringLiteral("DAC offset + high meter reading"), highDacVolts,
                       c.dacOffset + readings.meterHigh};
    c.dacGain = dac.divisor == 0 ? INFINITY : dac.dividend / dac.divisor;
    c.adcOffset = readings.meterLow - readings.adcLow;
    const Division adc{QStringLiteral("ADC gain"), QStringLiteral("the high meter reading"),
                       QStringLiteral("ADC offset + high ADC reading"), readings.meterHigh,
                       c.adcOffset + readings.adcHigh};
    c.adcGain = adc.divisor == 0 ? INFINITY : adc.dividend / adc.divisor;

    if (!std::isfinite(c.dacOffset) || !std::isfinite(c.dacGain))
        result.impossible = whyImpossible(dac);
    else if (!std::isfinite(c.adcOffset) || !std::isfinite(c.adcGain))
        result.impossible = whyImpossible(adc);
    return result;
}

} // namespace corvane
