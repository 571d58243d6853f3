#include "board/BinaryCalculator.h"
#include "board/CalibrationPanel.h"
#include "board/DacAdcPanel.h"
#include "board/DigitalIoPanel.h"
#include "board/IdentityPanel.h"
#include "board/ManualCalibrationPanel.h"
#include "board/PortPinsPanel.h"
#include "tests/board/BoardFixture.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>

using namespace corvane;

namespace {

const QString invalid = QStringLiteral("Error: data is invalid.");

/// An entry and what it puts on the wire; null: it is refused.
struct Entry
{
    const char *text;
    const char *sent;
};

class PanelsTest : public BoardTest
{
protected:
    void check(std::initializer_list<Entry> entries, QLineEdit &box,
               const std::function<void()> &press)
    {
        for (const Entry &entry : entries) {
            channels.forget();
            if (!entry.sent)
                dialogs.expectMessage(invalid);
            box.setText(QString::fromLatin1(entry.text));
            press();
            EXPECT_EQ(channels.commands(), entry.sent ? latin({entry.sent}) : QStringList())
                << entry.text;
        }
    }
    [[nodiscard]] QString adc(size_t channel) const
    {
        return board.dacAdc->lblReadAdc[channel]->text();
    }
};

} // namespace

TEST_F(PanelsTest, ADacEntryIsSentOnlyWithinItsRange)
{
    DacAdcPanel &panel = *board.dacAdc;
    const auto press = [&panel] { panel.cmdSendDac_Click(0); };
    check({{"2.5", "DAC  0,2.5\r"},
           {"2.50", "DAC  0,2.50\r"},
           {" 0 ", "DAC  0, 0 \r"},
           {"2.50001", nullptr},
           {"2.6", nullptr},
           {"-1", nullptr},
           {"2,5", nullptr},
           {"", nullptr},
           {"FFFF", nullptr}},
          *panel.txtSendDac[0], press);
    panel.optDacUnits_Click(DacAdcPanel::Hex);
    check({{"FFFF", "DAC  0,2.50000\r"},
           {"8000", "DAC  0,1.25002\r"},
           {"0", "DAC  0,0.00000\r"},
           {"00", "DAC  0,0.00000\r"},
           {"G1", nullptr},
           {"", nullptr},
           {"-1", nullptr},
           {"10000", nullptr},
           {"FFFFF", nullptr},
           {"FFFFFFFFFF", nullptr}},
          *panel.txtSendDac[0], press);
}

TEST_F(PanelsTest, VoltsAndTheBertanSetAreRefusedBeforeTheEntryIsLookedAt)
{
    board.dacAdc->chkBertanDac->setChecked(true);
    EXPECT_EQ(board.dacAdc->lblReadDacLabel[3]->text(), QStringLiteral("W 3"));
    EXPECT_EQ(board.dacAdc->lblReadAdcLabel[0]->text(), QStringLiteral("M 0"));
    dialogs.expectMessage(QStringLiteral(
        "Warning, you can not send data in volts while using the Bertan command set."));
    board.dacAdc->txtSendDac[0]->setText(QStringLiteral("nonsense"));
    board.dacAdc->cmdSendDac_Click(0);
    EXPECT_TRUE(channels.commands().isEmpty());
    board.dacAdc->chkBertanDac->setChecked(false);
    EXPECT_EQ(board.dacAdc->lblReadDacLabel[3]->text(), QStringLiteral("DAC 3"));
    EXPECT_EQ(board.dacAdc->lblReadAdcLabel[0]->text(), QStringLiteral("ADC 0"));
}

TEST_F(PanelsTest, AnAdcReadingIsShownInTheUnitsAndBlankWithoutANumber)
{
    struct Row
    {
        const char *reply;
        const char *volts;
        const char *hex;
    };
    for (const Row &row :
         {Row{"1.25, 1.1 ,-0.1\r\n", "1.25000", "8000"}, Row{" 9 ,1,0", "9.00000", "FFFF"},
          Row{"-1,1,0", "-1.00000", "0"}, Row{"1.2\r5,1,0", "", ""}, Row{"1.25", "", ""},
          Row{"abc,1,0", "", ""}, Row{"1e40,1,0", "", ""}, Row{"", "", ""},
          Row{"2,1,0,3,4,5,6,7,8,9,1,1,1,1,1,1,1,1,1,1", "2.00000", "CCCC"}}) {
        answerQueriesWith(row.reply);
        for (const int units : {DacAdcPanel::Volts, DacAdcPanel::Hex}) {
            board.dacAdc->optDacUnits_Click(units);
            board.dacAdc->cmdReadAdc_Click(1);
            EXPECT_EQ(adc(1), QString::fromLatin1(units == DacAdcPanel::Hex ? row.hex : row.volts))
                << row.reply;
        }
    }
}

TEST_F(PanelsTest, AnAdcReplyGivesValueGainAndOffsetWhereItHoldsThem)
{
    answerQueriesWith("1.234567,x,-.5");
    const auto reply = board.dacAdc->ReadAdcChannel(0);
    EXPECT_EQ(reply.value, 1.23457F);
    EXPECT_EQ(reply.gain, std::nullopt);
    EXPECT_EQ(reply.offset, -0.5F);
    board.dacAdc->chkBertanDac->setChecked(true);
    answerQueriesWith(" 7FFF,x \r\n");
    board.dacAdc->cmdReadAdc_Click(0);
    EXPECT_EQ(adc(0), QStringLiteral("7FFF,x"));
}

TEST_F(PanelsTest, ChangingTheUnitsConvertsWhatIsShownOnceAndLeavesOtherTexts)
{
    DacAdcPanel &panel = *board.dacAdc;
    EXPECT_TRUE(panel.optDacUnits[DacAdcPanel::Volts]->isChecked());
    EXPECT_EQ(panel.lblDacRange->text(), QStringLiteral("Range: 0 to 2.5 volts"));
    int i = 0;
    for (const char *text : {"2.5", "1.25", "9", "-1", "abc", ""})
        panel.txtSendDac[static_cast<size_t>(i++)]->setText(QString::fromLatin1(text));
    panel.lblReadAdc[0]->setText(QStringLiteral("0.5"));
    const auto entries = [&panel] {
        QStringList shown;
        for (size_t at = 0; at < 6; ++at)
            shown << panel.txtSendDac[at]->text();
        return shown;
    };
    QTest::mouseClick(panel.optDacUnits[DacAdcPanel::Hex], Qt::LeftButton, {}, QPoint(5, 5));
    panel.optDacUnits_Click(DacAdcPanel::Hex);
    EXPECT_EQ(entries(), latin({"FFFF", "8000", "FFFF", "0", "abc", ""}));
    EXPECT_EQ(adc(0), QStringLiteral("3333"));
    EXPECT_EQ(panel.lblDacRange->text(), QStringLiteral("Range: 0000 to FFFF hex"));
    panel.optDacUnits_Click(DacAdcPanel::Volts);
    EXPECT_EQ(entries(), latin({"2.50000", "1.25002", "2.50000", "0.00000", "0.10483", ""}));
}

TEST_F(PanelsTest, APortEntryIsSentOnlyWithinItsRange)
{
    DigitalIoPanel &panel = *board.digitalIo;
    const auto press = [&panel] { panel.cmdWriteIo_Click(0); };
    check({{"0", "PORT:DATA 0,0\r"},
           {"00", "PORT:DATA 0,0\r"},
           {"ff", "PORT:DATA 0,255\r"},
           {"000", nullptr},
           {"G1", nullptr},
           {"", nullptr},
           {"100", nullptr},
           {"FFFFF", nullptr},
           {"-1", nullptr}},
          *panel.txtWriteIo[0], press);
    panel.optIoUnits_Click(DigitalIoPanel::Decimal);
    check({{"255", "PORT:DATA 0,255\r"},
           {"1e0", "PORT:DATA 0,1e0\r"},
           {"0", "PORT:DATA 0,0\r"},
           {"256", nullptr},
           {"-1", nullptr},
           {"2,5", nullptr},
           {"", nullptr},
           {"FF", nullptr}},
          *panel.txtWriteIo[0], press);
}

TEST_F(PanelsTest, PortUnitsShowFullScaleAndHexadecimalUnchecksBertan)
{
    DigitalIoPanel &panel = *board.digitalIo;
    panel.chkBertan->setChecked(true);
    for (const auto &[units, full, range] :
         {std::tuple(DigitalIoPanel::Decimal, "255", "Range: 0 to 255 decimal"),
          std::tuple(DigitalIoPanel::Hex, "FF", "Range: 00 to FF hex")}) {
        EXPECT_TRUE(panel.chkBertan->isChecked());
        panel.optIoUnits_Click(units);
        EXPECT_EQ(panel.lblIoRange->text(), QString::fromLatin1(range));
        for (const QString &text : {panel.txtDirIo[0]->text(), panel.txtDirIoRead[1]->text(),
                                    panel.txtWriteIo[2]->text(), panel.lblReadIo[3]->text()})
            EXPECT_EQ(text, QString::fromLatin1(full));
    }
    EXPECT_FALSE(panel.chkBertan->isChecked());
}

TEST_F(PanelsTest, APortReadOutIsTheNumberThatTheReplyBeginsWith)
{
    struct Row
    {
        const char *reply;
        const char *hex;
        const char *decimal;
    };
    for (const Row &row : {Row{"10\r\n", "A", "10"}, Row{" 255 V", "FF", "255"}, Row{"", "0", "0"},
                           Row{"abc", "0", "0"}, Row{"1e40", "7FFFFFFF", "1e+40"}}) {
        answerQueriesWith(row.reply);
        board.digitalIo->optIoUnits_Click(DigitalIoPanel::Hex);
        board.digitalIo->cmdReadDirIo_Click(1);
        EXPECT_EQ(board.digitalIo->txtDirIoRead[1]->text(), QString::fromLatin1(row.hex));
        board.digitalIo->optIoUnits_Click(DigitalIoPanel::Decimal);
        board.digitalIo->cmdReadIo_Click(1);
        EXPECT_EQ(board.digitalIo->lblReadIo[1]->text(), QString::fromLatin1(row.decimal));
    }
}

TEST_F(PanelsTest, APinReadOutIsClearedFirstAndThenShowsTheTrimmedReply)
{
    QLabel &readOut = *board.digitalIo->pins->lblPortPinRead[4];
    readOut.setText(QStringLiteral("old"));
    answerQueriesWith(" 1 \r\n");
    clock.after(200, [&readOut] { EXPECT_EQ(readOut.text(), QString()); });
    board.digitalIo->pins->cmdPortPinRead_Click(4);
    EXPECT_EQ(readOut.text(), QStringLiteral("1"));
}

TEST_F(PanelsTest, TheCalculatorTakesEightBitsAndShowsAnXForAnythingElse)
{
    BinaryCalculator &calculator = *board.digitalIo->calculator;
    const auto shows = [&calculator](const char *decimal, const char *hex) {
        EXPECT_EQ(calculator.lblBinVal->text(), QString::fromLatin1(decimal));
        EXPECT_EQ(calculator.lblHexVal->text(), QString::fromLatin1(hex));
    };
    shows("0", "0");
    for (QLineEdit *bit : calculator.txtBin)
        bit->setText(QStringLiteral("1"));
    calculator.txtBin[0]->clear();
    QTest::keyClick(calculator.txtBin[0], Qt::Key_0);
    shows("254", "FE");
    for (const char *text : {"", "2", "a", "-1"}) {
        calculator.txtBin[5]->setText(QString::fromLatin1(text));
        calculator.txtBin_KeyUp();
        shows("X", "X");
    }
}

TEST_F(PanelsTest, TheSerialNumberUnlocksOnEnterAndIsCheckedInItsFirstTwoPieces)
{
    IdentityPanel &panel = *board.identity;
    EXPECT_EQ(panel.txtSN->text(), QStringLiteral("00/0000"));
    panel.txtSnPassword->setText(QStringLiteral("adm x/r"));
    panel.txtSnPassword_KeyDown(Qt::Key_Tab);
    EXPECT_FALSE(panel.cmdSetSN->isEnabled());
    panel.txtSnPassword->setText(QStringLiteral("Adm X-R"));
    QTest::keyClick(panel.txtSnPassword, Qt::Key_Return);
    EXPECT_FALSE(panel.txtSN->isEnabled());
    panel.txtSnPassword->setText(QStringLiteral("say aDM x/R!"));
    QTest::keyClick(panel.txtSnPassword, Qt::Key_Return);
    EXPECT_TRUE(panel.txtSN->isEnabled() && panel.cmdSetSN->isEnabled());

    for (const Entry &entry :
         {Entry{"07/0123", "07/0123"}, Entry{"7/5", "7/5"}, Entry{" 7/5 ", "7/5"},
          Entry{"07/0123/9", "07/0123/9"}, Entry{"99/9999", "99/9999"}, Entry{"100/0001", nullptr},
          Entry{"07/10000", nullptr}, Entry{"07-0123", nullptr}, Entry{"", nullptr},
          Entry{"/", nullptr}, Entry{"-1/5", nullptr}}) {
        channels.forget();
        dialogs.expectMessage(entry.sent ? QStringLiteral("New serial number sent.")
                                         : QStringLiteral("Syntax Error.  Send Canceled"));
        panel.txtSN->setText(QString::fromLatin1(entry.text));
        panel.cmdSetSN_Click();
        const QString command =
            QStringLiteral(":CALibrate:PICSerialNumber %1\r").arg(QString::fromLatin1(entry.sent));
        EXPECT_EQ(channels.commands(), entry.sent ? QStringList(command) : QStringList());
    }
    EXPECT_TRUE(panel.cmdSetSN->isEnabled());
}

TEST_F(PanelsTest, ASerialNumberThatCouldNotBeSentIsNotReportedAsSent)
{
    channels.bus.fault = QStringLiteral("the adapter is gone");
    dialogs.expectMessage(channels.bus.fault);
    board.identity->cmdSetSN_Click();
    EXPECT_EQ(reply(), QStringLiteral("NO RESPONSE"));
}

TEST_F(PanelsTest, TheNetworkReadOutIsTheFirstFieldOrError)
{
    for (const auto &[answer, shown] :
         {std::pair("10.0.0.7,255.0.0.0", "10.0.0.7"), std::pair(",x", ""),
          std::pair("10.0.0.7", "error"), std::pair("", "error")}) {
        answerQueriesWith(answer);
        board.identity->cmdGetTcpip_Click();
        EXPECT_EQ(board.identity->lblTcpip->text(), QString::fromLatin1(shown));
    }
}

TEST_F(PanelsTest, ManualCalibrationReadsFillsAndCopiesWithoutSending)
{
    ManualCalibrationPanel &panel = board.calibration->manual(ManualCalibrationPanel::Dac);
    answerQueriesWith(" 1.5 ,abc");
    panel.lblOffset->setText(QStringLiteral("old"));
    panel.cmdReadCal_Click();
    EXPECT_EQ(panel.lblValue->text(), QStringLiteral("1.5"));
    EXPECT_EQ(panel.lblGain->text(), QStringLiteral("abc"));
    EXPECT_EQ(panel.lblOffset->text(), QString());
    panel.cmdDefaultSet_Click();
    EXPECT_EQ((QStringList{panel.txtValue->text(), panel.txtGain->text(), panel.txtOffset->text()}),
              latin({"2.5", "1.0", "0.0"}));
    panel.cmdCopy_Click();
    EXPECT_EQ((QStringList{panel.txtValue->text(), panel.txtGain->text(), panel.txtOffset->text()}),
              latin({"1.5", "abc", ""}));
}

TEST_F(PanelsTest, TheChannelStepsWithinZeroToSeven)
{
    CalibrationPanel &panel = *board.calibration;
    struct Row
    {
        const char *before;
        const char *up;
        const char *down;
    };
    for (const Row &row : {Row{"0", "1", "0"}, Row{"6", "7", "5"}, Row{"7", "7", "6"},
                           Row{"", "1", ""}, Row{"07", "07", "6"}}) {
        panel.txtChannel->setText(QString::fromLatin1(row.before));
        panel.cmdInc_Click();
        EXPECT_EQ(panel.txtChannel->text(), QString::fromLatin1(row.up)) << row.before;
        panel.txtChannel->setText(QString::fromLatin1(row.before));
        panel.cmdDec_Click();
        EXPECT_EQ(panel.txtChannel->text(), QString::fromLatin1(row.down)) << row.before;
    }
}
