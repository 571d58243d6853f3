// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/board/CalibrationSequence.h"

namespace corvane {

/// Reads the calibrations of all eight channels into the table, with or without the meter's
/// reading of each.
class CalibrationScan : public CalibrationSequence
{
    Q_OBJECT

public:
    using CalibrationSequence::CalibrationSequence;

    /// Asks for the meter's sensor to be moved before each channel's meter reading.
    CalibrationEnd scanAll(const QString &meterAddress);
    CalibrationEnd scanCalibrations();

private:
    void clearTable();
    bool readChannel(int channel);
    bool readMeter(int channel, const QString &meterConnectString);
    bool address(const QString &connectString);
    void addressBoardAgain();

    QString m_boardConnectString;
};

} // namespace corvane
