#include "board/Calibration.h"

#include "board/BoardLink.h"
#include "common/Numbers.h"
#include "platform/PlatformError.h"

#include <cmath>

namespace corvane {

using numbers::fixed5;
using numbers::numberText;

namespace {

const QString lowPoint = QStringLiteral("0.5 volts");
const QString highPoint = QStringLiteral("2.0 volts");
const QString afterwards = QStringLiteral("2.0 volts, calibrated");

} // namespace

CalibrationEnd Calibration::calibrate(int channel, int meterAddress)
{
    constexpr int steps = 9;
    start(steps);
    m_channel = channel;
    m_meterAddress = meterAddress;
    Q_EMIT cellSelected(1, CalibrationTable::columnOf(channel));
    clearChannel(channel);

    CalibrationReadings readings;
    if (!measure(readings))
        return end();
    const CalibrationResult result = calculateCalibration(readings);
    if (!result.isPossible())
        fail(result.impossible + QStringLiteral("\r\n\r\nNo calibration was sent to the board."));
    else if (store(result.coefficients) && readBack())
        readMeterBack();
    return end();
}

bool Calibration::measure(CalibrationReadings &readings)
{
    const QString resetAdc =
        QStringLiteral("ADC ") + numberText(m_channel) + QStringLiteral(",1.0,0.0");
    showStep(m_channel, QStringLiteral("settling at ") + lowPoint);
    if (!setNeutralDac(lowDacVolts) || !send(resetAdc) || !pause(1500) ||
        !readAdc(readings.adcLow, lowPoint) || !readMeter(readings.meterLow, lowPoint))
        return false;
    showStep(m_channel, QStringLiteral("settling at ") + highPoint);
    return setNeutralDac(highDacVolts) && pause(500) && readAdc(readings.adcHigh, highPoint) &&
           readMeter(readings.meterHigh, highPoint);
}

bool Calibration::setNeutralDac(float volts)
{
    return send(QStringLiteral("DAC ") + numberText(m_channel) + u',' + numberText(double{volts}) +
                QStringLiteral(",1.0,0.0"));
}

/// The number counts only up to a comma: a reply without one reads as 0, as no reply does.
bool Calibration::readAdc(float &value, const QString &point)
{
    showStep(m_channel, QStringLiteral("reading the ADC at ") + point);
    QString reply;
    if (!query(QStringLiteral("ADC? ") + numberText(m_channel), 500, reply))
        return false;
    value =
        numbers::single(numbers::leadingNumber(QStringView(reply).first(reply.indexOf(u',') + 1)));
    return std::isfinite(value) ||
           fail(QStringLiteral("The ADC reading at %1 is too large: \"%2\".")
                    .arg(point, BoardLink::oneLine(reply)));
}

bool Calibration::readMeter(float &value, const QString &point)
{
    if (isEnded())
        return false;
    showStep(m_channel, QStringLiteral("reading the meter at ") + point);
    try {
        value = m_link.readMeter(m_meterAddress);
    } catch (const PlatformError &error) {
        return fail(QStringLiteral("The meter at GPIB address %1 could not be read: %2")
                        .arg(m_meterAddress)
                        .arg(error.description()));
    }
    if (!std::isfinite(value))
        return fail(QStringLiteral("The meter reading at %1 is too large.").arg(point));
    return !isEnded();
}

bool Calibration::store(const CalibrationCoefficients &c)
{
    showStep(m_channel, QStringLiteral("setting gain and offset"));
    const QString channel = numberText(m_channel);
    return send(QStringLiteral("DAC ") + channel + u',' + fixed5(double{highDacVolts}) + u',' +
                fixed5(double{c.dacGain}) + u',' + fixed5(double{c.dacOffset})) &&
           send(QStringLiteral("ADC ") + channel + u',' + fixed5(double{c.adcGain}) + u',' +
                fixed5(double{c.adcOffset}));
}

bool Calibration::readBack()
{
    showStep(m_channel, QStringLiteral("reading back"));
    QString reply;
    if (!pause(100) || !query(QStringLiteral("DAC? ") + numberText(m_channel), 0, reply))
        return false;
    fillRows(CalibrationTable::DacValue, m_channel, reply);
    if (!query(QStringLiteral("ADC?") + numberText(m_channel), 500, reply))
        return false;
    fillRows(CalibrationTable::AdcValue, m_channel, reply);
    return true;
}

bool Calibration::readMeterBack()
{
    float reading = 0;
    if (!pause(500) || !readMeter(reading, afterwards))
        return false;
    Q_EMIT cellSelected(CalibrationTable::Meter, CalibrationTable::columnOf(m_channel));
    setCell(CalibrationTable::Meter, m_channel, fixed5(double{reading}));
    return true;
}

} // namespace corvane
