// SPDX-License-Identifier: GPL-3.0-or-later
#include "bench/DeviceLink.h"

#include "BenchSupport.h"
#include "bench/FloodPattern.h"
#include "bench/LineReader.h"
#include "bench/TcpPort.h"

using namespace corvane::bench;

namespace {

/// Keeps each piece that it is given.
class NotedStream : public ByteStream
{
public:
    void send(const QByteArray &bytes) override { sent.append(bytes); }
    [[nodiscard]] qint64 backlog() const override { return 0; }
    void dropPeer() override {}

    QByteArrayList sent;
};

class EchoOnTcp : public testing::Test
{
protected:
    EchoOnTcp()
    {
        QObject::connect(&port, &TcpPort::opened, &link, &DeviceLink::attach);
        EXPECT_TRUE(port.listen(0));
    }
    void order(const char *fault) { link.faults().order(parsed(fault)); }

    EchoDevice device;
    DeviceLink link{device};
    TcpPort port;
};

} // namespace

TEST(LineReader, EndsLinesAtCarriageReturnsAndLineFeedsInAnyPieces)
{
    LineReader reader;
    EXPECT_EQ(reader.feed("*ID"), QList<QByteArray>());
    EXPECT_EQ(reader.feed("N?\r\n\r\rA\nB"), (QList<QByteArray>{"*IDN?", "A"}));
    EXPECT_EQ(reader.take(), "B");
    EXPECT_EQ(reader.feed(QByteArray(LineReader::longest + 1, 'x') + "\rC\r"),
              QList<QByteArray>{"C"});
}

TEST_F(EchoOnTcp, AnswersEachOfSeveralClientsWithItsOwnReplies)
{
    TcpUser first(port.port());
    TcpUser second(port.port());
    first.send("on");
    second.send("two\rthree\r");
    first.send("e\r");
    first.expect("one\r\n");
    second.expect("two\r\nthree\r\n");
    EXPECT_EQ(port.state().toStdString(), "2 connected");
    first.send(QByteArray(100'000, 'y') + '\r');
    first.expect(QByteArray(100'000, 'y') + "\r\n");
}

TEST_F(EchoOnTcp, ASlowReplyIsNotThereBeforeItsTimeNorASplitOneWhole)
{
    NotedStream stream;
    link.attach(stream);
    const auto sentAfter = [&](const char *fault, const char *line, int leastMs) {
        order(fault);
        stream.sent.clear();
        QElapsedTimer timer;
        timer.start();
        Q_EMIT stream.received(line);
        EXPECT_TRUE(soon([&] { return stream.sent.join().endsWith('\n'); }));
        EXPECT_GE(timer.elapsed(), leastMs - 1);
        return stream.sent.join('|').toStdString();
    };
    EXPECT_EQ(sentAfter("slow 60", "A\r", 60), "A\r\n");
    EXPECT_EQ(sentAfter("split 10", "<05:ABCD\r", 40), "<0|5:A|BCD|\r|\n");
}

TEST_F(EchoOnTcp, AFloodArrivesWholeWhileOthersAreServedAndEndsByAnotherOrder)
{
    TcpUser user(port.port());
    TcpUser other(port.port());
    order("flood 10000000 4096");
    user.send("go\r");
    EXPECT_TRUE(soon([&] { return !user.input().isEmpty(); }));
    other.send("still here\r");
    other.expect("still here\r\n");
    EXPECT_LT(user.input().size(), 10'000'000);
    EXPECT_TRUE(soon([&] { return user.input().size() >= 10'000'000; }));
    EXPECT_TRUE(user.input() == floodPattern(0, 10'000'000));
    user.clear();
    // A new order ends it.
    order("flood 100000000 64");
    user.send("go\r");
    EXPECT_TRUE(soon([&] { return user.input().size() > 1000; }));
    order("none");
    user.send("quiet\r");
    EXPECT_TRUE(soon([&] { return user.input().endsWith("quiet\r\n"); }));
    EXPECT_LT(user.input().size(), 50'000'000);
}
