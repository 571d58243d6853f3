// SPDX-License-Identifier: GPL-3.0-or-later
#include "bench/Replay.h"

#include "ReplaySupport.h"

#include <termios.h>

using namespace Qt::StringLiterals;

using namespace corvane::bench;

namespace {

class ReplayedDesk : public testing::Test
{
protected:
    void replay(const QList<QByteArray> &rows, std::optional<quint16> secondGpibPort = std::nullopt)
    {
        Recording recording = RecordingFile().write(rows).read();
        recording.path = u"site.jsonl"_s;
        BenchOptions options;
        options.chamberPort = 0;
        options.gpibPort = 0;
        options.secondGpibPort = secondGpibPort;
        desk = std::make_unique<Replay>(std::move(recording), Replay::Pace::Recorded, options);
        QObject::connect(desk.get(), &Desk::said, [this](const QString &text) { said += text; });
        EXPECT_TRUE(desk->start()) << desk->errorString().toStdString();
    }
    void start(std::optional<quint16> secondGpibPort = std::nullopt)
    {
        const QList<QByteArray> tcp{
            "0 TCP/IP-1 + h:1", "1 TCP/IP-1 < hello\r\n", "2 TCP/IP-1 > A\r",  "3 TCP/IP-1 < 1",
            "4 TCP/IP-1 < \r",  "5 TCP/IP-1 > A\r",       "6 TCP/IP-1 < 2\r\n"};
        const QList<QByteArray> serial{"7 RS-485 + p", "8 RS-485 < up\r\n", "9 RS-485 > >07 B\r",
                                       "10 RS-485 < <07:b"};
        // The reply at 16 is read after another instrument was addressed.
        const QList<QByteArray> gpib{
            "11 IEEE 488 @ GPIB1::16", "12 IEEE 488 > C",       "13 IEEE 488 @ GPIB1::5",
            "14 IEEE 488 > B\rC",      "15 IEEE 488 < c",       "16 IEEE 488 < 5",
            "17 IEEE 488 @ GPIB1::16", "18 IEEE 488 < c16\r\n", "19 IEEE 488 @ GPIB3::5",
            "20 IEEE 488 > C\r",       "21 IEEE 488 < far",     "22 IEEE 488 @ GPIB1::5::126",
            "23 IEEE 488 > C\r",       "24 IEEE 488 < slot"};
        replay(tcp + serial + gpib, secondGpibPort);
    }
    std::string order(const char *text) { return desk->order(QLatin1String(text)).toStdString(); }
    [[nodiscard]] quint16 portOf(size_t entries) const
    {
        return desk->entries().at(entries).port.toUShort();
    }

    std::unique_ptr<Replay> desk;
    QStringList said;
};

} // namespace

TEST_F(ReplayedDesk, AnswersOnTcpAsRecordedAndSaysWhatWasNot)
{
    start();
    TcpUser user(portOf(2));
    user.expect("hello\r\n");
    user.send("A\r");
    user.expect("1\r");
    user.send("x\\\x01\rA\r");
    user.expect("2\r\n");
    EXPECT_EQ(said.join(u'|').toStdString(), R"(not in the recording, on TCP/IP-1: "x\\\x01")");
    EXPECT_NE(order("list").find(R"(1 unknown request, the last on TCP/IP-1: "x\\\x01")"),
              std::string::npos);
    EXPECT_EQ(order("tcp1 silent once"), "done");
    user.send("A\rA\r");
    user.expect("2\r\n");
    EXPECT_EQ(order("rewind"), "done");
    TcpUser second(portOf(2));
    second.send("A\r");
    second.expect("1\r"); // and no greeting
}

TEST_F(ReplayedDesk, NothingThatStillWaitsHoldsUpAReply)
{
    // Unasked: a greeting, and what came a minute after a reply.
    replay({"0 TCP/IP-1 + h:1", "60000 TCP/IP-1 < ready\r\n", "61000 TCP/IP-1 > A\r",
            "61001 TCP/IP-1 < a\r\n", "130000 TCP/IP-1 < ALARM\r\n", "200000 TCP/IP-1 > B\r",
            "200900 TCP/IP-1 < b", "201000 TCP/IP-1 < \r\n", "300000 TCP/IP-1 > C\r",
            "360000 TCP/IP-1 < c\r\n", "400000 IEEE 488 @ GPIB0::5", "400001 IEEE 488 > A\r",
            "460000 IEEE 488 < a\r\n", "460001 IEEE 488 > B\r", "460002 IEEE 488 < b\r\n"});
    TcpUser user(portOf(1));
    user.send("A\r");
    user.expect("a\r\n");
    // A reply that is not there yet, or not whole, comes before the next one.
    user.send("C\rB\rA\r");
    user.expect("c\r\nb\r\na\r\n");
    TcpUser gpib(desk->gpibAdapters().value(0).section(u':', -1).toUShort());
    gpib.send("++addr 5\nA\nB\n++read eoi\n");
    gpib.expect("b\r\n");
}

TEST(PieceQueue, WhatIsUnaskedAndAReplyDoNotComeInsideEachOther)
{
    using enum TimedPiece::Turn;
    QByteArrayList sent;
    PieceQueue queue([&sent](const TimedPiece &piece) { sent.append(piece.bytes); });
    queue.add({{0, "n", true, Reply}, {20, "late", true, Unasked}});
    queue.add({{0, "a", false, Reply}, {60, "b", true, Rest}});
    EXPECT_TRUE(soon([&] { return sent.size() == 4; }));
    queue.add({{10, "AL", false, Unasked}, {200, "ARM", true, Rest}});
    queue.add({{50, "c", true, Reply}});
    EXPECT_TRUE(soon([&] { return sent.size() == 7; }));
    queue.add({{20, "slow", true}}); // by a fault: nothing hurries it
    queue.add({{0, "d", true, Reply}});
    EXPECT_TRUE(soon([&] { return sent.size() == 9; }));
    EXPECT_EQ(sent.join('|').toStdString(), "n|a|b|late|AL|ARM|c|slow|d");
}

TEST_F(ReplayedDesk, GreetsOnASerialPortWhenItsUserIsThere)
{
    start();
    EXPECT_EQ(desk->entries().at(0).address, u"07");
    PtyUser user(desk->serialDevices().value(1));
    termios settings{};
    ::tcgetattr(user.descriptor(), &settings);
    ::cfsetspeed(&settings, B9600);
    ::tcsetattr(user.descriptor(), TCSANOW, &settings);
    user.expect("up\r\n");
    user.send(">07 B\r>08 B\r>07 B\r");
    user.expect("<07:b<07:b");
    EXPECT_EQ(said.size(), 1);
}

TEST_F(ReplayedDesk, EachRecordedAddressAnswersOnItsBoardsController)
{
    start(0);
    EXPECT_EQ(desk->entries().at(1).address, u"GPIB1::5");
    EXPECT_EQ(desk->programArguments().mid(2).filter(u"--gpib"_s).size(), 2);
    const auto portOfBoard = [this](int board) {
        return desk->gpibAdapters().value(board).section(u':', -1).toUShort();
    };
    TcpUser first(portOfBoard(1));
    first.send("++addr 16\nC\n++read eoi\n++addr 5\nC\n++read eoi\n++addr 6\nC\n++ver\n");
    first.expect("c16\r\nc5Bench GPIB controller version 1.0\r\n");
    first.send("++addr 5 126\nC\n++read eoi\n++addr 5 96\nC\n++ver\n");
    first.expect("slotBench GPIB controller version 1.0\r\n");
    EXPECT_EQ(said, (QStringList{uR"(not in the recording, on GPIB1::6: "C")"_s,
                                 uR"(not in the recording, on GPIB1::5::96: "C")"_s}));
    EXPECT_EQ(order("gpib:5:126 silent"), "done");
    TcpUser second(portOfBoard(3));
    second.send("++addr 5\nC\n++read eoi\n");
    second.expect("far");
    EXPECT_EQ(order("gpib2:5 silent"), "done");

    start();
    EXPECT_NE(order("list").find("site.jsonl: 8 exchanges\nGPIB3::5 is not replayed"),
              std::string::npos);
    EXPECT_EQ(order("gpib2 silent").find("There is no order and no place"), 0U);
    EXPECT_EQ(order("connector on").find("There is no order"), 0U) << "there is no board";
}
