// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/core/board/BoardFixture.h"
#include "windows/board/CalibrationPanel.h"
#include "windows/board/DacAdcPanel.h"
#include "windows/board/DigitalIoPanel.h"
#include "windows/board/IdentityPanel.h"

using namespace corvane;

namespace {

/// An entry box, its button, and the entries, between "|", that are refused with a message.
struct Refused
{
    const char *before;
    const char *box;
    const char *button;
    const char *entries;
    const char *message = "Error: data is invalid.";
};

const Refused refused[] = {
    {"optDacUnits_1", "txtSendDac_0", "cmdSendDac_0", "2.50001|2.6|-1|2,5||FFFF"},
    {"optDacUnits_0", "txtSendDac_0", "cmdSendDac_0", "G1||-1|8000G|1.5|0x8000|10000|FFFFFFFFFF"},
    {"optIoUnits_0", "txtWriteIo_0", "cmdWriteIo_0", "000|G1||100|-1|1G|1.5|0xF|FFFFFFFFFF"},
    {"optIoUnits_1", "txtDirIo_0", "cmdWriteDirIo_0", "256|-1|2,5||FF"},
    {"cmdInc", "txtSN", "cmdSetSN", "100/0001|07/10000|07-0123||/|-1/5|a/1|1/",
     "Syntax Error.  Send Canceled"},
};

/// What a read-out shows after a reply.
struct ReadOut
{
    const char *reply;
    const char *script;
    const char *control;
    const char *text;
};

const ReadOut readOuts[] = {
    {"1.25, 1.1 ,-0.1\r\n", "cmdReadAdc_1", "lblReadAdc_1", "1.25000"},
    {" 9 ,1,0", "cmdReadAdc_1", "lblReadAdc_1", "9.00000"},
    {"1.2\r5,1,0", "cmdReadAdc_1", "lblReadAdc_1", ""},
    {"1.25", "cmdReadAdc_1", "lblReadAdc_1", ""},
    {"abc,1,0", "cmdReadAdc_1", "lblReadAdc_1", ""},
    {"1e40,1,0", "cmdReadAdc_1", "lblReadAdc_1", ""},
    {"", "cmdReadAdc_1", "lblReadAdc_1", ""},
    {"2,1,0,3,4,5,6,7,8,9,1,1,1,1,1,1,1,1,1,1", "cmdReadAdc_1", "lblReadAdc_1", "2.00000"},
    {"1.25,1,0", "optDacUnits_0;cmdReadAdc_1", "lblReadAdc_1", "8000"},
    {"9,1,0", "cmdReadAdc_1", "lblReadAdc_1", "FFFF"},
    {"-1,1,0", "cmdReadAdc_1", "lblReadAdc_1", "0"},
    {" 7FFF,x \r\n", "chkBertanDac;cmdReadAdc_1", "lblReadAdc_1", "7FFF,x"},
    {"10\r\n", "cmdReadDirIo_1", "txtDirIoRead_1", "A"},
    {" 255 V", "cmdReadIo_1", "lblReadIo_1", "FF"},
    {"", "cmdReadIo_1", "lblReadIo_1", ""},
    {"x", "cmdReadDirIo_1", "txtDirIoRead_1", ""},
    {"10\r\n", "optIoUnits_1;cmdReadIo_1", "lblReadIo_1", "10"},
    {"1e40", "cmdReadDirIo_1", "txtDirIoRead_1", "1e+40"},
    {"", "chkBertan;optIoUnits_0;optIoUnits_1", "txtDirIo_0", "255"},
    {"", "optIoUnits_1", "lblIoRange", "Range: 0 to 255 decimal"},
    {"", "optIoUnits_0", "lblIoRange", "Range: 00 to FF hex"},
    {"", "optIoUnits_0", "txtDirIoRead_1", "FF"},
    {"", "optIoUnits_0", "txtWriteIo_2", "FF"},
    {"", "optIoUnits_0", "lblReadIo_3", "FF"},
    {" 1 \r\n", "cmdPortPinRead_4", "lblPortPinRead_4", "1"},
    {"", "cmdPortPinRead_4", "lblPortPinRead_4", ""},
    {"10.0.0.7,255.0.0.0", "cmdGetTcpip", "lblTcpip", "10.0.0.7"},
    {"10.0.0.7", "cmdGetTcpip", "lblTcpip", "error"},
    {"", "cmdGetTcpip", "lblTcpip", "error"},
    {" 1.5 ,abc", "cmdReadCal_0", "lblValue_0", "1.5"},
    {" 1.5 ,abc", "lblOffset_0=old;cmdReadCal_0;cmdCopy_0", "txtGain_0", "abc"},
    {" 1.5 ,abc", "lblOffset_0=old;cmdReadCal_0;cmdCopy_0", "txtOffset_0", ""},
    {"", "cmdDefaultSet_1", "txtValue_1", "2.5"},
    {"", "cmdDefaultSet_1", "txtGain_1", "1.0"},
    {"", "cmdDefaultSet_1", "txtOffset_1", "0.0"},
    {"", "txtChannel=6;cmdInc", "txtChannel", "7"},
    {"", "txtChannel=07;cmdInc", "txtChannel", "07"},
    {"", "txtChannel=;cmdInc", "txtChannel", "1"},
    {"", "txtChannel=7;cmdDec", "txtChannel", "6"},
    {"", "txtChannel=0;cmdDec", "txtChannel", "0"},
};

class PanelsTest : public BoardTest
{
protected:
    void unlock()
    {
        fill("txtSnPassword", u"Adm X/R"_s);
        board.identity->txtSnPassword_KeyDown(13);
    }
};

} // namespace

TEST_F(PanelsTest, AnEntryOutOfRangeIsRefusedAndNothingSent)
{
    unlock();
    for (const Refused &row : refused) {
        act(board, row.before);
        for (const QString &entry : QString::fromLatin1(row.entries).split(u'|')) {
            dialogs.expectMessage(QString::fromLatin1(row.message));
            fill(row.box, entry);
            act(board, row.button);
        }
    }
    EXPECT_TRUE(channels.commands().isEmpty());
}

TEST_F(PanelsTest, ASerialNumberIsSentTrimmedAndCheckedInItsFirstTwoPiecesOnly)
{
    unlock();
    for (const char *serial : {"07/0123", " 7/5 ", "07/0123/9", "99/9999", "0/0"}) {
        channels.forget();
        dialogs.expectMessage(u"New serial number sent."_s);
        fill("txtSN", QString::fromLatin1(serial));
        act(board, "cmdSetSN");
        EXPECT_EQ(channels.commands(), QStringList(u":CALibrate:PICSerialNumber %1\r"_s.arg(
                                           QString::fromLatin1(serial).trimmed())));
    }
}

TEST_F(PanelsTest, AReadOutShowsWhatItsReplyHolds)
{
    for (const ReadOut &row : readOuts) {
        answerQueriesWith(row.reply);
        act(board, row.script);
        EXPECT_EQ(shown(board, row.control), QString::fromLatin1(row.text))
            << row.script << " " << row.reply;
    }
    EXPECT_FALSE(board.digitalIo->chkBertan->isChecked()); // by the hexadecimal units
}

TEST_F(PanelsTest, OfAnAnswerOfMegabytesEveryPlaceShowsItsStart)
{
    answerQueriesWith(QByteArray(1'000'000, '9').constData());
    act(board, "cmdReadAdc_0;chkBertanDac;cmdReadAdc_1;cmdReadCal_0;cmdScanCals;cmdReadIo_0;"
               "cmdPortPinRead_0;cmdGetTcpip");
    answerQueriesWith((QByteArray(1'000'000, 'x') + ",1").constData());
    act(board, "cmdReadAdc_0;cmdScanCals;cmdGetTcpip");
    for (const QWidget *control : board.findChildren<QWidget *>()) {
        EXPECT_LE(control->property("text").toString().size(), 310)
            << control->objectName().toStdString();
        EXPECT_LE(control->toolTip().size(), 1100) << control->objectName().toStdString();
    }
    EXPECT_LE(board.calibration->table().text(1, 1).size(), 310);
}

TEST_F(PanelsTest, AnAdcReplyGivesValueGainAndOffsetWhereItHoldsThem)
{
    answerQueriesWith("1.234567,x,-.5");
    const auto reply = board.dacAdc->ReadAdcChannel(0);
    EXPECT_EQ(reply.value, 1.23457F);
    EXPECT_EQ(reply.gain, std::nullopt);
    EXPECT_EQ(reply.offset, -0.5F);
}

TEST_F(PanelsTest, VoltsAndTheBertanSetAreRefusedBeforeTheEntryIsLookedAt)
{
    dialogs.expectMessage(
        u"Warning, you can not send data in volts while using the Bertan command set."_s);
    act(board, "chkBertanDac;txtSendDac_0=nonsense;cmdSendDac_0");
    EXPECT_TRUE(channels.commands().isEmpty());
    EXPECT_EQ(shown(board, "lblReadDacLabel_3"), u"W 3"_s);
    EXPECT_EQ(shown(board, "lblReadAdcLabel_0"), u"M 0"_s);
    act(board, "chkBertanDac");
    EXPECT_EQ(shown(board, "lblReadDacLabel_3"), u"DAC 3"_s);
    EXPECT_EQ(shown(board, "lblReadAdcLabel_0"), u"ADC 0"_s);
}

TEST_F(PanelsTest, ChangingTheUnitsConvertsWhatIsShownOnceAndLeavesOtherTexts)
{
    struct Row
    {
        const char *volts;
        const char *hex;
        const char *back;
    };
    EXPECT_EQ(shown(board, "lblDacRange"), u"Range: 0 to 2.5 volts"_s);
    for (const Row &row : {Row{"2.5", "FFFF", "2.50000"}, Row{"1.25", "8000", "1.25002"},
                           Row{"9", "FFFF", "2.50000"}, Row{"-1", "0", "0.00000"},
                           Row{"xyz", "xyz", "xyz"}, Row{"", "", ""}}) {
        board.dacAdc->txtSendDac[0]->setText(QString::fromLatin1(row.volts));
        fill("txtSetAllDac", QString::fromLatin1(row.volts));
        board.dacAdc->lblReadAdc[7]->setText(QString::fromLatin1(row.volts));
        act(board, "optDacUnits_0;optDacUnits_0");
        for (const char *box : {"txtSendDac_0", "txtSetAllDac"})
            EXPECT_EQ(shown(board, box), QString::fromLatin1(row.hex));
        EXPECT_EQ(shown(board, "lblDacRange"), u"Range: 0000 to FFFF hex"_s);
        act(board, "optDacUnits_1");
        EXPECT_EQ(shown(board, "lblReadAdc_7"), QString::fromLatin1(row.back));
    }
}

TEST_F(PanelsTest, TheCalculatorTakesEightBitsAndShowsAnXForAnythingElse)
{
    act(board, "txtBin_7=1;txtBin_5=1;txtBin_1= 1.0 ;txtBin_0=");
    auto *lowest = board.findChild<QWidget *>(u"txtBin_0"_s);
    for (const auto &[key, decimal, hex] :
         {std::tuple(Qt::Key_1, "163", "A3"), std::tuple(Qt::Key_2, "X", "X"),
          std::tuple(Qt::Key_Backspace, "163", "A3"), std::tuple(Qt::Key_Backspace, "X", "X")}) {
        QTest::keyClick(lowest, key);
        EXPECT_EQ(shown(board, "lblBinVal"), QString::fromLatin1(decimal));
        EXPECT_EQ(shown(board, "lblHexVal"), QString::fromLatin1(hex));
    }
}

TEST_F(PanelsTest, TheSerialNumberUnlocksOnEnterWithThePhrase)
{
    IdentityPanel &panel = *board.identity;
    EXPECT_EQ(panel.txtSN->text(), u"00/0000"_s);
    act(board, "txtSnPassword=say aDM x/R!");
    panel.txtSnPassword_KeyDown(Qt::Key_Tab);
    EXPECT_FALSE(panel.txtSN->isEnabled());
    act(board, "txtSnPassword=Adm X-R");
    QTest::keyClick(panel.txtSnPassword, Qt::Key_Return);
    act(board, "cmdSetSN"); // disabled: does nothing
    EXPECT_FALSE(panel.txtSN->isEnabled());
    act(board, "txtSnPassword=say aDM x/R!");
    QTest::keyClick(panel.txtSnPassword, Qt::Key_Return);
    EXPECT_TRUE(panel.txtSN->isEnabled());
}

TEST_F(PanelsTest, ASerialNumberThatCouldNotBeSentIsNotReportedAsSent)
{
    channels.bus.fault = u"the adapter is gone"_s;
    dialogs.expectMessage(u"Error occurred in CmdSend\r\nthe adapter is gone"_s);
    board.identity->cmdSetSN_Click();
    EXPECT_EQ(shown(board, "StatusBar1_2"), u"NO RESPONSE"_s);
}
