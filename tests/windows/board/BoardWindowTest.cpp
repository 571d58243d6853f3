// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/core/board/BoardFixture.h"
#include "tests/support/Soon.h"
#include "windows/board/CalibrationPanel.h"

using namespace corvane;

namespace {

using BoardWindowTest = BoardTest;

/// The buttons that start something with waits.
const char *const procedures[] = {
    "cmdCal",         "cmdScan",        "cmdScanCals", "cmdReadAdcAll", "cmdReadAllIo",
    "cmdSendAllDacs", "cmdDigTestRead", "cmdH_1",      "cmdGetTcpip",   "cmdReadCal_0"};

/// Says OK to whatever is asked and counts it.
class AgreeableDialogs : public Dialogs
{
public:
    using Dialogs::showMessage;
    Answer showMessage(QObject *, const MessageBox &box) override
    {
        ++boxes;
        texts << box.text;
        return Answer::Ok;
    }
    FileChoice openFile(QObject *, const FileQuestion &) override { return {}; }
    FileChoice saveFile(QObject *, const FileQuestion &) override { return {}; }
    void dismissAll() override {}
    [[nodiscard]] int openCount() const override { return 0; }

    int boxes = 0;
    QStringList texts;
};

/// A board window of its own, to be closed at a chosen moment.
template <class Answers>
struct Bench
{
    Bench()
    {
        board.show();
        // Reads block, too: every second answer stays out.
        channels.answer = [this](const QString &command) {
            return command.contains(u'?') && asked++ % 2 == 0 ? u"1,1,0"_s : QString();
        };
        channels.meter.assign(20, "0.5");
    }

    FakeClock clock;
    Answers dialogs;
    FakeBoard channels{clock, dialogs};
    int asked = 0;
    frmSBC board{channels.set, channels.unsaved, dialogs, clock};
};

/// Its line edit or something of its list, which some versions of the toolkit make at once.
bool isInComboBox(const QWidget &part)
{
    const QWidget *above = part.parentWidget();
    while (above && !qobject_cast<const QComboBox *>(above))
        above = above->parentWidget();
    return above != nullptr;
}

bool waitFor(const QSignalSpy &spy)
{
    return soon([&spy] { return spy.count() > 0; });
}

} // namespace

TEST_F(BoardWindowTest, OpensWithItsDefaults)
{
    EXPECT_EQ(board.windowTitle(), u"VXM250 Calibration Utility"_s);
    EXPECT_TRUE(board.OptSbcCommMeth[1]->isChecked());
    EXPECT_EQ(board.link().channel(), channels::ieee488);
    EXPECT_EQ(board.cboMeasInstAdrGpib->currentText(), u"16"_s);
    const CalibrationTable &table = board.calibration->table();
    EXPECT_EQ(table.text(0, 1) + table.text(0, 8), u"Chan0Chan7"_s);
    EXPECT_EQ(table.text(7, 0), u"Keithley   "_s);
    EXPECT_NEAR(board.statusPanels[0]->width(), board.statusPanels[1]->width(), 1);
}

TEST_F(BoardWindowTest, FitsItsScreenAndEveryControlHasAName)
{
    EXPECT_LE(board.minimumSizeHint().width(), 1024);
    EXPECT_LE(board.minimumSizeHint().height(), 700);
    for (const QWidget *control : board.findChildren<QWidget *>()) {
        const bool isReadOut =
            qobject_cast<const QLabel *>(control) != nullptr && !control->objectName().isEmpty();
        const bool isOurs = (isReadOut || control->focusPolicy() != Qt::NoFocus) &&
                            !control->objectName().startsWith(u"qt_") && !isInComboBox(*control);
        EXPECT_FALSE(isOurs && control->accessibleName().isEmpty())
            << control->metaObject()->className() << ' ' << control->objectName().toStdString();
    }
}

TEST_F(BoardWindowTest, TheMethodIsChosenByOptionOrByTheMainWindow)
{
    act(board, "OptSbcCommMeth_0");
    EXPECT_EQ(board.link().channel(), channels::rs232);
    for (const qint16 method : std::initializer_list<qint16>{2, -1, 3})
        board.CallOptSbcCommMeth(method);
    EXPECT_TRUE(board.OptSbcCommMeth[2]->isChecked());
    EXPECT_EQ(board.link().channel(), channels::tcpIp1);
}

TEST_F(BoardWindowTest, DelayMsWaitsForOneTickOfItsTimer)
{
    board.DelayMs(20);
    EXPECT_TRUE(board.caliTimer.isActive());
    EXPECT_EQ(board.caliTimer.interval(), 20);
    QTimer::singleShot(5, &board, [this] { board.close(); });
    board.DelayMs(30000); // ends with the window
}

TEST(BoardWindow, ASecondActionInsideAWaitIsRefusedAndItsButtonDisabled)
{
    for (const char *running : procedures) {
        Bench<AgreeableDialogs> bench;
        const auto click = [&bench](const char *name) {
            auto *button = bench.board.findChild<QAbstractButton *>(QString::fromLatin1(name));
            Q_EMIT button->clicked(); // as a click that was on its way when it was disabled
            return button->isEnabled();
        };
        bench.clock.after(110, [&] {
            const QStringList before = bench.channels.commands();
            for (const char *second : procedures)
                EXPECT_FALSE(click(second)) << running << ", " << second;
            EXPECT_EQ(bench.channels.commands(), before) << running;
        });
        EXPECT_TRUE(click(running)) << running;
    }
}

TEST_F(BoardWindowTest, AChannelThatTheMainWindowUsesIsRefusedWithAMessage)
{
    for (const auto &[use, why] :
         {std::pair(ChannelUse::List, "a command list is running.  Stop it and try again."),
          std::pair(ChannelUse::Loop, "its Loop box is checked.  Uncheck it and try again."),
          std::pair(ChannelUse::Search, "the GPIB search is running.  Stop it and try again."),
          std::pair(ChannelUse::Reply,
                    "the reply to its last command is still to be read.  Try again.")}) {
        channels.set.users().claim(channels::ieee488, use);
        channels.forget();
        for (int i = 0; i < 2; ++i)
            dialogs.expectMessage(u"The IEEE 488 Channel is in use: "_s + QString::fromLatin1(why));
        act(board, "OptSbcCommMeth_1;cmdGetTcpip");
        // The meter is on that Channel whatever the method; the rest is not.
        act(board, "OptSbcCommMeth_0;cmdCal;cmdWriteCal");
        EXPECT_EQ(channels.commands(), latin({"CAL:PIC\r"}));
        channels.set.users().release(channels::ieee488, use);
    }
    EXPECT_FALSE(board.session().isRunning());
}

TEST_F(BoardWindowTest, TellsWhichChannelsItNeedsForItself)
{
    const auto used = [this] {
        std::vector<bool> claimed;
        for (const int channel : {1, 2, 3})
            claimed.push_back(channels.set.users().isUsed(channel, ChannelUse::Board));
        return claimed;
    };
    EXPECT_EQ(used(), (std::vector{false, false, false}));
    clock.after(10, [&] { EXPECT_EQ(used(), (std::vector{false, false, true})); });
    clock.after(60, [&] {
        board.CallOptSbcCommMeth(0);
        EXPECT_EQ(used(), (std::vector{true, false, true})) << "its answer is still to come";
    });
    act(board, "OptSbcCommMeth_2;cmdWriteCal;OptSbcCommMeth_2");
    clock.after(10, [&] {
        EXPECT_EQ(used(), (std::vector{false, true, true}));
        act(board, "cmdCancelCal");
    });
    act(board, "txtChannel=1;cmdCal");
    // An answer that an operation left unread is not waited for in the next one.
    act(board, "OptSbcCommMeth_2;cmdWriteCal");
    clock.after(10, [&] { EXPECT_EQ(used(), (std::vector{true, false, false})); });
    act(board, "OptSbcCommMeth_0;cmdReadAdc_0");
}

TEST(BoardWindow, AFaultOfItsChannelEndsAnyOperationWithOneMessage)
{
    for (const char *procedure : procedures) {
        // From the start, and closed by the user or lost in an early and in a later exchange.
        for (const int at : {0, 60, 1300}) {
            bool wasRunning = at == 0;
            Bench<AgreeableDialogs> bench;
            act(bench.board, "OptSbcCommMeth_0;txtChannel=3");
            qsizetype sent = 0;
            quint32 end = 0;
            const auto close = [&] {
                wasRunning = at == 0 || bench.board.session().isRunning();
                bench.channels.set.tcp(channels::tcpIp1).close(); // not this one
                bench.channels.set.serial(channels::rs232).close();
                sent = bench.channels.commands().size();
                end = bench.clock.MS_TIMER();
            };
            if (at == 0)
                close();
            else
                bench.clock.after(at, close);
            act(bench.board, procedure);
            bench.clock.waitUntil([] { return false; }, 1, [] { return false; });
            const QStringList told = bench.dialogs.texts.filter(u"The RS 232 port is not"_s);
            if (!wasRunning)
                break;
            EXPECT_EQ(told.size(), 1) << procedure << " at " << at;
            EXPECT_EQ(bench.channels.commands().size(), sent) << procedure << " at " << at;
            if (at > 0) {
                EXPECT_LE(bench.clock.MS_TIMER() - end, 1U) << procedure << " at " << at;
            }
            EXPECT_FALSE(bench.board.session().isRunning());
            for (const char *line : {"lblProgress", "lblProgressDacAdc", "lblProgressTests"})
                EXPECT_FALSE(shown(bench.board, line).startsWith(u"Done")) << procedure;
        }
    }
}

TEST_F(BoardWindowTest, AMethodChangedDuringACalibrationSplitsNoExchange)
{
    answerQueriesWith("0.5,1,0");
    channels.meter.assign(3, "0.6");
    // Between the first ADC query and the reading of its answer.
    clock.after(25 + 100 + 25 + 100 + 1500 + 25 + 200, [this] { board.CallOptSbcCommMeth(2); });
    act(board, "txtChannel=1;cmdCal");
    EXPECT_TRUE(channels.bus.replies[FakeBoard::address].empty());
    EXPECT_EQ(channels.tcpClient1.sent.front(), "DAC  1, 2,1.0,0.0\r");
    EXPECT_EQ(channels.tcpClient1.sent.back(), "ADC? 1\r");
}

TEST_F(BoardWindowTest, TheKeyboardFocusComesBackAfterAnOperation)
{
    board.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&board, 30000));
    QTest::keyClick(&board, Qt::Key_2, Qt::ControlModifier);
    ASSERT_TRUE(board.calibration->isVisible());
    for (QPushButton *button : {board.calibration->cmdWriteCal, board.calibration->cmdScanCals}) {
        button->setFocus();
        button->click();
        EXPECT_TRUE(soon([button] { return button->hasFocus(); }))
            << button->objectName().toStdString();
    }
}

TEST_F(BoardWindowTest, ClosingPausesTwiceAndThenSaysSo)
{
    QSignalSpy closed(&board, &frmSBC::closed);
    board.caliTimer.start(1000);
    board.close();
    EXPECT_FALSE(board.isVisible());
    EXPECT_TRUE(closed.empty());
    ASSERT_TRUE(waitFor(closed));
    EXPECT_EQ(clock.waits, (std::vector<int>{250, 250}));
    EXPECT_FALSE(board.caliTimer.isActive());
    EXPECT_EQ(closed.count(), 1);
    board.calibration->cmdWriteCal_Click();
    EXPECT_TRUE(channels.commands().isEmpty());

    Bench<AgreeableDialogs> other; // at the program's end without the pauses
    QSignalSpy ended(&other.board, &frmSBC::closed);
    other.board.shutDown();
    EXPECT_TRUE(waitFor(ended) && other.clock.waits.empty());
}

TEST(BoardWindow, ClosedAtAnyMomentMakesNoOtherExchangeOrMessage)
{
    for (const char *procedure : procedures) {
        bool wasRunning = true;
        for (int at = 5; wasRunning; at += at < 1000 ? 271 : 2609) {
            Bench<AgreeableDialogs> bench;
            QSignalSpy closed(&bench.board, &frmSBC::closed);
            wasRunning = false;
            qsizetype calls = 0;
            int boxes = 0;
            quint32 end = 0;
            bench.clock.after(at, [&] {
                wasRunning = bench.board.session().isRunning();
                bench.board.close();
                calls = bench.channels.bus.calls.size();
                boxes = bench.dialogs.boxes;
                end = bench.clock.MS_TIMER();
            });
            act(bench.board, procedure);
            if (!wasRunning)
                break;
            EXPECT_EQ(bench.clock.MS_TIMER(), end) << procedure << " at " << at;
            ASSERT_TRUE(waitFor(closed)) << procedure << " at " << at;
            EXPECT_EQ(bench.channels.bus.calls.size(), calls) << procedure << " at " << at;
            EXPECT_EQ(bench.dialogs.boxes, boxes) << procedure << " at " << at;
            EXPECT_EQ(bench.channels.gpib.connectString(), FakeBoard::address);
        }
    }
}

TEST(BoardWindow, ClosedUnderAnyMessageBoxEndsTheProcedure)
{
    for (const auto &[script, text] :
         {std::pair("cmdScan", "Move Keithly sensor to channel 0"),
          std::pair("cmdDigTestFull",
                    "Error testing direction register, port 0, data= 1,1,0 ,expected2"),
          std::pair("cmdDigTestRead", "Install Loop Back connector now"),
          std::pair("txtDirIo_0=x;cmdWriteDirIo_0", "Error: data is invalid.")}) {
        Bench<ScriptedDialogs> bench;
        QSignalSpy closed(&bench.board, &frmSBC::closed);
        bench.asked = -2; // the write test's first two patterns are answered with 1 and with 2
        bench.channels.answer = [&bench](const QString &command) {
            return !command.contains(u'?') ? QString() : ++bench.asked == 0 ? u"2"_s : u"1,1,0"_s;
        };
        bench.dialogs.expectMessage(QString::fromLatin1(text), Dialogs::Answer::Yes, [&] {
            bench.channels.forget();
            bench.board.close();
        });
        act(bench.board, script);
        EXPECT_TRUE(bench.channels.commands().isEmpty()) << text;
        EXPECT_TRUE(waitFor(closed)) << text;
    }
}
