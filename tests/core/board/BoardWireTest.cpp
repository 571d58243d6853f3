// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/core/board/BoardFixture.h"
#include "windows/board/DacAdcPanel.h"
#include "windows/board/DigitalIoPanel.h"
#include "windows/board/PortPinsPanel.h"

using namespace corvane;

namespace {

using Waits = std::vector<int>;

/// What a user does, what it puts on the wire, and the waits it asks for with a board that answers.
/// "%1" and the waits stand for `times` channels or pins, from 0 on.
struct Button
{
    const char *script;
    std::initializer_list<const char *> sent;
    Waits waits;
    int times = 1;
};

const Button buttons[] = {
    {"txtSendDac_3=2.5;cmdSendDac_3", {"DAC  3,2.5\r"}, {25, 100}},
    {"txtSendDac_0= 2.50 ;cmdSendDac_0", {"DAC  0, 2.50 \r"}, {25, 100}},
    {"cmdReadAdc_7", {"ADC?  7\r"}, {100, 25, 100, 500}},
    {"txtSetAllDac=1e0;cmdSetAllDac;cmdSendAllDacs", {"DAC  %1,1e0\r"}, {25, 100, 255}, 8},
    {"cmdReadAdcAll", {"ADC?  %1\r"}, {100, 25, 100, 500, 255}, 8},
    {"optDacUnits_0;txtSendDac_0=FFFF;cmdSendDac_0", {"DAC  0,2.50000\r"}, {25, 100}},
    {"txtSendDac_0=8000;cmdSendDac_0", {"DAC  0,1.25002\r"}, {25, 100}},
    {"txtSendDac_0=00;cmdSendDac_0", {"DAC  0,0.00000\r"}, {25, 100}},
    {"chkBertanDac;txtSendDac_2= 8000 ;cmdSendDac_2", {"W28000\r"}, {25, 100}},
    {"cmdReadAdc_3;chkBertanDac;optDacUnits_1", {"M3\r"}, {100, 25, 100, 500}},
    {"cboChannelSet_0=4;txtValue_0=1,5;txtOffset_0= x\xB5;cmdSetCal_0",
     {"DAC 4,1,5,, x\xB5\r"},
     {25, 100}},
    {"cboChannelSet_1=4;txtValue_1=1,5;txtGain_1=2;cmdSetCal_1", {"ADC 4,2,\r"}, {25, 100}},
    {"cmdReadCal_0", {"DAC?  0\r"}, {25, 100}},
    {"cboChannel_1=7;cmdReadCal_1", {"ADC?  7\r"}, {25, 100}},
    {"cmdWriteCal", {"CAL:PIC\r"}, {25, 100}},
    {"txtDirIo_1=0f;cmdWriteDirIo_1", {"PORT:DIR 1,15\r"}, {25, 100}},
    {"txtWriteIo_0=00;cmdWriteIo_0", {"PORT:DATA 0,0\r"}, {25, 100}},
    {"txtWriteIo_0=FF;cmdWriteIo_0", {"PORT:DATA 0,255\r"}, {25, 100}},
    {"optIoUnits_1;txtDirIo_3=255;cmdWriteDirIo_3", {"PORT:DIR 3,255\r"}, {25, 100}},
    {"optIoUnits_1;txtWriteIo_3= 2.5;cmdWriteIo_3", {"PORT:DATA 3, 2.5\r"}, {25, 100}},
    {"optIoUnits_0;cmdReadDirIo_0", {"PORT:DIR? 0\r"}, {25, 100, 25}},
    {"cmdReadIo_2", {"PORT:DATA? 2\r"}, {25, 100, 25}},
    {"cmdH_6", {"H 6\r", "H? 6\r"}, {25, 100, 25, 100, 250}},
    {"cmdL_0", {"L 0\r", "H? 0\r"}, {25, 100, 25, 100, 250}},
    {"txtPortPinWrite_5= 1.0 ;cmdPortPinWrite_5", {"H 5\r"}, {25, 100}},
    {"txtPortPinWrite_5=0;cmdPortPinWrite_5", {"L 5\r"}, {25, 100}},
    {"txtPortPinWrite_5=2;cmdPortPinWrite_5", {}, {}},
    {"txtPortPinWrite_5=;cmdPortPinWrite_5", {}, {}},
    {"cmdReadAllIo", {"H? %1\r"}, {25, 100, 250}, 8},
    {"cmdGetTcpip", {"TCPIP?\r"}, {25, 100, 25}},
    {"cmdDefaultSet_0;cmdCopy_1;cmdInc;cmdDec", {}, {}},
};

} // namespace

using BoardWireTest = BoardTest;

TEST_F(BoardWireTest, EveryButtonSendsItsExactBytesOnEveryMethod)
{
    answerQueriesWith("1,1,0");
    for (const char *method : {"OptSbcCommMeth_0", "OptSbcCommMeth_1", "OptSbcCommMeth_2"}) {
        act(board, method);
        for (const Button &button : buttons) {
            QStringList sent = latin(button.sent);
            Waits waits = button.waits;
            for (int i = 1; i < button.times; ++i) {
                sent << sent[0].arg(i);
                waits.insert(waits.end(), button.waits.begin(), button.waits.end());
            }
            if (button.times > 1)
                sent[0] = sent[0].arg(0);
            channels.forget();
            clock.waits.clear();
            act(board, button.script);
            EXPECT_EQ(channels.commands(), sent) << button.script << ", " << method;
            EXPECT_EQ(clock.waits, waits) << button.script << ", " << method;
        }
    }
}

TEST_F(BoardWireTest, AnIndexOutsideIsIgnored)
{
    for (const int index : {-1, 8}) {
        board.dacAdc->cmdSendDac_Click(index);
        board.digitalIo->cmdReadIo_Click(index);
        board.digitalIo->pins->cmdH_Click(index);
    }
    EXPECT_TRUE(channels.commands().isEmpty());
}

TEST_F(BoardWireTest, ACharacterThatDoesNotFitIsRefusedBeforeAnythingIsSent)
{
    const QString omega = QString::fromUtf16(u"1\u03A9");
    dialogs.expectMessage(
        u"The command holds a character that cannot be sent.  Nothing was sent."_s);
    dialogs.expectMessage(u"Error: data is invalid."_s); // no hexadecimal number
    fill("txtGain_1", omega);
    act(board, "cmdSetCal_1;optDacUnits_0;chkBertanDac");
    fill("txtSendDac_0", omega);
    act(board, "cmdSendDac_0");
    EXPECT_TRUE(channels.commands().isEmpty());
}
