#include "board/CalibrationPanel.h"
#include "board/DacAdcPanel.h"
#include "board/DigitalIoPanel.h"
#include "board/IdentityPanel.h"
#include "board/ManualCalibrationPanel.h"
#include "board/PortPinsPanel.h"
#include "tests/board/BoardFixture.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>

using namespace corvane;

namespace {

/// What one button puts on the wire, and the waits it asks for with a board that answers.
struct Button
{
    const char *name;
    std::function<void(frmSBC &)> press;
    QStringList sent;
    std::vector<int> waits;
};

std::vector<int> repeated(std::vector<int> waits, int times)
{
    std::vector<int> all;
    for (int i = 0; i < times; ++i)
        all.insert(all.end(), waits.begin(), waits.end());
    return all;
}

QStringList forEach(int count, const char *pattern)
{
    QStringList list;
    for (int i = 0; i < count; ++i)
        list << QString::fromLatin1(pattern).arg(i);
    return list;
}

std::vector<Button> dacAdcButtons()
{
    return {
        {"Send volts",
         [](frmSBC &b) {
             b.dacAdc->txtSendDac[3]->setText(QStringLiteral("2.5"));
             b.dacAdc->cmdSendDac_Click(3);
         },
         latin({"DAC  3,2.5\r"}),
         {25, 100}},
        {"Read",
         [](frmSBC &b) { b.dacAdc->cmdReadAdc_Click(7); },
         latin({"ADC?  7\r"}),
         {100, 25, 100, 500}},
        {"Set All, Send All",
         [](frmSBC &b) {
             b.dacAdc->txtSetAllDac->setText(QStringLiteral("1e0"));
             b.dacAdc->cmdSetAllDac_Click();
             b.dacAdc->cmdSendAllDacs_Click();
         },
         forEach(8, "DAC  %1,1e0\r"), repeated({25, 100, 255}, 8)},
        {"Read All", [](frmSBC &b) { b.dacAdc->cmdReadAdcAll_Click(); }, forEach(8, "ADC?  %1\r"),
         repeated({100, 25, 100, 500, 255}, 8)},
        {"Send hexadecimal",
         [](frmSBC &b) {
             b.dacAdc->optDacUnits_Click(DacAdcPanel::Hex);
             b.dacAdc->txtSendDac[0]->setText(QStringLiteral("FFFF"));
             b.dacAdc->cmdSendDac_Click(0);
         },
         latin({"DAC  0,2.50000\r"}),
         {25, 100}},
        {"Bertan Send",
         [](frmSBC &b) {
             b.dacAdc->chkBertanDac->setChecked(true);
             b.dacAdc->txtSendDac[2]->setText(QStringLiteral(" 8000 "));
             b.dacAdc->cmdSendDac_Click(2);
         },
         latin({"W28000\r"}),
         {25, 100}},
        {"Bertan Read",
         [](frmSBC &b) {
             b.dacAdc->cmdReadAdc_Click(3);
             b.dacAdc->chkBertanDac->setChecked(false);
             b.dacAdc->optDacUnits_Click(DacAdcPanel::Volts);
         },
         latin({"M3\r"}),
         {100, 25, 100, 500}},
    };
}

std::vector<Button> calibrationButtons()
{
    const auto fill = [](ManualCalibrationPanel &panel) {
        panel.cboChannelSet->setCurrentIndex(4);
        panel.txtValue->setText(QStringLiteral("1,5"));
        panel.txtGain->setText(QString());
        panel.txtOffset->setText(QStringLiteral(" x\xB5"));
    };
    return {
        {"Set DAC",
         [fill](frmSBC &b) {
             fill(b.calibration->manual(0));
             b.calibration->manual(0).cmdSetCal_Click();
         },
         latin({"DAC 4,1,5,, x\xB5\r"}),
         {25, 100}},
        {"Set ADC",
         [fill](frmSBC &b) {
             fill(b.calibration->manual(1));
             b.calibration->manual(1).cmdSetCal_Click();
         },
         latin({"ADC 4,, x\xB5\r"}),
         {25, 100}},
        {"Read DAC",
         [](frmSBC &b) { b.calibration->manual(0).cmdReadCal_Click(); },
         latin({"DAC?  0\r"}),
         {25, 100}},
        {"Read ADC",
         [](frmSBC &b) {
             b.calibration->manual(1).cboChannel->setCurrentIndex(7);
             b.calibration->manual(1).cmdReadCal_Click();
         },
         latin({"ADC?  7\r"}),
         {25, 100}},
        {"Default Settings, Copy",
         [](frmSBC &b) {
             b.calibration->manual(0).cmdDefaultSet_Click();
             b.calibration->manual(1).cmdCopy_Click();
         },
         {},
         {}},
        {"Save to EEPROM",
         [](frmSBC &b) { b.calibration->cmdWriteCal_Click(); },
         latin({"CAL:PIC\r"}),
         {25, 100}},
    };
}

std::vector<Button> digitalButtons()
{
    return {
        {"Write direction",
         [](frmSBC &b) {
             b.digitalIo->optIoUnits_Click(DigitalIoPanel::Hex);
             b.digitalIo->txtDirIo[1]->setText(QStringLiteral("0f"));
             b.digitalIo->cmdWriteDirIo_Click(1);
         },
         latin({"PORT:DIR 1,15\r"}),
         {25, 100}},
        {"Write data decimal, as typed",
         [](frmSBC &b) {
             b.digitalIo->optIoUnits_Click(DigitalIoPanel::Decimal);
             b.digitalIo->txtWriteIo[3]->setText(QStringLiteral(" 2.5"));
             b.digitalIo->cmdWriteIo_Click(3);
         },
         latin({"PORT:DATA 3, 2.5\r"}),
         {25, 100}},
        {"Read direction",
         [](frmSBC &b) { b.digitalIo->cmdReadDirIo_Click(0); },
         latin({"PORT:DIR? 0\r"}),
         {25, 100, 25}},
        {"Read data",
         [](frmSBC &b) { b.digitalIo->cmdReadIo_Click(2); },
         latin({"PORT:DATA? 2\r"}),
         {25, 100, 25}},
        {"Hi",
         [](frmSBC &b) { b.digitalIo->pins->cmdH_Click(6); },
         latin({"H 6\r", "H? 6\r"}),
         {25, 100, 25, 100, 250}},
        {"Lo",
         [](frmSBC &b) { b.digitalIo->pins->cmdL_Click(0); },
         latin({"L 0\r", "H? 0\r"}),
         {25, 100, 25, 100, 250}},
        {"Write pins",
         [](frmSBC &b) {
             PortPinsPanel &pins = *b.digitalIo->pins;
             int pin = 0;
             for (const char *text : {"1", "0", " 1.0 ", "2", "", "x"}) {
                 pins.txtPortPinWrite[static_cast<size_t>(pin)]->setText(QString::fromLatin1(text));
                 pins.cmdPortPinWrite_Click(pin++);
             }
         },
         latin({"H 0\r", "L 1\r", "H 2\r"}), repeated({25, 100}, 3)},
        {"Read All pins", [](frmSBC &b) { b.digitalIo->pins->cmdReadAllIo_Click(); },
         forEach(8, "H? %1\r"), repeated({25, 100, 250}, 8)},
    };
}

std::vector<Button> identityButtons()
{
    return {
        {"Get TCP/IP Settings",
         [](frmSBC &b) { b.identity->cmdGetTcpip_Click(); },
         latin({"TCPIP?\r"}),
         {25, 100, 25}},
        {"an index outside",
         [](frmSBC &b) {
             for (const int index : {-1, 8}) {
                 b.dacAdc->cmdSendDac_Click(index);
                 b.dacAdc->cmdReadAdc_Click(index);
                 b.digitalIo->cmdReadIo_Click(index);
                 b.digitalIo->cmdWriteDirIo_Click(index);
                 b.digitalIo->pins->cmdH_Click(index);
                 b.digitalIo->pins->cmdPortPinRead_Click(index);
                 b.digitalIo->pins->cmdPortPinWrite_Click(index);
             }
         },
         {},
         {}},
    };
}

} // namespace

using BoardWireTest = BoardTest;

TEST_F(BoardWireTest, EveryButtonSendsItsExactBytesOnEveryMethod)
{
    answerQueriesWith("1,1,0");
    for (const int method : {0, 1, 2}) {
        board.OptSbcCommMeth_Click(method);
        for (const auto &page :
             {dacAdcButtons(), calibrationButtons(), digitalButtons(), identityButtons()}) {
            for (const Button &button : page) {
                channels.forget();
                clock.waits.clear();
                button.press(board);
                EXPECT_EQ(channels.commands(), button.sent) << button.name << ", " << method;
                EXPECT_EQ(clock.waits, button.waits) << button.name << ", " << method;
            }
        }
    }
}

TEST_F(BoardWireTest, AnEntryWithACharacterThatDoesNotFitIsRefusedBeforeAnythingIsSent)
{
    const QString omega = QString::fromUtf16(u"\u03A9");
    const QString refusal =
        QStringLiteral("The command holds a character that cannot be sent.  Nothing was sent.");
    for (int i = 0; i < 3; ++i)
        dialogs.expectMessage(refusal);
    board.calibration->manual(1).txtGain->setText(omega);
    board.calibration->manual(1).cmdSetCal_Click();
    board.identity->txtSN->setText(QStringLiteral("07/0123/") + omega);
    board.identity->cmdSetSN_Click();
    board.dacAdc->optDacUnits_Click(DacAdcPanel::Hex);
    board.dacAdc->chkBertanDac->setChecked(true);
    board.dacAdc->txtSendDac[0]->setText(QStringLiteral("1") + omega);
    board.dacAdc->cmdSendDac_Click(0);
    EXPECT_TRUE(channels.commands().isEmpty());
}
