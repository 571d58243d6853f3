// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "windows/board/BoardPanel.h"
#include "windows/widgets/ControlArray.h"

class QGridLayout;
class QLabel;
class QLineEdit;
class QPushButton;

namespace corvane {

/// The eight pins of port 0: each set high or low, written as 1 or 0, and read. A pin outside 0..7
/// is ignored.
class PortPinsPanel : public BoardPanel
{
    Q_OBJECT

public:
    static constexpr int pins = 8;

    PortPinsPanel(BoardLink &link, BoardSession &session);

    void cmdH_Click(int pin) { switchPin(high, pin); }
    void cmdL_Click(int pin) { switchPin(low, pin); }
    void cmdPortPinWrite_Click(int pin);
    void cmdPortPinRead_Click(int pin);
    void cmdReadAllIo_Click();

    ControlArray<QPushButton, pins> cmdH{};
    ControlArray<QPushButton, pins> cmdL{};
    ControlArray<QLineEdit, pins> txtPortPinWrite{};
    ControlArray<QPushButton, pins> cmdPortPinWrite{};
    ControlArray<QLabel, pins> lblPortPinRead{};
    ControlArray<QPushButton, pins> cmdPortPinRead{};
    QPushButton *cmdReadAllIo;

private:
    static constexpr char16_t high = u'H';
    static constexpr char16_t low = u'L';

    void makePin(QGridLayout &grid, int pin);
    void connectControls();

    void setPin(char16_t level, int pin);
    void switchPin(char16_t level, int pin);
    void readPin(int pin);
};

} // namespace corvane
