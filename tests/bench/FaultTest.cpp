// SPDX-License-Identifier: GPL-3.0-or-later
#include "BenchSupport.h"
#include "bench/FaultLine.h"

using namespace corvane::bench;

namespace {

/// A reply that would go out whole and at once, as it goes out.
std::string spoilt(FaultLine &line, const QByteArray &reply)
{
    return written(line.spoil({{0, reply, true}}).pieces);
}

} // namespace

TEST(Faults, AreReadFromTextAndWrittenBack)
{
    for (const char *text :
         {"none", "silent once", "slow 20 once", "late", "split 5", "garbage",
          "garbage 1e40,a b\\x0d once", "twice 0", "noend", "drop", "flood 5 1", "unplug"})
        EXPECT_EQ(parsed(text).toString().toStdString(), text);
    EXPECT_EQ(parsed(" SILENT "), parsed("silent"));
    EXPECT_EQ(parsed("slow"), parsed("slow 500"));
    EXPECT_EQ(parsed("flood"), parsed("flood 10000000 4096"));
    EXPECT_EQ(parsed("garbage a\\r").text, "a\r");
    for (const char *text : {"", "loud", "once", "slow fast", "slow -1", "slow 1 2", "silent 3",
                             "flood 0", "flood 1 0", "flood 1000000000", "flood 1 2 3"})
        EXPECT_FALSE(Fault::parse(QLatin1String(text))) << text;
}

TEST(Faults, SpoilARepliesPiecesAndTimes)
{
    struct Row
    {
        const char *fault;
        const char *reply;
        const char *pieces;
    };
    const Row rows[] = {{"none", "ABCD\r\n", "0:ABCD\r\n$"},
                        {"silent", "ABCD\r\n", ""},
                        {"slow 300", "ABCD\r\n", "300:ABCD\r\n$"},
                        {"twice 40", "ABCD\r\n", "0:ABCD\r\n$|40:ABCD\r\n$"},
                        {"noend", "ABCD\r\n", "0:ABCD"},
                        {"split 9", "ABCD\r\n", "0:AB|9:CD|9:\r|9:\n$"},
                        {"split 9", "<05:ABCD\r\n", "0:<0|9:5:A|9:BCD|9:\r|9:\n$"},
                        {"split 9", "A\r\n", "0:A|9:\r|9:\n$"},
                        {"split 9", "\r\n", "0:\r|9:\n$"},
                        {R"(garbage 1\r\n\\\x41\xfe\q)", "A\r\n", "0:1\r\n\\A\xfe\\q\r\n$"},
                        {"garbage what\\", "A\r\n", "0:what\\\r\n$"},
                        {"unplug", "ABCD\r\n", ""}};
    for (const Row &row : rows) {
        FaultLine line;
        line.order(parsed(row.fault));
        EXPECT_EQ(spoilt(line, row.reply), row.pieces) << row.fault;
        EXPECT_EQ(spoilt(line, row.reply), row.pieces) << row.fault << ", again";
    }
}

TEST(Faults, KeepTheTimesOfAReplyInPiecesWhereTheyCan)
{
    const Pieces reply{{30, "AB", false}, {7, "CD\r", true}};
    for (const auto &[fault, pieces] :
         {std::pair("none", "30:AB|7:CD\r$"), std::pair("slow 5", "35:AB|7:CD\r$"),
          std::pair("twice 9", "30:AB|7:CD\r$|39:AB|7:CD\r$"),
          std::pair("split 2", "30:AB|2:CD|2:\r$"), std::pair("noend", "30:ABCD"),
          std::pair("garbage x", "30:x\r\n$")}) {
        FaultLine line;
        line.order(parsed(fault));
        EXPECT_EQ(written(line.spoil(reply).pieces), pieces) << fault;
    }
    FaultLine slow;
    slow.order(parsed("slow"));
    using Turn = TimedPiece::Turn;
    EXPECT_EQ(slow.spoil({{0, "A", true, Turn::Reply}}).pieces.front().turn, Turn::Next);
}

TEST(Faults, ALateReplyComesWithTheNextCommand)
{
    FaultLine line;
    line.order(parsed("late"));
    EXPECT_EQ(spoilt(line, "1"), "");
    EXPECT_EQ(spoilt(line, "2"), "0:1$");
    EXPECT_EQ(spoilt(line, "3"), "0:2$");
    line.order(parsed("late once"));
    EXPECT_EQ(spoilt(line, "4"), "");
    EXPECT_EQ(spoilt(line, "5"), "0:4$|0:5$");
    EXPECT_EQ(spoilt(line, "6"), "0:6$");
}

TEST(Faults, ActOnceWhereTheyAreOrderedSoOrCannotDoOtherwise)
{
    for (const char *fault : {"silent once", "drop", "flood 10"}) {
        FaultLine line;
        line.order(parsed(fault));
        EXPECT_EQ(spoilt(line, "1"), "") << fault;
        EXPECT_EQ(spoilt(line, "2"), "0:2$") << fault;
    }
}
