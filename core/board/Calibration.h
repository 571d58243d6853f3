// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/board/CalibrationFormulas.h"
#include "core/board/CalibrationSequence.h"

namespace corvane {

/// Calibrates one channel against the reference meter and reads the board's values back.
class Calibration : public CalibrationSequence
{
    Q_OBJECT

public:
    using CalibrationSequence::CalibrationSequence;

    /// Channel 0..7; the meter's GPIB address. Takes eleven seconds and the devices' own time.
    CalibrationEnd calibrate(int channel, int meterAddress);

Q_SIGNALS:
    /// The board was told to set the channel to gain 1 and offset 0.
    void begun(int channel);
    /// The board was sent the channel's new gain and offset.
    void stored(int channel);

private:
    bool measure(CalibrationReadings &readings);
    bool setDac(const QString &arguments, const QString &left);
    bool setAdc(const QString &arguments, const QString &left);
    bool setNeutralDac(float volts, const QString &left);
    bool readAdc(float &value, const QString &point);
    bool askMeter(QString &reply);
    bool readMeter(float &value, const QString &point);
    void check(const CalibrationCoefficients &coefficients);
    bool store(const CalibrationCoefficients &coefficients);
    bool readBack(const CalibrationCoefficients &sent);
    bool readMeterBack();
    [[nodiscard]] QString leftText() const;

    int m_channel = 0;
    int m_meterAddress = 0;
    /// What the channel was last set to; empty: nothing was sent.
    QString m_dacLeft;
    QString m_adcLeft;
};

} // namespace corvane
