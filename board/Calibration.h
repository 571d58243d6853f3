#pragma once

#include "board/CalibrationFormulas.h"
#include "board/CalibrationSequence.h"

namespace corvane {

/// Calibrates one channel against the reference meter and reads the board's values back.
class Calibration : public CalibrationSequence
{
    Q_OBJECT

public:
    using CalibrationSequence::CalibrationSequence;

    /// Channel 0..7; the meter's GPIB address. Takes eleven seconds and the devices' own time.
    CalibrationEnd calibrate(int channel, int meterAddress);

private:
    bool measure(CalibrationReadings &readings);
    bool setNeutralDac(float volts);
    bool readAdc(float &value, const QString &point);
    bool readMeter(float &value, const QString &point);
    bool store(const CalibrationCoefficients &coefficients);
    bool readBack();
    bool readMeterBack();

    int m_channel = 0;
    int m_meterAddress = 0;
};

} // namespace corvane
