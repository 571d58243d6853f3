#include "BenchSupport.h"
#include "bench/FaultLine.h"

using namespace corvane::bench;

namespace {

/// The pieces as "ms:bytes|ms:bytes", the end marked "$".
std::string written(const SpoiltReply &reply)
{
    QByteArray text;
    for (const TimedPiece &piece : reply.pieces) {
        text += (text.isEmpty() ? "" : "|") + QByteArray::number(piece.afterMs) + ':' +
                piece.bytes + (piece.end ? "$" : "");
    }
    return text.toStdString();
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
                        {"garbage 1\\r\\n\\\\\\x41\\xfe\\q", "A\r\n", "0:1\r\n\\A\xfe\\q\r\n$"},
                        {"garbage what\\", "A\r\n", "0:what\\\r\n$"},
                        {"unplug", "ABCD\r\n", ""}};
    for (const Row &row : rows) {
        FaultLine line;
        line.order(parsed(row.fault));
        EXPECT_EQ(written(line.spoil(row.reply)), row.pieces) << row.fault;
        EXPECT_EQ(written(line.spoil(row.reply)), row.pieces) << row.fault << ", again";
    }
}

TEST(Faults, ALateReplyComesWithTheNextCommand)
{
    FaultLine line;
    line.order(parsed("late"));
    EXPECT_EQ(written(line.spoil("1")), "");
    EXPECT_EQ(written(line.spoil("2")), "0:1$");
    EXPECT_EQ(written(line.spoil("3")), "0:2$");
    line.order(parsed("late once"));
    EXPECT_EQ(written(line.spoil("4")), "");
    EXPECT_EQ(written(line.spoil("5")), "0:4$|0:5$");
    EXPECT_EQ(written(line.spoil("6")), "0:6$");
}

TEST(Faults, ActOnceWhereTheyAreOrderedSoOrCannotDoOtherwise)
{
    for (const char *fault : {"silent once", "drop", "flood 10"}) {
        FaultLine line;
        line.order(parsed(fault));
        EXPECT_TRUE(line.spoil("1").pieces.empty()) << fault;
        EXPECT_EQ(written(line.spoil("2")), "0:2$") << fault;
    }
}
