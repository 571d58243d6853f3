#include "board/CalibrationPanel.h"
#include "board/DacAdcPanel.h"
#include "board/DigitalIoPanel.h"
#include "board/DigitalTestsPanel.h"
#include "board/IdentityPanel.h"
#include "board/PortPinsPanel.h"
#include "tests/board/BoardFixture.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalSpy>
#include <QTabWidget>
#include <QTest>

using namespace corvane;

namespace {

using BoardWindowTest = BoardTest;
using Action = void (*)(frmSBC &);

/// The long procedures, with the boxes that they show on their way.
struct Procedure
{
    const char *name;
    Action run;
    QStringList boxes;
};

QStringList sensorBoxes()
{
    QStringList boxes;
    for (int i = 0; i < 8; ++i)
        boxes << QStringLiteral("Move Keithly sensor to channel %1").arg(i);
    return boxes;
}

std::vector<Procedure> procedures()
{
    return {
        {"calibrate", [](frmSBC &b) { b.calibration->cmdCal_Click(); }, {}},
        {"scan all", [](frmSBC &b) { b.calibration->cmdScan_Click(); }, sensorBoxes()},
        {"scan", [](frmSBC &b) { b.calibration->cmdScanCals_Click(); }, {}},
        {"read all", [](frmSBC &b) { b.dacAdc->cmdReadAdcAll_Click(); }, {}},
        {"send all", [](frmSBC &b) { b.dacAdc->cmdSendAllDacs_Click(); }, {}},
        {"pins", [](frmSBC &b) { b.digitalIo->pins->cmdReadAllIo_Click(); }, {}},
        {"read-back",
         [](frmSBC &b) { b.digitalIo->tests->cmdDigTestRead_Click(); },
         {QStringLiteral("Install Loop Back connector now")}},
        {"high", [](frmSBC &b) { b.digitalIo->pins->cmdH_Click(1); }, {}},
        {"network", [](frmSBC &b) { b.identity->cmdGetTcpip_Click(); }, {}},
    };
}

/// Says OK to whatever is asked and counts it.
class AgreeableDialogs : public Dialogs
{
public:
    using Dialogs::showMessage;
    Answer showMessage(QWidget *, const MessageBox &) override
    {
        ++boxes;
        return Answer::Ok;
    }
    FileChoice openFile(QWidget *, const FileQuestion &) override { return {}; }
    FileChoice saveFile(QWidget *, const FileQuestion &) override { return {}; }
    void dismissAll() override {}
    [[nodiscard]] int openCount() const override { return 0; }

    int boxes = 0;
};

/// One board window of its own, to be closed at a chosen moment.
struct Bench
{
    explicit Bench(Dialogs &dialogs)
        : board(std::make_unique<frmSBC>(channels, dialogs, clock))
    {
        board->show();
        // Slow enough that reads block, too: every second answer stays out.
        channels.answer = [this](const QString &command) {
            return command.contains(u'?') && ++asked % 2 ? QStringLiteral("1,1,0") : QString();
        };
        channels.meter.assign(20, "0.5");
    }

    FakeClock clock;
    FakeBoardChannels channels{clock};
    int asked = 0;
    std::unique_ptr<frmSBC> board;
};

bool waitFor(const QSignalSpy &spy)
{
    return QTest::qWaitFor([&spy] { return spy.count() > 0; }, 2000);
}

} // namespace

TEST_F(BoardWindowTest, OpensWithItsDefaults)
{
    EXPECT_EQ(board.windowTitle(), QStringLiteral("VXM250 Calibration Utility"));
    EXPECT_TRUE(board.OptSbcCommMeth[1]->isChecked());
    EXPECT_EQ(board.link().channel(), BoardChannels::ieee488);
    EXPECT_EQ(board.cboMeasInstAdrGpib->currentText(), QStringLiteral("16"));
    const CalibrationTable &table = board.calibration->table();
    EXPECT_EQ(table.text(0, 1) + table.text(0, 8), QStringLiteral("Chan0Chan7"));
    EXPECT_EQ(table.text(7, 0), QStringLiteral("Keithley   "));
    board.resize(1200, 700);
    QTest::qWait(1);
    EXPECT_NEAR(board.statusPanels[0]->width(), board.statusPanels[1]->width(), 1);
}

TEST_F(BoardWindowTest, FitsItsScreenAndEveryControlHasAName)
{
    EXPECT_LE(board.minimumSizeHint().width(), 1024);
    EXPECT_LE(board.minimumSizeHint().height(), 700);
    for (const QWidget *control : board.findChildren<QAbstractButton *>()) {
        if (control->objectName().startsWith(u"qt_") || control->inherits("QToolButton") ||
            control->objectName().isEmpty())
            continue;
        EXPECT_FALSE(control->accessibleName().isEmpty()) << control->objectName().toStdString();
    }
    for (const char *name : {"cmdSendDac_7", "txtSendDac_0", "lblReadAdc_3", "OptSbcCommMeth_2",
                             "StatusBar1_1", "StatusBar1_2", "MSFlexGrid1", "cmdPortPinRead_7",
                             "txtBin_0", "cmdSetCal_1", "lblOffset_0", "txtDirIoRead_3"})
        EXPECT_NE(board.findChild<QWidget *>(QString::fromLatin1(name)), nullptr) << name;
}

TEST_F(BoardWindowTest, TheMethodIsChosenByOptionOrByTheMainWindow)
{
    board.CallOptSbcCommMeth(2);
    EXPECT_TRUE(board.OptSbcCommMeth[2]->isChecked());
    EXPECT_EQ(board.link().channel(), BoardChannels::tcpIp1);
    board.OptSbcCommMeth[0]->setChecked(true);
    EXPECT_EQ(board.link().channel(), BoardChannels::rs232);
    for (const qint16 wrong : std::initializer_list<qint16>{-1, 3})
        board.CallOptSbcCommMeth(wrong);
    EXPECT_EQ(board.link().channel(), BoardChannels::rs232);
}

TEST_F(BoardWindowTest, DelayMsWaitsForOneTickOfItsTimer)
{
    board.DelayMs(20);
    EXPECT_TRUE(board.caliTimer.isActive());
    EXPECT_EQ(board.caliTimer.interval(), 20);
    QTimer::singleShot(5, &board, [this] { board.close(); });
    board.DelayMs(30000); // ends with the window
}

TEST_F(BoardWindowTest, ASecondActionInsideAWaitIsRefusedAndItsButtonDisabled)
{
    answerQueriesWith("1,1,0");
    for (const Procedure &running : procedures()) {
        channels.meter.assign(20, "0.5");
        for (const QString &box : running.boxes)
            dialogs.expectMessage(box);
        if (qstrcmp(running.name, "read-back") == 0) {
            for (int pair = 0; pair < 4; ++pair)
                dialogs.expectMessage(QStringLiteral("error"));
            dialogs.expectMessage(
                QStringLiteral("Testing readback data loop back FAILED, remove jumper"));
        }
        clock.after(110, [this] {
            const QStringList before = channels.commands();
            for (const Procedure &second : procedures())
                second.run(board);
            EXPECT_EQ(channels.commands(), before);
            EXPECT_FALSE(board.dacAdc->cmdSendDac[0]->isEnabled());
        });
        running.run(board);
        EXPECT_TRUE(board.dacAdc->cmdSendDac[0]->isEnabled()) << running.name;
    }
}

TEST_F(BoardWindowTest, AChannelThatTheMainWindowUsesIsRefusedWithAMessage)
{
    struct Row
    {
        ChannelUse use;
        const char *text;
    };
    for (const Row &row :
         {Row{ChannelUse::List, "a command list is running.  Stop it and try again."},
          Row{ChannelUse::Loop, "its Loop box is checked.  Uncheck it and try again."},
          Row{ChannelUse::Search, "the GPIB search is running.  Stop it and try again."},
          Row{ChannelUse::Reply,
              "the reply to its last command is still to be read.  Try again."}}) {
        channels.use = row.use;
        channels.usedChannel = BoardChannels::ieee488;
        const QString text =
            QStringLiteral("The IEEE 488 Channel is in use: %1").arg(QString::fromLatin1(row.text));
        dialogs.expectMessage(text);
        board.identity->cmdGetTcpip_Click();
        board.OptSbcCommMeth_Click(0);
        dialogs.expectMessage(text); // the meter is on that Channel whatever the method
        board.calibration->cmdCal_Click();
        EXPECT_TRUE(channels.commands().isEmpty());
        board.calibration->cmdWriteCal_Click();
        EXPECT_EQ(channels.commands(), latin({"CAL:PIC\r"}));
        channels.forget();
        board.OptSbcCommMeth_Click(1);
    }
    EXPECT_FALSE(board.session().isRunning());
}

TEST_F(BoardWindowTest, TellsWhichChannelItNeedsForItself)
{
    EXPECT_FALSE(board.usesChannel(BoardChannels::ieee488));
    clock.after(10, [this] {
        EXPECT_TRUE(board.usesChannel(BoardChannels::tcpIp1));
        EXPECT_FALSE(board.usesChannel(BoardChannels::ieee488));
    });
    clock.after(1000, [this] {
        EXPECT_TRUE(board.usesChannel(BoardChannels::tcpIp1));
        EXPECT_TRUE(board.usesChannel(BoardChannels::ieee488));
        board.calibration->cmdCancelCal_Click();
    });
    board.OptSbcCommMeth_Click(2);
    board.calibration->txtChannel->setText(QStringLiteral("1"));
    board.calibration->cmdWriteCal_Click();
    board.calibration->cmdCal_Click();
}

TEST_F(BoardWindowTest, AMethodChangedDuringACalibrationSplitsNoExchange)
{
    answerQueriesWith("0.5,1,0");
    channels.meter.assign(3, "0.6");
    // Between the first ADC query and the reading of its answer.
    clock.after(25 + 100 + 25 + 100 + 1500 + 25 + 200, [this] { board.CallOptSbcCommMeth(2); });
    board.calibration->txtChannel->setText(QStringLiteral("1"));
    board.calibration->cmdCal_Click();
    EXPECT_TRUE(channels.bus.replies[FakeBoardChannels::boardAddress].empty());
    EXPECT_EQ(channels.tcp.sent.front(), "DAC  1, 2,1.0,0.0\r");
    EXPECT_EQ(channels.tcp.sent.back(), "ADC? 1\r");
}

TEST_F(BoardWindowTest, TheKeyboardFocusComesBackAfterAnOperation)
{
    board.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&board));
    board.findChild<QTabWidget *>()->setCurrentWidget(board.calibration);
    for (QPushButton *button : {board.calibration->cmdWriteCal, board.calibration->cmdScanCals}) {
        button->setFocus();
        button->click();
        EXPECT_TRUE(QTest::qWaitFor([button] { return button->hasFocus(); }, 1000))
            << button->objectName().toStdString();
    }
}

TEST_F(BoardWindowTest, ClosingPausesTwiceThenUnchecksTheMenuEntry)
{
    QSignalSpy closed(&board, &frmSBC::closed);
    board.caliTimer.start(1000);
    board.close();
    EXPECT_FALSE(board.isVisible());
    EXPECT_EQ(channels.unchecked, 0);
    ASSERT_TRUE(waitFor(closed));
    EXPECT_EQ(clock.waits, (std::vector<int>{250, 250}));
    EXPECT_FALSE(board.caliTimer.isActive());
    EXPECT_EQ(channels.unchecked, 1);
    board.close();
    board.calibration->cmdWriteCal_Click();
    QTest::qWait(10);
    EXPECT_EQ(closed.count(), 1);
    EXPECT_TRUE(channels.commands().isEmpty());
}

TEST_F(BoardWindowTest, TheProgramsEndClosesItWithoutPauses)
{
    QSignalSpy closed(&board, &frmSBC::closed);
    board.shutDown();
    ASSERT_TRUE(waitFor(closed));
    EXPECT_TRUE(clock.waits.empty());
}

TEST(BoardWindowClosing, AtAnyMomentEndsTheProcedureWithoutAnotherExchangeOrMessage)
{
    for (const Procedure &procedure : procedures()) {
        for (int at = 5; at < 12000; at += at < 1000 ? 83 : 607) {
            AgreeableDialogs dialogs;
            Bench bench(dialogs);
            QSignalSpy closed(bench.board.get(), &frmSBC::closed);
            qsizetype calls = -1;
            int boxes = 0;
            quint32 end = 0;
            bench.clock.after(at, [&] {
                bench.board->close();
                calls = bench.channels.bus.calls.size();
                boxes = dialogs.boxes;
                end = bench.clock.MS_TIMER();
            });
            procedure.run(*bench.board);
            if (calls < 0) { // it was faster than that
                bench.board.reset();
                break;
            }
            EXPECT_EQ(bench.clock.MS_TIMER(), end) << procedure.name << " at " << at;
            ASSERT_TRUE(waitFor(closed)) << procedure.name << " at " << at;
            EXPECT_EQ(bench.channels.bus.calls.size(), calls) << procedure.name << " at " << at;
            EXPECT_EQ(dialogs.boxes, boxes) << procedure.name << " at " << at;
            EXPECT_EQ(bench.channels.gpib.connectString(), FakeBoardChannels::boardAddress);
            bench.board.reset();
        }
    }
}

TEST(BoardWindowClosing, UnderAnyMessageBoxEndsTheProcedure)
{
    const std::vector<std::pair<Action, QString>> asking = {
        {[](frmSBC &b) { b.calibration->cmdScan_Click(); },
         QStringLiteral("Move Keithly sensor to channel 0")},
        {[](frmSBC &b) { b.digitalIo->tests->cmdDigTestFull_Click(); },
         QStringLiteral("Error testing direction register, port 0, data= 1,1,0 ,expected1")},
        {[](frmSBC &b) { b.digitalIo->tests->cmdDigTestRead_Click(); },
         QStringLiteral("Install Loop Back connector now")},
        {[](frmSBC &b) {
             b.digitalIo->txtDirIo[0]->setText(QStringLiteral("x"));
             b.digitalIo->cmdWriteDirIo_Click(0);
         },
         QStringLiteral("Error: data is invalid.")},
        {[](frmSBC &b) { b.identity->cmdSetSN_Click(); },
         QStringLiteral("New serial number sent.")},
    };
    for (const auto &[action, text] : asking) {
        ScriptedDialogs dialogs;
        Bench bench(dialogs);
        bench.channels.answer = [](const QString &command) {
            return command.contains(u'?') ? QStringLiteral("1,1,0") : QString();
        };
        QSignalSpy closed(bench.board.get(), &frmSBC::closed);
        dialogs.expectMessage(text, Dialogs::Answer::Yes, [&] {
            bench.channels.forget();
            bench.board->close();
        });
        action(*bench.board);
        EXPECT_TRUE(bench.channels.commands().isEmpty()) << text.toStdString();
        EXPECT_TRUE(waitFor(closed)) << text.toStdString();
        bench.board.reset();
    }
}
