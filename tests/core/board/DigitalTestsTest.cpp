// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/core/board/BoardFixture.h"
#include "windows/board/DigitalIoPanel.h"
#include "windows/board/DigitalTestsPanel.h"

#include <map>

using namespace corvane;

namespace {

/// A board with four ports and a loop-back connector, as its commands see it.
class DigitalTestsTest : public BoardTest
{
protected:
    DigitalTestsTest()
    {
        channels.answer = [this](const QString &command) { return execute(command); };
    }

    QString execute(const QString &command)
    {
        static const std::map<int, int> joined = {{0, 2}, {2, 0}, {1, 3}, {3, 1}};
        const QStringList words = command.trimmed().split(u' ');
        const QStringList values = words.value(1).split(u',');
        const int port = values[0].toInt();
        if (words[0] == u"PORT:DIR"_s)
            direction[port] = values.value(1).toInt() & ~stuckLow;
        else if (words[0] == u"PORT:DATA"_s)
            data[port] = values.value(1).toInt();
        else if (words[0] == u"PORT:DIR?"_s)
            return QString::number(direction[port]) + u"\r\n"_s; // as GPIB leaves it
        else if (words[0] == u"PORT:DATA?"_s)
            return QString::number(connector ? data[joined.at(port)] & ~stuckLow : 0);
        return {};
    }
    [[nodiscard]] QString labels() const
    {
        return panel.lblChannel->text() + u'|' + panel.lblPData->text() + u'|' +
               panel.lblPortValue->text();
    }
    [[nodiscard]] bool isIdle() const
    {
        return labels() == u"0|0|0"_s && board.cursor().shape() == Qt::ArrowCursor &&
               !panel.cmdDigTestAbort->isEnabled() && panel.cmdDigTestFull->isEnabled() &&
               !panel.sequences().isAborted();
    }

    DigitalTestsPanel &panel = *board.digitalIo->tests;
    std::map<int, int> direction;
    std::map<int, int> data;
    bool connector = true;
    int stuckLow = 0;
};

const QString writePassed = u"Testing write direction register PASSED"_s;
const QString writeFailed = u"Testing write direction register FAILED"_s;
const QString install = u"Install Loop Back connector now"_s;
const QString readPassed = u"Testing readback data loop back PASSED, remove jumper"_s;
const QString readFailed = u"Testing readback data loop back FAILED, remove jumper"_s;

} // namespace

TEST_F(DigitalTestsTest, ThePatternsAreAWalkingOneAWalkingZeroAndAllOnes)
{
    const QList<int> expected = {1,   2,   4,   8,   16,  32,  64,  128, 254,
                                 253, 251, 247, 239, 223, 191, 127, 255};
    QList<int> patterns;
    for (int step = 0; step < DigitalTests::steps; ++step)
        patterns.append(DigitalTests::test_data(step));
    EXPECT_EQ(patterns, expected);
    EXPECT_EQ(DigitalTests::bitText(7) + DigitalTests::bitText(8) + DigitalTests::bitText(16),
              u"70All"_s);
}

TEST_F(DigitalTestsTest, TheWriteTestWritesAndReadsEveryPatternOfEveryPort)
{
    dialogs.expectMessage(writePassed);
    act(board, "cmdDigTestWrite");
    QStringList expected;
    for (int port = 0; port < 4; ++port) {
        for (int step = 0; step < 17; ++step)
            expected << u"PORT:DIR %1,%2\r"_s.arg(port).arg(DigitalTests::test_data(step))
                     << u"PORT:DIR? %1\r"_s.arg(port);
    }
    EXPECT_EQ(channels.commands(), expected);
    EXPECT_EQ(clock.waits.size(), 4U * 17 * 6);
    for (size_t i = 0; i < clock.waits.size(); ++i)
        ASSERT_EQ(clock.waits[i], i % 3 == 1 ? 100 : 25);
    EXPECT_TRUE(isIdle());
}

TEST_F(DigitalTestsTest, AWrongDirectionShowsItsReplyAndTheStepAndTheTestGoesOn)
{
    stuckLow = 0x80;
    const std::vector<int> failing = {7, 8, 9, 10, 11, 12, 13, 14, 16};
    for (int port = 0; port < 4; ++port) {
        for (const int step : failing)
            dialogs.expectMessage(
                u"Error testing direction register, port %1, data= %2 ,expected%3"_s.arg(port)
                    .arg(DigitalTests::test_data(step) & 0x7F)
                    .arg(step));
    }
    dialogs.expectMessage(writeFailed);
    act(board, "cmdDigTestWrite");
    EXPECT_EQ(channels.commands().size(), 4 * 17 * 2);
}

TEST_F(DigitalTestsTest, TheReadbackTestDrivesEachPairBothWays)
{
    dialogs.expectMessage(install, Dialogs::Answer::Ok, [this] {
        EXPECT_EQ(board.cursor().shape(), Qt::WaitCursor);
        EXPECT_TRUE(shown(board, "lblProgressTests").startsWith(u"Readback test, about"));
    });
    dialogs.expectMessage(readPassed);
    act(board, "cmdDigTestRead");
    QStringList expected;
    for (const char *step :
         {"DIR 0,0", "DIR 3,0", "DIR 1,255", "DIR 2,255", "DATA 2? 0", "DATA 1? 3", "DIR 0,255",
          "DIR 3,255", "DIR 1,0", "DIR 2,0", "DATA 0? 2", "DATA 3? 1"}) {
        const QString command = u"PORT:"_s + QString::fromLatin1(step);
        const qsizetype pair = command.indexOf(u'?'); // the patterns go out here and come in there
        for (int i = 0; pair > 0 && i < DigitalTests::steps; ++i)
            expected << u"%1,%2\r"_s.arg(command.first(pair)).arg(DigitalTests::test_data(i))
                     << u"PORT:DATA%1\r"_s.arg(command.sliced(pair));
        if (pair < 0)
            expected << command + u'\r';
    }
    EXPECT_EQ(channels.commands(), expected);
    EXPECT_TRUE(isIdle());
}

TEST_F(DigitalTestsTest, WithoutTheConnectorOrWithAStuckBitEachPairShowsOneError)
{
    for (const bool fitted : {false, true}) {
        connector = fitted;
        stuckLow = fitted ? 0x10 : 0;
        dialogs.expectMessage(install);
        for (int pair = 0; pair < 4; ++pair)
            dialogs.expectMessage(u"error"_s);
        dialogs.expectMessage(readFailed);
        act(board, "cmdDigTestRead");
    }
}

TEST_F(DigitalTestsTest, TheFullTestShowsWhereItIsAndTheDirectionVerdictBeforeThePrompt)
{
    // Each step of 300 ms: 16 steps of port 0, then "All"; port 1 begins after 17.
    for (const auto &[at, shown] :
         {std::pair(50, "0|0|1"), std::pair(9 * 300 + 50, "0|1|253"),
          std::pair(16 * 300 + 50, "0|All|255"), std::pair(17 * 300 + 50, "1|0|1")})
        clock.after(at, [this, text = shown] { EXPECT_EQ(labels(), QString::fromLatin1(text)); });
    clock.after(4 * 17 * 300 + 4 * 150 + 50, [this] { EXPECT_EQ(labels(), u"2 > 0|0|1"_s); });
    for (const QString &text : {writePassed, install, readPassed})
        dialogs.expectMessage(text);
    act(board, "cmdDigTestFull");
}

TEST_F(DigitalTestsTest, AbortedAtAnyMomentItSendsNothingMoreAndGivesNoVerdict)
{
    for (int at = 10; at < 1000; at += 17) {
        for (const char *test : {"cmdDigTestWrite", "cmdDigTestRead", "cmdDigTestFull"}) {
            channels.forget();
            qsizetype sent = 0;
            if (qstrcmp(test, "cmdDigTestRead") == 0)
                dialogs.expectMessage(install);
            clock.after(at, [this, &sent] {
                sent = channels.commands().size();
                act(board, "cmdDigTestAbort");
            });
            act(board, test);
            EXPECT_EQ(channels.commands().size(), sent) << at;
            EXPECT_TRUE(isIdle()) << at;
        }
    }
}

TEST_F(DigitalTestsTest, AnAbortUnderAMessageBoxEndsTheTestToo)
{
    const auto abort = [this] { act(board, "cmdDigTestAbort"); };
    dialogs.expectMessage(install, Dialogs::Answer::Ok, abort);
    act(board, "cmdDigTestRead");
    EXPECT_TRUE(channels.commands().isEmpty());

    channels.answer = [](const QString &) { return QString(); };
    const auto noData = u"Error testing direction register, port 0, data=  ,expected%1"_s;
    dialogs.expectMessage(noData.arg(0));
    dialogs.expectMessage(noData.arg(1), Dialogs::Answer::Ok, [this, abort] {
        EXPECT_EQ(shown(board, "lblProgressTests"), u"Write test, port 0, bit 1"_s);
        abort();
    });
    act(board, "cmdDigTestFull");
    EXPECT_EQ(channels.commands().size(), 4);
    EXPECT_TRUE(isIdle());
}
