// SPDX-License-Identifier: GPL-3.0-or-later
#include "BenchSupport.h"
#include "bench/PlusPlusController.h"
#include "bench/TcpPort.h"

using namespace corvane::bench;

namespace {

/// Keeps what it was told; a line that ends in "?" is answered with itself.
class NotingDevice : public BenchDevice
{
public:
    std::optional<QByteArray> answer(const QByteArray &line) override
    {
        heard.append(line);
        return line.endsWith('?') ? std::optional(line) : std::nullopt;
    }
    QList<QByteArray> heard;
};

class PlusPlus : public testing::Test
{
protected:
    PlusPlus()
    {
        controller.setVersion("V1");
        controller.connectStation(5, five);
        controller.connectStation(9, nine);
        QObject::connect(&port, &TcpPort::opened, &controller, &PlusPlusController::attach);
        EXPECT_TRUE(port.listen(0));
    }
    /// Sends the lines, and "++ver" to see that nothing else comes before its reply.
    void dialogue(const QByteArray &lines, const QByteArray &replies)
    {
        if (!user)
            user = std::make_unique<TcpUser>(port.port());
        SCOPED_TRACE(lines.toStdString());
        user->send(lines + "++ver\n");
        user->expect(replies + "V1\r\n");
    }

    NotingDevice atFive;
    NotingDevice atNine;
    GpibStation five{atFive};
    GpibStation nine{atNine};
    PlusPlusController controller;
    TcpPort port;
    std::unique_ptr<TcpUser> user;
};

} // namespace

TEST_F(PlusPlus, AReplyWaitsAtItsAddressUntilItIsRead)
{
    dialogue("++addr 5\nA?\n++addr 9\nB?\n++read eoi\n++addr 5\n++read eoi\n", "B?\r\nA?\r\n");
    dialogue("C?\nD?\n++read eoi\n++read_tmo_ms 20\n++read eoi\n", "D?\r\n");
    dialogue("E?\n++clr\n++read eoi\n", "");
}

TEST_F(PlusPlus, EscapedBytesReachTheDeviceAsTheyAreInMessagesThatEndAsSet)
{
    dialogue("++addr 5\n\x1b+\x1b+ver\n", "");
    dialogue("a+b++c\x1b\x1b\n+\x1b+x\n\n\r\n+y\n", "");
    // An escaped line end is the device's own and ends its first command.
    dialogue("one\x1b\rtwo\x1b\n\n", "");
    EXPECT_EQ(atFive.heard, (QList<QByteArray>{"++ver", "a+b++c\x1b", "++x", "+y", "one", "two"}));
    // A message ends by its mark or by its terminator.
    atFive.heard.clear();
    dialogue("++eoi 0\nA\nB\n++eos 1\nC\n++eoi 1\n++eos 3\nD\n", "");
    EXPECT_EQ(atFive.heard, (QList<QByteArray>{"ABC", "D"}));
}

TEST_F(PlusPlus, TheTimeOutCountsFromByteToByte)
{
    five.faults().order(parsed("split 60"));
    dialogue("++addr 5\n++read_tmo_ms 100\nABCD?\n++read eoi\n", "ABCD?\r\n");
    dialogue("++read_tmo_ms 30\nABCD?\n++read eoi\n", "AB");
}

TEST_F(PlusPlus, FaultsOfAnInstrumentShowAtItsAddressOnly)
{
    const auto order = [this](const char *fault) {
        five.clear();
        five.faults().order(parsed(fault));
    };
    dialogue("++addr 5\n++read_tmo_ms 20\n", "");
    order("silent");
    dialogue("A?\n++read eoi\n", "");
    order("twice once");
    dialogue("A?\n++read eoi\nB?\n++read eoi\n++read eoi\nC?\n++read eoi\n",
             "A?\r\nA?\r\nB?\r\nC?\r\n");
    order("late");
    dialogue("A?\n++read eoi\nB?\n++read eoi\n", "A?\r\n");
    order("slow 60");
    const QSignalSpy late(&five, &GpibStation::ready);
    dialogue("A?\n++read eoi\n", "");
    EXPECT_TRUE(soon([&late] { return !late.empty(); }));
    dialogue("++read eoi\n", "A?\r\n");
    order("noend");
    dialogue("A?\n++read eoi\n", "A?");
    order("flood 300000");
    dialogue("++addr 9\nA?\n++read eoi\n++addr 5\n", "A?\r\n");
    user->send("A?\n++read eoi\n++ver\n");
    EXPECT_TRUE(soon([&] { return user->input().size() >= 300'004; }));
    user->clear();
    order("none");
    five.unplug();
    dialogue("A?\n++read eoi\n", "");
    five.replug();
    dialogue("A?\n++read eoi\n", "A?\r\n");
}

TEST_F(PlusPlus, FaultsOfTheControllerItselfSpoilItsReplies)
{
    const auto order = [this](const char *fault) { controller.faults().order(parsed(fault)); };
    dialogue("", "");
    order("twice");
    dialogue("", "V1\r\n");
    order("garbage ?");
    user->send("++ver\n");
    user->expect("?\r\n");
    order("drop");
    user->send("++ver\n++ver\n");
    EXPECT_TRUE(soon([&] { return !user->connected(); }));
    user.reset();
    dialogue("", "");
}

TEST_F(PlusPlus, SettingsOutliveTheConnectionAndACutReadDisturbsNobody)
{
    dialogue("++addr 7\n++read_tmo_ms 3000\n", "");
    user->send("++addr 5\nheard\n++addr 7\n++read eoi\n++addr 9\n");
    EXPECT_TRUE(soon([this] { return atFive.heard.contains("heard"); }));
    user.reset();
    dialogue("++addr\n", "7\r\n");
}
