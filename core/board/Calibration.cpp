// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/board/Calibration.h"

#include "core/board/BoardLink.h"
#include "core/board/BoardTexts.h"
#include "core/text/Numbers.h"
#include "core/text/ShownText.h"
#include "devices/PlatformError.h"

#include <cmath>

namespace corvane {

using numbers::fixed5;
using numbers::numberText;

namespace {

const QString lowPoint = u"0.5 V"_s;
const QString highPoint = u"2.0 V"_s;
const QString neutral = u"gain 1.0, offset 0.0"_s;

/// In their order, with the sum of their waits.
std::vector<CalibrationStep> stepsOf(int channel)
{
    std::vector<CalibrationStep> steps;
    for (const auto &[what, ms] :
         {std::pair("settling at 0.5 V", 1750), std::pair("ADC at 0.5 V", 625),
          std::pair("meter at 0.5 V", 2000), std::pair("settling at 2.0 V", 625),
          std::pair("ADC at 2.0 V", 625), std::pair("meter at 2.0 V", 2000),
          std::pair("setting gain and offset", 250), std::pair("reading back", 850),
          std::pair("meter at 2.0 V, calibrated", 2500)})
        steps.push_back({channel, QString::fromLatin1(what), ms});
    return steps;
}

} // namespace

CalibrationEnd Calibration::calibrate(int channel, int meterAddress)
{
    start(stepsOf(channel));
    m_channel = channel;
    m_meterAddress = meterAddress;
    m_dacLeft.clear();
    m_adcLeft.clear();
    Q_EMIT cellSelected(1, CalibrationTable::columnOf(channel));
    clearChannel(channel);

    CalibrationReadings readings;
    if (!measure(readings))
        return end(leftText());
    computeFromReadings();
    const CalibrationResult result = calculateCalibration(readings);
    if (!result.isPossible()) {
        fail(result.impossible + u"\r\n\r\nNo calibration was sent to the board."_s);
    } else {
        check(result.coefficients);
        if (store(result.coefficients) && readBack(result.coefficients))
            readMeterBack();
    }
    return end(leftText());
}

QString Calibration::leftText() const
{
    QStringList left;
    for (const QString &each : {m_dacLeft, m_adcLeft}) {
        if (!each.isEmpty())
            left << each;
    }
    return left.isEmpty() ? boardTexts::leftAsBefore
                          : boardTexts::leftWith.arg(left.join(u" and "_s));
}

bool Calibration::measure(CalibrationReadings &readings)
{
    nextStep();
    if (!setNeutralDac(lowDacVolts, lowPoint) || !setAdc(u",1.0,0.0"_s, neutral) || !pause(1500) ||
        !readAdc(readings.adcLow, lowPoint) || !readMeter(readings.meterLow, lowPoint))
        return false;
    nextStep();
    return setNeutralDac(highDacVolts, highPoint) && pause(500) &&
           readAdc(readings.adcHigh, highPoint) && readMeter(readings.meterHigh, highPoint);
}

bool Calibration::setNeutralDac(float volts, const QString &left)
{
    return setDac(u',' + numberText(double{volts}) + u",1.0,0.0"_s, left + u", "_s + neutral);
}

bool Calibration::setDac(const QString &arguments, const QString &left)
{
    bool wentOut = false;
    const bool goesOn = send(u"DAC "_s + numberText(m_channel) + arguments, &wentOut);
    if (wentOut) {
        m_dacLeft = u"DAC at "_s + left;
        Q_EMIT begun(m_channel);
    }
    return goesOn;
}

bool Calibration::setAdc(const QString &arguments, const QString &left)
{
    bool wentOut = false;
    const bool goesOn = send(u"ADC "_s + numberText(m_channel) + arguments, &wentOut);
    if (wentOut)
        m_adcLeft = u"ADC "_s + left;
    return goesOn;
}

/// The number counts only up to a comma: a reply without one reads as 0, as no reply does.
bool Calibration::readAdc(float &value, const QString &point)
{
    nextStep();
    QString reply;
    if (!query(u"ADC? "_s + numberText(m_channel), 500, reply))
        return false;
    const QStringView number = QStringView(reply).first(reply.indexOf(u',') + 1);
    const QString step = u"ADC at "_s + point;
    if (const QString remark = CalibrationFindings::remarkOnReply(reply); !remark.isEmpty())
        find(m_channel, remark.arg(step));
    else if (!numbers::startsWithNumber(number))
        find(m_channel, boardTexts::noNumberFrom.arg(step));
    value = numbers::single(numbers::leadingNumber(number));
    return std::isfinite(value) ||
           fail(u"The ADC reading at %1 is too large: \"%2\"."_s.arg(point, shownText(reply)));
}

bool Calibration::askMeter(QString &reply)
{
    if (isEnded())
        return false;
    nextStep();
    try {
        reply = m_link.readMeter(m_meterAddress, [this] { return isEnded(); });
    } catch (const PlatformError &error) {
        return fail(u"The meter at GPIB address %1 could not be read: %2"_s.arg(m_meterAddress)
                        .arg(error.description()));
    }
    noteAnswer(reply);
    return true;
}

bool Calibration::readMeter(float &value, const QString &point)
{
    QString reply;
    if (!askMeter(reply) || isEnded())
        return false;
    if (!numbers::startsWithNumber(reply))
        find(m_channel, boardTexts::noNumberFrom.arg(u"meter at "_s + point));
    value = numbers::single(numbers::leadingNumber(reply));
    return std::isfinite(value) || fail(u"The meter reading at %1 is too large."_s.arg(point));
}

/// Doubtful coefficients are sent as they are; the end says so even when they are not read back.
void Calibration::check(const CalibrationCoefficients &c)
{
    for (const auto &[row, value] : {std::pair(CalibrationTable::DacGain, c.dacGain),
                                     std::pair(CalibrationTable::DacOffset, c.dacOffset),
                                     std::pair(CalibrationTable::AdcGain, c.adcGain),
                                     std::pair(CalibrationTable::AdcOffset, c.adcOffset)}) {
        const QString remark = CalibrationFindings::remarkOn(row, double{value});
        if (!remark.isEmpty())
            find(m_channel, title(row) + u' ' + remark);
    }
}

bool Calibration::store(const CalibrationCoefficients &c)
{
    nextStep();
    const QString dac = u',' + fixed5(double{c.dacGain}) + u',' + fixed5(double{c.dacOffset});
    const QString adc = u',' + fixed5(double{c.adcGain}) + u',' + fixed5(double{c.adcOffset});
    const QString left = u"gain %1, offset %2"_s;
    if (!setDac(u',' + fixed5(double{highDacVolts}) + dac,
                highPoint + u", "_s +
                    left.arg(fixed5(double{c.dacGain}), fixed5(double{c.dacOffset}))))
        return false;
    const QString adcBefore = m_adcLeft;
    const bool goesOn =
        setAdc(adc, left.arg(fixed5(double{c.adcGain}), fixed5(double{c.adcOffset})));
    if (m_adcLeft != adcBefore)
        Q_EMIT stored(m_channel);
    return goesOn;
}

bool Calibration::readBack(const CalibrationCoefficients &sent)
{
    nextStep();
    QString reply;
    if (!pause(100) || !query(u"DAC? "_s + numberText(m_channel), 0, reply))
        return false;
    fillRows(CalibrationTable::DacValue, m_channel, reply,
             {double{sent.dacGain}, double{sent.dacOffset}});
    if (!query(u"ADC?"_s + numberText(m_channel), 500, reply))
        return false;
    fillRows(CalibrationTable::AdcValue, m_channel, reply,
             {double{sent.adcGain}, double{sent.adcOffset}});
    return true;
}

bool Calibration::readMeterBack()
{
    QString reply;
    if (!pause(500) || !askMeter(reply) || isEnded())
        return false;
    const float value = numbers::single(numbers::leadingNumber(reply));
    if (!std::isfinite(value))
        return fail(u"The meter reading at %1 is too large."_s.arg(highPoint));
    Q_EMIT cellSelected(CalibrationTable::Meter, CalibrationTable::columnOf(m_channel));
    fillMeterRow(m_channel, reply, double{value});
    return true;
}

} // namespace corvane
