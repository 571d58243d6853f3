// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/board/BoardTexts.h"
#include "tests/core/board/CalibrationFixture.h"

using namespace corvane;

TEST_F(CalibrationTest, ScanAllAsksForTheSensorAndReadsTheMeterThroughTheLink)
{
    answerQueriesWith("1,2,3");
    for (int i = 0; i < 8; ++i) {
        channels.meter.emplace_back("+2.5E-1V");
        dialogs.expectMessage(u"Move Keithly sensor to channel %1"_s.arg(i));
    }
    board.cboMeasInstAdrGpib->setCurrentText(u" 9 "_s);
    act(board, "cmdScan");
    EXPECT_EQ(channels.bus.calls.first(9),
              latin({"write GPIB0::5 DAC?  0\r", "read GPIB0::5", "write GPIB0::5 ADC?  0\r",
                     "read GPIB0::5", "open GPIB0::9", "write GPIB0::9 data?\r", "read GPIB0::9",
                     "open GPIB0::5", "write GPIB0::5 DAC?  1\r"}));
    EXPECT_EQ(
        std::vector<int>(clock.waits.begin(), clock.waits.begin() + 15),
        (std::vector<int>{100, 25, 100, 100, 100, 25, 100, 300, 100, 25, 100, 100, 100, 100, 100}));
    EXPECT_EQ(column(7),
              latin({"1.00000", "2.00000", "3.00000", "1.00000", "2.00000", "3.00000", "0.25000"}));
    EXPECT_TRUE(isIdle());
}

TEST_F(CalibrationTest, ScanCalibrationsOnlyClearsTheGridAndLeavesTheMeterOut)
{
    act(board, "cmdCal");
    channels.forget();
    clock.waits.clear();
    answerQueriesWith("x,,");
    act(board, "cmdScanCals");
    EXPECT_EQ(column(3), latin({"x", "", "", "x", "", "", ""}));
    EXPECT_EQ(channels.commands().size(), 16);
    EXPECT_EQ(clock.waits.size(), 8U * 8);
    EXPECT_EQ(std::vector<int>(clock.waits.begin(), clock.waits.begin() + 8),
              (std::vector<int>{100, 25, 100, 100, 100, 25, 100, 300}));
}

TEST_F(CalibrationTest, ACancelledScanStopsUnderItsBox)
{
    answerQueriesWith("1,2,3");
    channels.meter = {"1"};
    dialogs.expectMessage(u"Move Keithly sensor to channel 0"_s, Dialogs::Answer::Ok,
                          [this] { act(board, "cmdCancelScan"); });
    act(board, "cmdScan");
    EXPECT_EQ(channels.bus.calls.size(), 4);
    EXPECT_TRUE(isIdle());
    EXPECT_EQ(shown(board, "lblProgress"), u"Cancelled at channel 0: meter"_s);
}

TEST_F(CalibrationTest, AScanNamesTheChannelsThatDidNotAnswer)
{
    channels.answer = [](const QString &command) {
        const int channel = command.trimmed().right(1).toInt();
        return (channel >= 2 && channel <= 4) || command.contains(u"ADC?  6") ? QString()
                                                                              : u"1,1,0"_s;
    };
    for (int i = 0; i < 8; ++i) {
        channels.meter.emplace_back(i == 5 ? "ERR" : "1");
        dialogs.expectMessage(u"Move Keithly sensor to channel %1"_s.arg(i));
    }
    channels.meter.erase(channels.meter.begin(), channels.meter.begin() + 3);
    act(board, "cmdScan");
    EXPECT_EQ(shown(board, "lblProgress"),
              u"Done, but no answer from the DAC (channels 2 to 4); no answer from "
              "the ADC (channels 2 to 4, 6); no number from the meter (channel 5)"_s);
    board.CallOptSbcCommMeth(BoardLink::TcpIp);
    answerQueriesWith("1,1,0");
    for (int i = 0; i < 8; ++i)
        dialogs.expectMessage(u"Move Keithly sensor to channel %1"_s.arg(i));
    act(board, "cmdScan");
    EXPECT_EQ(shown(board, "lblProgress"),
              u"Done, but not the meter's reading, which Scan All takes by the IEEE method only "
              "(channels 0 to 7)"_s);
}

TEST_F(CalibrationTest, AScanTellsThatItsMethodWasChangedOnTheWay)
{
    answerQueriesWith("1,1,0");
    clock.after(700, [this] { board.CallOptSbcCommMeth(BoardLink::TcpIp); });
    act(board, "cmdScanCals");
    EXPECT_EQ(shown(board, "lblProgress"), u"Done, but "_s + boardTexts::methodChanged);
}
