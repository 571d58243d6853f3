// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/board/BoardTexts.h"
#include "core/board/MeterReading.h"
#include "devices/PlatformError.h"
#include "tests/core/board/BoardFixture.h"

using namespace corvane;

using BoardLinkTest = BoardTest;
using Waits = std::vector<int>;

TEST_F(BoardLinkTest, ACommandGetsOneCarriageReturnUnlessItHoldsOne)
{
    struct Row
    {
        const char *command;
        const char *sent;
        const char *shown;
    };
    for (const Row &row : {Row{"DAC?  3", "DAC?  3\r", "DAC?  3"}, Row{"A\rB", "A\rB", "AB"},
                           Row{"CAL:PIC\r", "CAL:PIC\r", "CAL:PIC"}, Row{"", "\r", ""}}) {
        channels.forget();
        QString command = QString::fromLatin1(row.command);
        board.link().OutputToSbc(command);
        EXPECT_EQ(command, QString::fromLatin1(row.sent));
        EXPECT_EQ(channels.commands(), latin({row.sent}));
        EXPECT_EQ(board.statusPanels[0]->text(), QString::fromLatin1(row.shown));
    }
}

TEST_F(BoardLinkTest, AnExchangeTakes125MsAnd200MoreWhenTheBoardIsSilent)
{
    const Waits answered = {25, 100};
    const Waits silent = {25, 100, 200};
    for (const int method : {0, 1, 2}) {
        board.OptSbcCommMeth_Click(method);
        for (const bool answers : {true, false}) {
            answerQueriesWith(answers ? "1,2\x7F" : "");
            clock.waits.clear();
            QString command = u"ADC?"_s;
            QString text = u"old"_s;
            board.link().OutputToSbc(command);
            board.link().InputFromSbc(text);
            std::erase(clock.waits, FakeBoard::gpibTimeoutMs);
            EXPECT_EQ(clock.waits, answers ? answered : silent) << method;
            EXPECT_EQ(text, answers ? u"1,2\x7F"_s : QString());
            EXPECT_EQ(shown(board, "StatusBar1_2"), answers ? text : u"NO RESPONSE"_s);
        }
    }
}

TEST_F(BoardLinkTest, AReplyThatComesWithinTheSecondReadCounts)
{
    clock.after(25 + 100 + FakeBoard::gpibTimeoutMs + 150,
                [this] { channels.bus.replies[FakeBoard::address].emplace_back("late"); });
    QString text = u"ADC?"_s;
    board.link().OutputToSbc(text);
    board.link().InputFromSbc(text);
    EXPECT_EQ(text, u"late"_s);
}

TEST_F(BoardLinkTest, AnAnswerThatComesAfterItsExchangeIsDropped)
{
    const QString address = FakeBoard::address;
    const QString dropped = u"A late answer to an earlier command"_s;
    for (const int method : {0, 1, 2}) {
        board.OptSbcCommMeth_Click(method);
        for (const bool isRead : {true, false}) { // false: its exchange was cancelled
            answerQueriesWith("");
            clock.after(!isRead       ? 130
                        : method == 1 ? 3200
                                      : 2000,
                        [this, method, isRead] {
                            channels.say(method, "late");
                            if (isRead && method == 1) // two commands are out
                                channels.say(method, "later");
                        });
            QString command = u"ADC?  0"_s;
            board.link().OutputToSbc(command);
            if (isRead) {
                EXPECT_EQ(board.link().ask(u"ADC?  1"_s, 0), QString());
            }
            answerQueriesWith("2");
            EXPECT_EQ(board.link().ask(u"DAC?  2"_s, 0), u"2"_s) << method;
            EXPECT_TRUE(board.statusPanels[1]->toolTip().contains(dropped)) << method;
            EXPECT_TRUE(channels.bus.replies[address].empty());
            const quint32 before = clock.MS_TIMER();
            EXPECT_EQ(board.link().ask(u"DAC?  3"_s, 0), u"2"_s);
            EXPECT_EQ(clock.MS_TIMER() - before, 125U) << "an answered exchange waits for nothing";
        }
    }
    EXPECT_EQ(board.link().readMeter(16), QString());
    channels.bus.replies[u"GPIB0::16"_s].emplace_back("0.5");
    channels.meter = {"2.0"};
    EXPECT_EQ(board.link().readMeter(16), u"2.0"_s);
}

TEST_F(BoardLinkTest, AnAnswerThatComesOnlyWithTheNextIsPassedOverForTheNext)
{
    board.OptSbcCommMeth_Click(1);
    answerQueriesWith("");
    EXPECT_EQ(board.link().ask(u"DAC?  4"_s, 0), QString());
    answerQueriesWith("2");
    const auto plainly = std::exchange(channels.bus.onWrite, {});
    bool isLate = true;
    channels.bus.onWrite = [&](const QString &to, const QByteArray &text) {
        if (std::exchange(isLate, false))
            channels.say(1, "late"); // before its own
        return plainly(to, text);
    };
    EXPECT_EQ(board.link().ask(u"ADC?  4"_s, 0), u"2"_s);
    EXPECT_EQ(board.link().ask(u"DAC?  5"_s, 0), u"2"_s);
    EXPECT_TRUE(channels.bus.replies[FakeBoard::address].empty());

    EXPECT_EQ(board.link().readMeter(16), QString());
    channels.bus.onWrite = [&](const QString &to, const QByteArray &) {
        channels.bus.replies[to] = {"0.5"};
        return std::optional<QByteArray>("2.0");
    };
    EXPECT_EQ(board.link().readMeter(16), u"2.0"_s);
}

TEST_F(BoardLinkTest, AnAnswerInPiecesIsReadWhole)
{
    for (const int method : {0, 2}) {
        board.OptSbcCommMeth_Click(method);
        answerQueriesWith("");
        clock.after(50, [this, method] { channels.say(method, "1.2"); });
        clock.after(60, [this, method] { channels.say(method, "5\r\n"); });
        EXPECT_EQ(board.link().ask(u"ADC?  1"_s, 0), u"1.25"_s) << method;
        clock.after(50, [this, method] { channels.say(method, "1,"); }); // it ends its lines
        clock.after(700, [this, method] { channels.say(method, "2\r\n"); });
        EXPECT_EQ(board.link().ask(u"ADC?  1"_s, 0), u"1,2"_s) << method;
        answerQueriesWith("25");
        EXPECT_EQ(board.link().ask(u"ADC?  1"_s, 0), u"25"_s) << method;
        EXPECT_TRUE(board.statusPanels[1]->toolTip().contains(boardTexts::cutAnswer));
    }
}

TEST_F(BoardLinkTest, ALoneLineEndIsNoAnswer)
{
    answerQueriesWith("\r\n");
    for (const int method : {0, 1, 2}) {
        board.OptSbcCommMeth_Click(method);
        EXPECT_EQ(board.link().ask(u"ADC?"_s, 0), QString());
        EXPECT_EQ(shown(board, "StatusBar1_2"), u"NO RESPONSE"_s);
    }
}

TEST_F(BoardLinkTest, AStaleReceiveBoxIsClearedBeforeSendingButNotOnGpib)
{
    {
        const QSignalBlocker serial(&channels.rs232);
        const QSignalBlocker tcp(&channels.tcpClient1);
        channels.rs232.feed("unread");
        channels.tcpClient1.feed("unread");
    }
    channels.setResponses("stale");
    for (const int method : {0, 1, 2}) {
        board.OptSbcCommMeth_Click(method);
        QString text = u"L 1"_s;
        board.link().OutputToSbc(text);
    }
    for (int index = 0; index < channelCount; ++index) {
        const bool isCleared = index == channels::rs232 || index == channels::tcpIp1;
        EXPECT_EQ(channels.set.at(index).response().bytes(), isCleared ? "" : "stale") << index;
    }
    EXPECT_TRUE(channels.rs232.input().isEmpty() && channels.tcpClient1.getData().isEmpty());
    channels.setResponses("of the command before");
    QString text = u"ADC?"_s;
    board.link().OutputToSbc(text, [] { return true; });
    board.link().InputFromSbc(text);
    EXPECT_EQ(text, QString()) << "to a command that did not go out";
}

TEST_F(BoardLinkTest, AClosedChannelOrAFaultEndsInNoResponseAndTellsWhy)
{
    channels.rs232.setPortOpen(false);
    channels.tcpClient1.setState(SocketState::Closed);
    channels.bus.fault = u"no adapter"_s;
    for (const int method : {0, 1, 2}) {
        board.OptSbcCommMeth_Click(method);
        QString text = u"ADC?"_s;
        board.link().OutputToSbc(text);
        EXPECT_EQ(shown(board, "StatusBar1_2"), u"NO RESPONSE"_s);
        board.link().InputFromSbc(text);
        EXPECT_EQ(text, QString());
        EXPECT_EQ(shown(board, "StatusBar1_2"), u"NO RESPONSE"_s);
        EXPECT_TRUE(board.statusPanels[1]->toolTip().startsWith(u"<qt>"_s)) << method;
    }
}

TEST_F(BoardLinkTest, AChannelThatTheMainWindowUsesIsLeftAlone)
{
    channels.setResponses("the list's reply");
    for (const int method : {0, 1, 2}) {
        channels.set.users().claim(method + channels::rs232, ChannelUse::List);
        board.OptSbcCommMeth_Click(method);
        QString text = u"ADC?"_s;
        board.link().OutputToSbc(text);
        board.link().InputFromSbc(text);
        EXPECT_EQ(text, QString());
        EXPECT_TRUE(board.link().fault().contains(u"a command list is running"_s));
    }
    EXPECT_TRUE(channels.bus.calls.isEmpty() && channels.commands().isEmpty());
}

TEST_F(BoardLinkTest, ANegativeOrEmptyPauseReturnsAtOnce)
{
    const quint32 before = clock.MS_TIMER();
    for (const qint16 ms : std::initializer_list<qint16>{0, -1, -32768})
        board.link().PauseMS(ms);
    EXPECT_EQ(clock.MS_TIMER(), before);
    board.link().PauseMS(32767);
    EXPECT_EQ(clock.MS_TIMER(), before + 32767);
}

TEST_F(BoardLinkTest, TheMeterIsAddressedReadAfterTwoSecondsAndTheBoardAddressedAgain)
{
    channels.meter = {"-1.25E+0V\n"};
    WaitGroup waits(clock);
    EXPECT_EQ(ReadMeterValue(channels.gpib, waits, 16), -1.25F);
    EXPECT_EQ(channels.bus.calls, latin({"open GPIB0::16", "write GPIB0::16 data?\r",
                                         "read GPIB0::16", "open GPIB0::5"}));
    EXPECT_EQ(clock.waits, (Waits{1000, 1000}));
}

TEST_F(BoardLinkTest, WhatWasSentKeepsItsChannelThoughTheMethodWasChangedBeforeItWentOut)
{
    board.OptSbcCommMeth_Click(0);
    answerQueriesWith("");
    const auto operation = board.session().begin();
    board.link().ask(u"ADC?  0"_s, 0);
    clock.after(300, [this] { board.OptSbcCommMeth_Click(1); }); // waits for the late answer
    QString command = u"DAC?  1"_s;
    board.link().OutputToSbc(command);
    EXPECT_TRUE(channels.set.users().isUsed(corvane::channels::rs232, ChannelUse::Board));
}

TEST_F(BoardLinkTest, AMeterWithoutANumberReadsAsZeroAndAHugeOneAsInfinite)
{
    WaitGroup waits(clock);
    channels.meter = {"OVERFLOW", "1e40", "-1e40"};
    EXPECT_EQ(ReadMeterValue(channels.gpib, waits, 16), 0.0F);
    EXPECT_EQ(ReadMeterValue(channels.gpib, waits, 16), INFINITY);
    EXPECT_EQ(ReadMeterValue(channels.gpib, waits, 16), -INFINITY);
    EXPECT_EQ(ReadMeterValue(channels.gpib, waits, 16), 0.0F); // silent
}

TEST_F(BoardLinkTest, TheBoardsAddressComesBackOnEveryWayOut)
{
    const QString address = u"GPIB0::"_s; // the board is on another Channel
    channels.gpib.setConnectString(address);
    channels.meter = {"2.0"};
    WaitGroup waits(clock);
    EXPECT_EQ(ReadMeterValue(channels.gpib, waits, 16), 2.0F);
    EXPECT_EQ(channels.gpib.connectString(), address);

    EXPECT_THROW(ReadMeterValue(channels.gpib, waits, 99), PlatformError);
    EXPECT_EQ(channels.gpib.connectString(), address);

    channels.bus.calls.clear();
    clock.after(500, [&waits] { waits.close(); });
    EXPECT_EQ(ReadMeterValue(channels.gpib, waits, 16), 0.0F);
    EXPECT_EQ(channels.gpib.connectString(), address);
    EXPECT_EQ(channels.bus.calls, latin({"open GPIB0::16"})); // nothing after the close
}
