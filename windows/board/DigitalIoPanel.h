// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "windows/board/BoardPanel.h"
#include "windows/widgets/ControlArray.h"

#include <array>
#include <optional>

class QCheckBox;
class QGridLayout;
class QLabel;
class QLineEdit;
class QPushButton;

namespace corvane {

class BinaryCalculator;
class DigitalTestsPanel;
class PortPinsPanel;

/// The digital page: the direction and data registers of the four ports in the chosen units, and
/// beside them the pins, the calculator and the automatic tests, which are panels of their own. A
/// port outside 0..3 is ignored.
class DigitalIoPanel : public BoardPanel
{
    Q_OBJECT

public:
    static constexpr int ports = 4;

    enum Units { Hex = 0, Decimal = 1 };

    DigitalIoPanel(BoardLink &link, BoardSession &session);

    void cmdReadDirIo_Click(int port);
    void cmdReadIo_Click(int port);
    void cmdWriteDirIo_Click(int port);
    void cmdWriteIo_Click(int port);
    void optIoUnits_Click(int units);

    ControlArray<QLineEdit, ports> txtDirIo{};
    ControlArray<QLineEdit, ports> txtDirIoRead{};
    ControlArray<QLineEdit, ports> txtWriteIo{};
    ControlArray<QLabel, ports> lblReadIo{};
    ControlArray<QPushButton, ports> cmdWriteDirIo{};
    ControlArray<QPushButton, ports> cmdReadDirIo{};
    ControlArray<QPushButton, ports> cmdWriteIo{};
    ControlArray<QPushButton, ports> cmdReadIo{};
    ControlArray<QRadioButton, 2> optIoUnits{};
    QLabel *lblIoRange;
    /// Set by the technician as a note, cleared by the hexadecimal units; no command depends on it.
    QCheckBox *chkBertan;

    PortPinsPanel *pins;
    BinaryCalculator *calculator;
    DigitalTestsPanel *tests;

private:
    QWidget *makePorts();
    QLayout *makeUnits();
    void makePort(QGridLayout &grid, int port);
    void connectControls();

    void writeRegister(const QString &name, int port, const QString &text);
    /// The shown form of the register's value; empty when nothing was read.
    QString readRegister(const QString &name, int port);
    /// The value as the command carries it, or nothing when the entry is refused.
    [[nodiscard]] std::optional<QString> registerValue(const QString &text) const;

    int m_units = Hex;
};

} // namespace corvane
