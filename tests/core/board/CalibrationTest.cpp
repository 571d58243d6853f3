// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/board/Calibration.h"

#include "core/board/BoardTexts.h"
#include "core/text/ShownText.h"
#include "tests/core/board/CalibrationFixture.h"
#include "windows/widgets/TextGrid.h"

using namespace corvane;

TEST_F(CalibrationTest, ExchangesWaitsAndReadBackComeInTheirOrder)
{
    const QStringList meter =
        latin({"open GPIB0::16", "write GPIB0::16 data?\r", "read GPIB0::16", "open GPIB0::5"});
    const QStringList readAdc = latin({"write GPIB0::5 ADC?  3\r", "read GPIB0::5"});
    clock.after(11000, [this] {
        EXPECT_EQ(shown(board, "lblProgress"),
                  u"Channel 3: meter at 2.0 V, calibrated, about 3 s left"_s);
    });
    act(board, "cmdCal");
    EXPECT_EQ(channels.bus.calls,
              latin({"write GPIB0::5 DAC  3, .5,1.0,0.0\r", "write GPIB0::5 ADC  3,1.0,0.0\r"}) +
                  readAdc + meter + latin({"write GPIB0::5 DAC  3, 2,1.0,0.0\r"}) + readAdc +
                  meter +
                  latin({"write GPIB0::5 DAC  3,2.00000,0.99010,-0.02000\r",
                         "write GPIB0::5 ADC  3,1.00990,0.01000\r", "write GPIB0::5 DAC?  3\r",
                         "read GPIB0::5", "write GPIB0::5 ADC? 3\r", "read GPIB0::5"}) +
                  meter);
    EXPECT_EQ(clock.waits,
              (std::vector<int>{25,  100, 25,  100, 1500, 25,   100,  500,  1000, 1000, 25,
                                100, 500, 25,  100, 500,  1000, 1000, 25,   100,  25,   100,
                                100, 25,  100, 25,  100,  500,  500,  1000, 1000}));
    EXPECT_EQ(column(3), latin({"2.00000", "0.99010", "-0.02000", "1.99000", "1.00990", "0.01000",
                                "1.99990"}));
    EXPECT_EQ(shown(board, "lblProgress"), u"Done"_s);
    EXPECT_TRUE(isIdle());
}

TEST_F(CalibrationTest, CancelStandsInPlaceWhileItRunsAndEndsTheSettlingAtOnce)
{
    clock.after(700, [this] {
        EXPECT_TRUE(panel.cmdCal->isHidden());
        EXPECT_TRUE(panel.cmdCancelCal->isVisibleTo(&panel) && panel.cmdCancelCal->isEnabled());
        EXPECT_EQ(board.cursor().shape(), Qt::WaitCursor);
        EXPECT_EQ(shown(board, "lblProgress"), u"Channel 3: settling at 0.5 V, about 12 s left"_s);
        act(board, "cmdCancelCal");
    });
    const quint32 start = clock.MS_TIMER();
    act(board, "cmdCal");
    EXPECT_EQ(channels.commands(), latin({"DAC  3, .5,1.0,0.0\r", "ADC  3,1.0,0.0\r"}));
    EXPECT_EQ(clock.MS_TIMER() - start, 700U);
    EXPECT_EQ(column(3).join(QString()), QString());
    EXPECT_TRUE(isIdle());
}

TEST_F(CalibrationTest, CancelledAtAnyMomentItSendsNoFurtherCommandAndReadsTheOpenAnswer)
{
    for (int at = 10; at < 11200; at += 97) {
        channels.forget();
        channels.meter = {"0.52", "2.04", "1.9999"};
        adcReplies = latin({"0.51,1,0", "2.01,1,0"});
        QStringList sent;
        clock.after(at, [this, &sent] {
            sent = channels.bus.calls.filter(u"write"_s);
            act(board, "cmdCancelCal");
        });
        act(board, "cmdCal");
        EXPECT_EQ(channels.bus.calls.filter(u"write"_s), sent) << at;
        EXPECT_EQ(channels.gpib.connectString(), FakeBoard::address) << at;
        EXPECT_TRUE(channels.bus.replies[FakeBoard::address].empty()) << at;
        EXPECT_TRUE(isIdle()) << at;
    }
}

TEST_F(CalibrationTest, TheMeterIsAskedAboutOnlyForChannelZeroAndOtherMethods)
{
    const Dialogs::MessageBox warning = {
        .text =
            u"To calibrate the VXM250 you must be connected to the Kiethly over IEEE. If you are "
            "already connected to the Kiethly over IEEE, Press Yes to continue.  If not, press No "
            "to cancel the calibration."_s,
        .title = u"Keithly Connection Warning!"_s,
        .buttons = Dialogs::Buttons::YesNo};
    using enum Dialogs::Answer;
    for (const auto &[script, answer] :
         {std::pair("OptSbcCommMeth_0;txtChannel=0;cmdCal", Yes),
          std::pair("OptSbcCommMeth_2;txtChannel=0;cmdCal", Yes),
          std::pair("OptSbcCommMeth_2;txtChannel=0;cmdCal", No),
          std::pair("OptSbcCommMeth_2;txtChannel=0;cmdCal", Dismissed),
          std::pair("OptSbcCommMeth_0;txtChannel=5;cmdCal", Ok),
          std::pair("OptSbcCommMeth_1;txtChannel=0;cmdCal", Ok)}) {
        channels.forget();
        if (answer != Ok)
            dialogs.expectMessage(warning, answer);
        clock.after(50, [this] { act(board, "cmdCancelCal"); });
        act(board, script);
        EXPECT_EQ(channels.commands().size(), answer == Yes || answer == Ok ? 1 : 0) << script;
        board.link().PauseMS(60);
    }
}

TEST_F(CalibrationTest, AChannelThatDoesNotExistAndNoMeterAddressAreRefused)
{
    for (const char *script : {"txtChannel=8;cmdCal", "txtChannel=-1;cmdCal", "txtChannel=;cmdCal",
                               "txtChannel=abc;cmdCal", "txtChannel=99999999999;cmdCal"}) {
        dialogs.expectMessage(u"The channel must be a number from 0 to 7.  Nothing was sent."_s);
        act(board, script);
    }
    for (const char *address : {"", "31", "-1", "16.5", "1e1", "abc"}) {
        board.cboMeasInstAdrGpib->setCurrentText(QString::fromLatin1(address));
        for (const char *script : {"txtChannel=0;cmdCal", "cmdScan"}) {
            dialogs.expectMessage(u"The meter's GPIB address must be a whole number from 0 to 30.  "
                                  "Nothing was sent."_s);
            act(board, script);
        }
    }
    EXPECT_TRUE(channels.bus.calls.isEmpty());
}

TEST_F(CalibrationTest, AnImpossibleCalculationTellsWhyAndSendsNoCalibration)
{
    channels.meter = {"0.5", "0"};
    dialogs.expectMessage(
        u"The DAC gain cannot be calculated: it is the high DAC value (2) divided by DAC offset + "
        "high meter reading (0).\r\n\r\nNo calibration was sent to the board."_s);
    act(board, "cmdCal");
    EXPECT_EQ(channels.commands().last(), u"ADC?  3\r"_s);
    EXPECT_TRUE(shown(board, "lblProgress")
                    .startsWith(u"Stopped at channel 3: meter at 2.0 V, left with"_s));
    EXPECT_TRUE(isIdle());
}

TEST_F(CalibrationTest, ReadingsThatDoNotFitOrAFaultOfTheMeterStopIt)
{
    adcReplies = latin({"1e40,1,0"});
    dialogs.expectMessage(u"The ADC reading at 0.5 V is too large: \"1e40,1,0\"."_s);
    act(board, "cmdCal");
    adcReplies = latin({"0.5,1,0"});
    channels.meter = {"1e40"};
    dialogs.expectMessage(u"The meter reading at 0.5 V is too large."_s);
    act(board, "cmdCal");
    adcReplies = latin({"0.5,1,0"});
    clock.after(2400, [this] { channels.bus.fault = u"no controller"_s; });
    board.cboMeasInstAdrGpib->setCurrentText(u"7"_s);
    dialogs.expectMessage(u"The meter at GPIB address 7 could not be read: no controller"_s);
    act(board, "cmdCal");
    EXPECT_EQ(channels.gpib.connectString(), FakeBoard::address);
    EXPECT_TRUE(isIdle());
}

TEST_F(CalibrationTest, ReadBackTakesThreeFieldsAndKeepsWhatIsNoNumber)
{
    dacReadBack = u"a\rc,,1e2,9,9,9,9,9,9,9"_s;
    adcReadBack = u",1\r,-0.000001,5,5,5,5,5,5,5,5,5,5,5,5,5,5,5,5,5"_s;
    act(board, "cmdCal");
    EXPECT_EQ(column(3), latin({"a c", "", "100.00000", "", "1.00000", "0.00000", "1.99990"}));
    EXPECT_EQ(column(2).join(QString()), QString());
}

TEST_F(CalibrationTest, AnEndBeforeTheLastStepTellsTheStepAndHowTheChannelWasLeft)
{
    const auto neutral = [](const char *volts) {
        return u"DAC at %1 V, gain 1.0, offset 0.0"_s.arg(QLatin1String(volts));
    };
    const QString andAdc = u" and ADC gain 1.0, offset 0.0"_s;
    const QString end = u"%1 at channel 3: %2, left %3"_s;
    for (const auto &[at, step, left] :
         {std::tuple(50, "settling at 0.5 V", neutral("0.5")),
          std::tuple(200, "settling at 0.5 V", neutral("0.5") + andAdc),
          std::tuple(4800, "settling at 2.0 V", neutral("2.0") + andAdc),
          std::tuple(8000, "reading back",
                     u"DAC at 2.0 V, gain 0.99010, offset -0.02000 and ADC gain "
                     "1.00990, offset 0.01000"_s)}) {
        channels.meter = {"0.52", "2.04", "1.9999"};
        adcReplies = latin({"0.51,1,0", "2.01,1,0"});
        clock.after(at, [this] { act(board, "cmdCancelCal"); });
        act(board, "cmdCal");
        EXPECT_EQ(shown(board, "lblProgress"),
                  end.arg(u"Cancelled", QLatin1String(step), u"with "_s + left));
        EXPECT_TRUE(
            shown(board, "lblUnsaved")
                .startsWith(at == 8000 ? u"Not saved to EEPROM" : u"Calibration unfinished"));
    }
    clock.after(1800, [this] { channels.bus.fault = u"no controller"_s; });
    const QString sendError = u"Error occurred in CmdSend"_s;
    const QString readError = u"Error occurred while trying to read."_s;
    dialogs.expectMessage(readError + u"\r\nno controller"_s);
    act(board, "cmdCal");
    const QString stopped = end + u": %4 no controller"_s;
    EXPECT_EQ(
        shown(board, "lblProgress"),
        stopped.arg(u"Stopped", u"ADC at 0.5 V", u"with "_s + neutral("0.5") + andAdc, readError));
    dialogs.expectMessage(sendError + u"\r\nno controller"_s);
    act(board, "cmdCal");
    EXPECT_EQ(shown(board, "lblProgress"),
              stopped.arg(u"Stopped", u"settling at 0.5 V", u"as it was", sendError));
    EXPECT_TRUE(isIdle());
}

TEST_F(CalibrationTest, AnswersThatDidNotComeAndImpossibleFiguresAreNotPassedOffAsDone)
{
    struct Row
    {
        std::deque<QByteArray> meter;
        const char *adc;
        const char *readBack;
        const char *sent; // the calculation goes on with 0
        const char *end;
        QList<int> marked;
    };
    for (const Row &row :
         {Row{{"0.52", "2.04", "2"},
              "0.51,1,0",
              "2,.99,0",
              "DAC  3,2.00000,0.99010",
              "Done, but channel 3: DAC Offset not as sent; ADC Gain not as sent; ADC Offset not "
              "as sent",
              {3, 5, 6}},
          Row{{},
              "0.51,1,0",
              "2,1,.5",
              "DAC  3,2.00000,4.00000",
              "Done, but channel 3: no number from the meter at 0.5 V; no number from the meter at "
              "2.0 V; DAC Gain outside 0.5 to 2; ADC Gain outside 0.5 to 2; ADC Offset beyond "
              "0.5 V; DAC Gain not as sent; ADC Gain not as sent; ADC Offset not as sent; no "
              "number "
              "from the meter",
              {2, 3, 5, 6, 7}},
          Row{{"0.5", "2", "2"},
              "",
              "",
              "ADC  3,4.00000,0.50000",
              "Done, but channel 3: no answer from the ADC at 0.5 V; no answer from the ADC at 2.0 "
              "V; ADC Gain outside 0.5 to 2; no answer from the DAC; no answer from the ADC",
              {1, 2, 3, 4, 5, 6}},
          Row{{"0.5", "2", "E"},
              "x,1,0",
              "2,-1331,0.6,9",
              "ADC  3,4.00000,0.50000",
              "Done, but channel 3: no number from the ADC at 0.5 V; no number from the ADC at 2.0 "
              "V; ADC Gain outside 0.5 to 2; more than one answer from the DAC; DAC Gain outside "
              "0.5 to 2; DAC Offset beyond 0.5 V; more than one answer from the ADC; ADC Offset "
              "beyond 0.5 V; no number from the meter",
              {2, 3, 5, 6, 7}}}) {
        channels.forget();
        channels.meter = row.meter;
        adcReplies = latin({row.adc, row.adc});
        if (adcReplies[0].startsWith(u"0.51"))
            adcReplies.last() = u"2.01,1,0"_s;
        dacReadBack = adcReadBack = QString::fromLatin1(row.readBack);
        act(board, "cmdCal");
        EXPECT_EQ(channels.commands().filter(QString::fromLatin1(row.sent)).size(), 1) << row.sent;
        const QString end = QString::fromLatin1(row.end);
        EXPECT_EQ(shown(board, "lblProgress"), shownText(end, 300));
        QList<int> marked;
        for (int cell = 1; cell < CalibrationTable::rows; ++cell) {
            const QString remark = panel.MSFlexGrid1->cells().remark(cell, 4);
            if (remark.isEmpty())
                continue;
            marked << cell;
            const QModelIndex index = panel.MSFlexGrid1->model()->index(cell - 1, 4);
            EXPECT_TRUE(index.data().toString().endsWith(u'!'));
            EXPECT_EQ(index.data(Qt::ToolTipRole).toString(), remark);
            EXPECT_TRUE(index.data(Qt::AccessibleTextRole).toString().endsWith(remark));
        }
        EXPECT_EQ(marked, row.marked);
    }
}

TEST_F(CalibrationTest, TheWindowSaysWhatIsNotInTheEepromUntilItWasSent)
{
    const auto unsaved = [this] { return shown(board, "lblUnsaved"); };
    act(board, "cmdCal;cboChannelSet_0=4;cmdSetCal_0;cboChannelSet_1=0;cmdSetCal_1");
    EXPECT_EQ(unsaved(), u"Not saved to EEPROM: channels 0, 3, 4"_s);
    channels.bus.fault = u"no controller"_s;
    for (int i = 0; i < 2; ++i)
        dialogs.expectMessage(u"Error occurred in CmdSend\r\nno controller"_s);
    act(board, "cboChannelSet_0=7;cmdSetCal_0;cmdWriteCal");
    EXPECT_EQ(unsaved(), u"Not saved to EEPROM: channels 0, 3, 4"_s);
    EXPECT_EQ(shown(board, "lblProgress"),
              u"Save to EEPROM: not sent: Error occurred in CmdSend no controller"_s);
    channels.bus.fault.clear();
    clock.after(700, [this] { act(board, "cmdCancelCal"); });
    act(board, "cmdCal");
    EXPECT_EQ(unsaved(), u"Not saved to EEPROM: channels 0, 4; calibration "
                         "unfinished: channel 3"_s);
    board.CallOptSbcCommMeth(BoardLink::TcpIp);
    act(board, "cmdWriteCal");
    EXPECT_EQ(unsaved(), u"Not saved to EEPROM: channels 0, 4; calibration "
                         "unfinished: channel 3"_s);
    EXPECT_TRUE(shown(board, "lblProgress").endsWith(boardTexts::calibratedElsewhere));
    board.CallOptSbcCommMeth(BoardLink::Ieee);
    act(board, "cmdWriteCal");
    EXPECT_EQ(unsaved(), u"Calibration unfinished: channel 3");
    EXPECT_EQ(shown(board, "lblProgress"),
              u"Save to EEPROM: CAL:PIC was sent; the board does not confirm it; "
              "calibration unfinished: channel 3"_s);
}
