#include "board/Calibration.h"

#include "board/CalibrationPanel.h"
#include "tests/board/BoardFixture.h"

#include <QComboBox>
#include <QPushButton>

using namespace corvane;

namespace {

/// A board whose channel 3 reads as scripted, and the panel that calibrates it.
class CalibrationTest : public BoardTest
{
protected:
    CalibrationTest()
    {
        channels.meter = {"0.52", "2.04", "1.9999"};
        channels.answer = [this](const QString &command) {
            if (command == QStringLiteral("ADC?  3\r") && !adcReplies.isEmpty())
                return adcReplies.takeFirst();
            if (command == QStringLiteral("DAC?  3\r"))
                return dacReadBack;
            return command == QStringLiteral("ADC? 3\r") ? adcReadBack : QString();
        };
        act(board, "txtChannel=3");
    }

    [[nodiscard]] QStringList column(int channel) const
    {
        QStringList cells;
        for (int row = 1; row < CalibrationTable::rows; ++row)
            cells << panel.table().text(row, CalibrationTable::columnOf(channel));
        return cells;
    }
    [[nodiscard]] bool isIdle() const
    {
        return !panel.cmdCal->isHidden() && panel.cmdCancelCal->isHidden() &&
               !panel.cmdScan->isHidden() && panel.cmdCancelScan->isHidden() &&
               panel.cmdCal->isEnabled() && board.cursor().shape() == Qt::ArrowCursor &&
               !board.session().isRunning();
    }

    CalibrationPanel &panel = *board.calibration;
    QStringList adcReplies = latin({"0.51,1.0,0.0\r\n", "2.01,1.0,0.0\r\n"});
    QString dacReadBack = QStringLiteral("2,.9901,-.02\r\n");
    QString adcReadBack = QStringLiteral("1.99,1.0099,.01\r\n");
};

} // namespace

TEST(CalibrationFormulas, AreWorkedOutInSinglePrecisionAsGiven)
{
    struct Row
    {
        CalibrationReadings readings; // meter low and high, ADC low and high
        CalibrationCoefficients expected;
    };
    for (const Row &row :
         {Row{{0.5F, 2, 0.5F, 2}, {1, 0, 1, 0}}, Row{{0.5F, 2.5F, 0.5F, 2}, {0.8F, 0, 1.25F, 0}},
          Row{{0.25F, 1.75F, 0.75F, 2.25F}, {1, 0.25F, 1, -0.5F}},
          Row{{0, 0, 0, 1}, {4, 0.5F, 0, 0}}, // a silent meter
          // 100000.01 is 100000.0078125 in single precision.
          Row{{0.5F, 2, 100000.01F, 100000.01F}, {1, 0, 4, -99999.5078125F}}})
        EXPECT_EQ(calculateCalibration(row.readings).coefficients, row.expected);
}

TEST(CalibrationFormulas, NameTheValueThatADivisionByZeroOrAnOverflowMadeImpossible)
{
    struct Row
    {
        CalibrationReadings readings;
        QString named;
    };
    const QString dac = QStringLiteral("DAC gain");
    const QString adc = QStringLiteral("ADC gain");
    for (const Row &row :
         {Row{{0.5F, 0, 0, 1}, dac}, Row{{0.5F, 1e-39F, 0, 1}, dac}, Row{{0, 0, 1, 1}, adc},
          Row{{0.5F, 2, 1, 0.5F}, adc}, Row{{3e38F, 2, -3e38F, 0}, adc}})
        EXPECT_TRUE(calculateCalibration(row.readings).impossible.contains(row.named));
}

TEST_F(CalibrationTest, ExchangesWaitsAndReadBackComeInTheirOrder)
{
    const QStringList meter =
        latin({"open GPIB0::16", "write GPIB0::16 data?\r", "read GPIB0::16", "open GPIB0::5"});
    const QStringList readAdc = latin({"write GPIB0::5 ADC?  3\r", "read GPIB0::5"});
    clock.after(11000, [this] {
        EXPECT_TRUE(shown(board, "lblProgress").contains(QStringLiteral("step 9 of 9")));
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
    EXPECT_EQ(shown(board, "lblProgress"), QStringLiteral("Done"));
    EXPECT_TRUE(isIdle());
}

TEST_F(CalibrationTest, CancelStandsInPlaceWhileItRunsAndEndsTheSettlingAtOnce)
{
    clock.after(700, [this] {
        EXPECT_TRUE(panel.cmdCal->isHidden());
        EXPECT_TRUE(panel.cmdCancelCal->isVisibleTo(&panel) && panel.cmdCancelCal->isEnabled());
        EXPECT_EQ(board.cursor().shape(), Qt::WaitCursor);
        EXPECT_EQ(shown(board, "lblProgress"),
                  QStringLiteral("Channel 3, step 1 of 9: settling at 0.5 volts"));
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
        qsizetype sent = 0;
        clock.after(at, [this, &sent] {
            sent = channels.commands().size();
            act(board, "cmdCancelCal");
        });
        act(board, "cmdCal");
        // A command that waited its first 25 ms still goes out.
        EXPECT_LE(channels.commands().size(), sent + 1) << at;
        EXPECT_EQ(channels.gpib.connectString(), FakeBoardChannels::boardAddress) << at;
        EXPECT_TRUE(channels.bus.replies[FakeBoardChannels::boardAddress].empty()) << at;
        EXPECT_TRUE(isIdle()) << at;
    }
}

TEST_F(CalibrationTest, TheMeterIsAskedAboutOnlyForChannelZeroAndOtherMethods)
{
    const Dialogs::MessageBox warning = {
        .text = QStringLiteral(
            "To calibrate the VXM250 you must be connected to the Kiethly over IEEE. If you are "
            "already connected to the Kiethly over IEEE, Press Yes to continue.  If not, press No "
            "to cancel the calibration."),
        .title = QStringLiteral("Keithly Connection Warning!"),
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
        dialogs.expectMessage(
            QStringLiteral("The channel must be a number from 0 to 7.  Nothing was sent."));
        act(board, script);
    }
    dialogs.expectMessage(
        QStringLiteral("The meter's GPIB address must be a number.  Nothing was sent."));
    act(board, "txtChannel=0;cboMeasInstAdrGpib=;cmdCal");
    EXPECT_TRUE(channels.commands().isEmpty());
}

TEST_F(CalibrationTest, AnImpossibleCalculationTellsWhyAndSendsNoCalibration)
{
    channels.meter = {"0.5", "0"};
    dialogs.expectMessage(QStringLiteral(
        "The DAC gain cannot be calculated: it is the high DAC value (2) divided by DAC offset + "
        "high meter reading (0).\r\n\r\nNo calibration was sent to the board."));
    act(board, "cmdCal");
    EXPECT_EQ(channels.commands().last(), QStringLiteral("ADC?  3\r"));
    EXPECT_EQ(shown(board, "lblProgress"), QStringLiteral("Stopped"));
    EXPECT_TRUE(isIdle());
}

TEST_F(CalibrationTest, ReadingsThatDoNotFitOrAFaultOfTheMeterStopIt)
{
    adcReplies = latin({"1e40,1,0"});
    dialogs.expectMessage(
        QStringLiteral("The ADC reading at 0.5 volts is too large: \"1e40,1,0\"."));
    act(board, "cmdCal");
    adcReplies = latin({"0.5,1,0"});
    channels.meter = {"1e40"};
    dialogs.expectMessage(QStringLiteral("The meter reading at 0.5 volts is too large."));
    act(board, "cmdCal");
    adcReplies = latin({"0.5,1,0"});
    clock.after(2000, [this] { channels.bus.fault = QStringLiteral("no controller"); });
    board.cboMeasInstAdrGpib->setCurrentText(QStringLiteral("7"));
    dialogs.expectMessage(
        QStringLiteral("The meter at GPIB address 7 could not be read: no controller"));
    act(board, "cmdCal");
    EXPECT_EQ(channels.gpib.connectString(), FakeBoardChannels::boardAddress);
    EXPECT_TRUE(isIdle());
}

TEST_F(CalibrationTest, ASilentBoardReadsAsZeroAndTheComputationGoesOn)
{
    adcReplies.clear(); // no comma, no number
    dacReadBack.clear();
    adcReadBack = QStringLiteral("7");
    channels.meter = {"0.5", "2", "2"};
    act(board, "cmdCal");
    EXPECT_TRUE(channels.commands().contains(QStringLiteral("ADC  3,4.00000,0.50000\r")));
    EXPECT_EQ(column(3), latin({"", "", "", "7.00000", "", "", "2.00000"}));
}

TEST_F(CalibrationTest, ReadBackTakesThreeFieldsAndKeepsWhatIsNoNumber)
{
    dacReadBack = QStringLiteral("a\rc,,1e2,9,9,9,9,9,9,9");
    adcReadBack = QStringLiteral(",1\r,-0.000001,5,5,5,5,5,5,5,5,5,5,5,5,5,5,5,5,5");
    act(board, "cmdCal");
    EXPECT_EQ(column(3), latin({"a c", "", "100.00000", "", "1.00000", "0.00000", "1.99990"}));
    EXPECT_EQ(column(2).join(QString()), QString());
}

TEST_F(CalibrationTest, ScanAllAsksForTheSensorAndReadsTheMeterThroughTheLink)
{
    answerQueriesWith("1,2,3");
    for (int i = 0; i < 8; ++i) {
        channels.meter.emplace_back("+2.5E-1V");
        dialogs.expectMessage(QStringLiteral("Move Keithly sensor to channel %1").arg(i));
    }
    board.cboMeasInstAdrGpib->setCurrentText(QStringLiteral(" 9 "));
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
    dialogs.expectMessage(QStringLiteral("Move Keithly sensor to channel 0"), Dialogs::Answer::Ok,
                          [this] { act(board, "cmdCancelScan"); });
    act(board, "cmdScan");
    EXPECT_EQ(channels.bus.calls.size(), 4);
    EXPECT_TRUE(isIdle());
    EXPECT_EQ(shown(board, "lblProgress"), QStringLiteral("Cancelled"));
}
