#include "board/Calibration.h"

#include "board/CalibrationPanel.h"
#include "tests/board/BoardFixture.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
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
        panel.txtChannel->setText(QStringLiteral("3"));
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

const QStringList neutralLow = latin({"DAC  3, .5,1.0,0.0\r", "ADC  3,1.0,0.0\r"});

} // namespace

TEST(CalibrationFormulas, AreWorkedOutInSinglePrecisionAsGiven)
{
    struct Row
    {
        CalibrationReadings readings;
        CalibrationCoefficients expected;
    };
    const Row rows[] = {
        {{.meterLow = 0.5F, .meterHigh = 2, .adcLow = 0.5F, .adcHigh = 2}, {1, 0, 1, 0}},
        {{.meterLow = 0.5F, .meterHigh = 2.5F, .adcLow = 0.5F, .adcHigh = 2}, {0.8F, 0, 1.25F, 0}},
        {{.meterLow = 0.25F, .meterHigh = 1.75F, .adcLow = 0.75F, .adcHigh = 2.25F},
         {1, 0.25F, 1, -0.5F}},
        {{}, {4, 0.5F, 0, 0}}, // a silent meter: kept as it comes out when the ADC reads something
        // 100000.01 is 100000.0078125 in single precision.
        {{.meterLow = 0.5F, .meterHigh = 2, .adcLow = 100000.01F, .adcHigh = 100000.01F},
         {1, 0, 4, -99999.5078125F}},
    };
    for (Row row : rows) {
        if (row.readings.meterHigh == 0)
            row.readings.adcHigh = 1;
        EXPECT_EQ(calculateCalibration(row.readings).coefficients, row.expected);
    }
}

TEST(CalibrationFormulas, NameTheValueThatADivisionByZeroOrAnOverflowMadeImpossible)
{
    struct Row
    {
        CalibrationReadings readings;
        const char *named;
    };
    for (const Row &row : {
             Row{{.meterLow = 0.5F, .meterHigh = 0, .adcLow = 0, .adcHigh = 1}, "DAC gain"},
             Row{{.meterLow = 0.5F, .meterHigh = 1e-39F, .adcLow = 0, .adcHigh = 1}, "DAC gain"},
             Row{{.meterLow = 0, .meterHigh = 0, .adcLow = 1, .adcHigh = 1}, "ADC gain"},
             Row{{.meterLow = 0.5F, .meterHigh = 2, .adcLow = 1, .adcHigh = 0.5F}, "ADC gain"},
             Row{{.meterLow = 3e38F, .meterHigh = 2, .adcLow = -3e38F, .adcHigh = 0}, "ADC gain"},
         }) {
        const CalibrationResult result = calculateCalibration(row.readings);
        EXPECT_TRUE(result.impossible.contains(QString::fromLatin1(row.named)))
            << row.named << ": " << result.impossible.toStdString();
    }
}

TEST_F(CalibrationTest, ExchangesWaitsAndReadBackComeInTheirOrder)
{
    const QStringList meter =
        latin({"open GPIB0::16", "write GPIB0::16 data?\r", "read GPIB0::16", "open GPIB0::5"});
    const QStringList readAdc = latin({"write GPIB0::5 ADC?  3\r", "read GPIB0::5"});
    panel.cmdCal_Click();
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
    EXPECT_EQ(panel.lblProgress->text(), QStringLiteral("Done"));
    EXPECT_TRUE(isIdle());
}

TEST_F(CalibrationTest, AGainFarFromOneIsSentUnchanged)
{
    channels.meter = {"0.5", "2.5", "2"};
    adcReplies = latin({"0.5,1,0", "2,1,0"});
    panel.cmdCal_Click();
    EXPECT_TRUE(channels.commands().contains(QStringLiteral("ADC  3,1.25000,0.00000\r")));
}

TEST_F(CalibrationTest, WhileItRunsTheCancelButtonStandsInPlaceAndTheStepIsShown)
{
    clock.after(1000, [this] {
        EXPECT_TRUE(panel.cmdCal->isHidden());
        EXPECT_FALSE(panel.cmdCancelCal->isHidden());
        EXPECT_TRUE(panel.cmdCancelCal->isEnabled());
        EXPECT_FALSE(panel.cmdWriteCal->isEnabled());
        EXPECT_EQ(board.cursor().shape(), Qt::WaitCursor);
        EXPECT_EQ(panel.lblProgress->text(),
                  QStringLiteral("Channel 3, step 1 of 9: settling at 0.5 volts"));
    });
    panel.cmdCal_Click();
}

TEST_F(CalibrationTest, CancellingWhileSettlingEndsBeforeTheFirstAdcRead)
{
    clock.after(700, [this] { panel.cmdCancelCal_Click(); });
    const quint32 start = clock.MS_TIMER();
    panel.cmdCal_Click();
    EXPECT_EQ(channels.commands(), neutralLow);
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
            panel.cmdCancelCal_Click();
        });
        panel.cmdCal_Click();
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
    struct Row
    {
        int method;
        const char *channel;
        bool asked;
    };
    for (const Row &row :
         {Row{0, "0", true}, Row{2, "0", true}, Row{1, "0", false}, Row{0, "5", false}}) {
        board.OptSbcCommMeth_Click(row.method);
        panel.txtChannel->setText(QString::fromLatin1(row.channel));
        clock.after(50, [this] { panel.cmdCancelCal_Click(); });
        if (row.asked)
            dialogs.expectMessage(warning, Dialogs::Answer::Yes);
        panel.cmdCal_Click();
    }
    const auto sent = channels.commands();
    board.OptSbcCommMeth_Click(0);
    panel.txtChannel->setText(QStringLiteral("0"));
    for (const auto answer : {Dialogs::Answer::No, Dialogs::Answer::Dismissed}) {
        dialogs.expectMessage(warning, answer);
        panel.cmdCal_Click();
    }
    EXPECT_EQ(channels.commands(), sent);
}

TEST_F(CalibrationTest, AChannelThatDoesNotExistIsRefused)
{
    for (const char *channel : {"8", "-1", "", "abc", "99999999999"}) {
        dialogs.expectMessage(
            QStringLiteral("The channel must be a number from 0 to 7.  Nothing was sent."));
        panel.txtChannel->setText(QString::fromLatin1(channel));
        panel.cmdCal_Click();
    }
    EXPECT_TRUE(channels.commands().isEmpty());
}

TEST_F(CalibrationTest, AnImpossibleCalculationTellsWhyAndSendsNoCalibration)
{
    channels.meter = {"0.5", "0"};
    dialogs.expectMessage(QStringLiteral(
        "The DAC gain cannot be calculated: it is the high DAC value (2) divided by DAC offset + "
        "high meter reading (0).\r\n\r\nNo calibration was sent to the board."));
    panel.cmdCal_Click();
    EXPECT_EQ(channels.commands().last(), QStringLiteral("ADC?  3\r"));
    EXPECT_EQ(panel.lblProgress->text(), QStringLiteral("Stopped"));
    EXPECT_TRUE(isIdle());
}

TEST_F(CalibrationTest, ReadingsThatDoNotFitOrAFaultOfTheMeterStopIt)
{
    adcReplies = latin({"1e40,1,0"});
    dialogs.expectMessage(
        QStringLiteral("The ADC reading at 0.5 volts is too large: \"1e40,1,0\"."));
    panel.cmdCal_Click();
    adcReplies = latin({"0.5,1,0"});
    channels.meter = {"1e40"};
    dialogs.expectMessage(QStringLiteral("The meter reading at 0.5 volts is too large."));
    panel.cmdCal_Click();
    adcReplies = latin({"0.5,1,0"});
    clock.after(2000, [this] { channels.bus.fault = QStringLiteral("no controller"); });
    board.cboMeasInstAdrGpib->setCurrentText(QStringLiteral("7"));
    dialogs.expectMessage(
        QStringLiteral("The meter at GPIB address 7 could not be read: no controller"));
    panel.cmdCal_Click();
    EXPECT_EQ(channels.gpib.connectString(), FakeBoardChannels::boardAddress);
    EXPECT_TRUE(isIdle());
}

TEST_F(CalibrationTest, ASilentBoardReadsAsZeroAndTheComputationGoesOn)
{
    adcReplies.clear(); // no comma, no number
    dacReadBack.clear();
    adcReadBack = QStringLiteral("7");
    channels.meter = {"0.5", "2", "2"};
    panel.cmdCal_Click();
    EXPECT_TRUE(channels.commands().contains(QStringLiteral("ADC  3,4.00000,0.50000\r")));
    EXPECT_EQ(column(3), latin({"", "", "", "7.00000", "", "", "2.00000"}));
}

TEST_F(CalibrationTest, ReadBackTakesThreeFieldsAndKeepsWhatIsNoNumber)
{
    dacReadBack = QStringLiteral("abc,,1e2,9,9,9,9,9,9,9");
    adcReadBack = QStringLiteral(",1\r,-0.000001,5,5,5,5,5,5,5,5,5,5,5,5,5,5,5,5,5");
    panel.cmdCal_Click();
    EXPECT_EQ(column(3), latin({"abc", "", "100.00000", "", "1.00000", "0.00000", "1.99990"}));
    EXPECT_EQ(column(2).join(QString()), QString());
}

TEST_F(CalibrationTest, ScanAllAsksForTheSensorAndReadsTheMeterThroughTheLink)
{
    answerQueriesWith("1,2,3");
    for (int i = 0; i < 8; ++i) {
        channels.meter.push_back("+2.5E-1V");
        dialogs.expectMessage(QStringLiteral("Move Keithly sensor to channel %1").arg(i));
    }
    board.cboMeasInstAdrGpib->setCurrentText(QStringLiteral(" 9 "));
    panel.cmdScan_Click();
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
    panel.cmdCal_Click();
    channels.forget();
    clock.waits.clear();
    answerQueriesWith("x,,");
    panel.cmdScanCals_Click();
    EXPECT_EQ(column(3), latin({"x", "", "", "x", "", "", ""}));
    EXPECT_EQ(channels.commands().size(), 16);
    EXPECT_EQ(clock.waits.size(), 8U * 8);
    EXPECT_EQ(std::vector<int>(clock.waits.begin(), clock.waits.begin() + 8),
              (std::vector<int>{100, 25, 100, 100, 100, 25, 100, 300}));
}

TEST_F(CalibrationTest, ACancelledScanStopsUnderItsBoxAndInItsWaits)
{
    answerQueriesWith("1,2,3");
    channels.meter = {"1"};
    dialogs.expectMessage(QStringLiteral("Move Keithly sensor to channel 0"), Dialogs::Answer::Ok,
                          [this] { panel.cmdCancelScan_Click(); });
    panel.cmdScan_Click();
    EXPECT_EQ(channels.bus.calls.size(), 4);
    EXPECT_TRUE(isIdle());
    channels.forget();
    clock.after(1000, [this] {
        EXPECT_FALSE(panel.cmdCancelScan->isHidden());
        panel.cmdCancelScan_Click();
    });
    panel.cmdScanCals_Click();
    EXPECT_EQ(channels.commands(), latin({"DAC?  0\r", "ADC?  0\r", "DAC?  1\r"}));
    EXPECT_EQ(panel.lblProgress->text(), QStringLiteral("Cancelled"));
}
