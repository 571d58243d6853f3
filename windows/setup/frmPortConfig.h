// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "windows/widgets/ControlArray.h"
#include "windows/widgets/ReopenedDialog.h"

#include <optional>

class QComboBox;
class QGroupBox;
class QLabel;
class QLayout;
class QPushButton;

namespace corvane {

class SerialPort;

/// The "Port Configuration" window of one serial Channel: edits the settings string of its port
/// field by field. It leaves the port's opening, and any judgement of the settings, to the Channel.
class frmPortConfig : public ReopenedDialog
{
    Q_OBJECT

public:
    /// `channel` is channels::rs485 or channels::rs232; the port must outlive the window.
    frmPortConfig(int channel, SerialPort &port, QWidget *parent = nullptr);

    /// Of one that is already open what was typed stays.
    void openWindow() override;

    // Event handlers; an index without a control is ignored.
    void Form_Load() override;
    void cmdPortConfig_Click(int index);
    void cmdPreset232_Click(int index);
    void cmdPreset485_Click(int index);
    void cboCfg_Change();
    /// The port was opened, with its settings of now, or closed.
    void portOpened(bool open);

    ControlArray<QComboBox, 4> cboCfg{};          ///< baud rate, parity, data bits, stop bits
    ControlArray<QPushButton, 3> cmdPortConfig{}; ///< apply, cancel, apply and keep open
    ControlArray<QPushButton, 4> cmdPreset232{};
    ControlArray<QPushButton, 1> cmdPreset485{};
    QGroupBox *fraPresets232 = nullptr;
    QGroupBox *fraPresets485 = nullptr;
    QLabel *lblSummary = nullptr;

private:
    QWidget *createFields();
    QLayout *createButtons();
    void connectControls();
    /// The settings as the boxes have them.
    [[nodiscard]] QString entered() const;
    void enter(const QString &settings);
    void apply();
    void showState();

    int m_channel;
    SerialPort &m_port;
    QString m_applied;              ///< what the boxes said when they and the port last agreed
    std::optional<QString> m_inUse; ///< the settings that the open port was opened with
};

} // namespace corvane
