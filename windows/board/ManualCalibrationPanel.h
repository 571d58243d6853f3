// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "windows/board/BoardPanel.h"

class QComboBox;
class QGridLayout;
class QLabel;
class QLineEdit;
class QPushButton;

namespace corvane {

/// One copy of the manual calibration entry: setting and reading the gain and offset of a DAC or
/// an ADC as typed, without any check.
class ManualCalibrationPanel : public BoardPanel
{
    Q_OBJECT

public:
    /// The copies, numbered as their controls are.
    enum Kind { Dac = 0, Adc = 1 };

    ManualCalibrationPanel(Kind kind, BoardLink &link, BoardSession &session);

    void cmdSetCal_Click();
    void cmdReadCal_Click();
    void cmdDefaultSet_Click();
    void cmdCopy_Click();

    QComboBox *cboChannelSet;
    QLineEdit *txtValue;
    QLineEdit *txtGain;
    QLineEdit *txtOffset;
    QPushButton *cmdSetCal;
    QPushButton *cmdDefaultSet;
    QPushButton *cmdCopy;
    QComboBox *cboChannel;
    QLabel *lblValue;
    QLabel *lblGain;
    QLabel *lblOffset;
    QPushButton *cmdReadCal;

Q_SIGNALS:
    /// The channel's gain and offset went out to the board.
    void calibrationSent(int channel);

private:
    [[nodiscard]] QString kindName() const;
    QComboBox *channelBox(const QString &name, const QString &accessibleName);
    void makeEntries(QGridLayout &grid);
    void makeReadOuts(QGridLayout &grid);

    Kind m_kind;
};

} // namespace corvane
