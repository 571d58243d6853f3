// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "windows/board/BoardPanel.h"
#include "windows/widgets/ControlArray.h"

#include <array>
#include <optional>

class QCheckBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace corvane {

/// The page on which the eight DACs are set and the eight ADCs read, in counts or volts and with
/// either command set. A channel outside 0..7 is ignored.
class DacAdcPanel : public BoardPanel
{
    Q_OBJECT

public:
    static constexpr int channels = 8;

    enum Units { Hex = 0, Volts = 1 };

    /// What one ADC answered. A value that the reply does not hold stays unset.
    struct AdcReply
    {
        std::optional<float> value;
        std::optional<float> gain;
        std::optional<float> offset;
        /// The reply as it stands; set with the Bertan command set only.
        std::optional<QString> bertan;
    };

    DacAdcPanel(BoardLink &link, BoardSession &session);

    void cmdSendDac_Click(int channel);
    void cmdReadAdc_Click(int channel);
    void cmdSendAllDacs_Click();
    void cmdReadAdcAll_Click();
    void cmdSetAllDac_Click();
    void optDacUnits_Click(int units);
    void chkBertanDac_Click();

    /// Asks one ADC; waits.
    AdcReply ReadAdcChannel(int channel);

    ControlArray<QLabel, channels> lblReadDacLabel{};
    ControlArray<QLineEdit, channels> txtSendDac{};
    ControlArray<QPushButton, channels> cmdSendDac{};
    ControlArray<QLabel, channels> lblReadAdcLabel{};
    ControlArray<QLabel, channels> lblReadAdc{};
    ControlArray<QPushButton, channels> cmdReadAdc{};
    QPushButton *cmdSendAllDacs;
    QPushButton *cmdReadAdcAll;
    QPushButton *cmdSetAllDac;
    QLineEdit *txtSetAllDac;
    ControlArray<QRadioButton, 2> optDacUnits{};
    QCheckBox *chkBertanDac;
    QLabel *lblDacRange;
    QLabel *lblProgress;

private:
    QWidget *makeUnits();
    QWidget *makeDacs();
    QWidget *makeAdcs();
    void connectControls();

    /// The command that sends the entry, or nothing after the message that refuses it.
    std::optional<QString> dacCommand(int channel);
    std::optional<QString> dacCommandFromHex(int channel, const QString &text);
    std::optional<QString> dacCommandFromVolts(int channel, const QString &text);
    /// Each returns false when nothing went out, nothing was read.
    bool sendDac(int channel);
    bool readAdc(int channel);
    /// Does `each` for channels 0 to 7 and tells where it is and how it ended.
    void runAll(const QString &what, int channelMs, bool (DacAdcPanel::*each)(int),
                const QString &failed);
    [[nodiscard]] bool isBertan() const;

    int m_units = Volts;
    std::array<bool, channels> m_isBertanReading{};
};

} // namespace corvane
