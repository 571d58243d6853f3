#include "Faults.h"
#include "Pty.h"
#include "ScriptedController.h"
#include "platform/GpibAdapterFactory.h"
#include "platform/PlusPlusReply.h"
#include "platform/SystemClock.h"
#include "platform/WaitGroup.h"

#include <QElapsedTimer>
#include <QTimer>

#include <gtest/gtest.h>

using namespace corvane;
using Fault = ScriptedController::Fault;

class PlusPlusAdapterTest : public testing::Test
{
protected:
    static constexpr int timeoutMs = 300;

    PlusPlusAdapterTest()
    {
        const GpibAdapterChoice choice{.kind = GpibAdapterChoice::Kind::Tcp,
                                       .host = QStringLiteral("127.0.0.1"),
                                       .port = controller.serverPort()};
        adapter = GpibAdapterFactory().make(choice, 0);
    }

    QByteArray ask(const QByteArray &question)
    {
        adapter->write(meter, question, timeoutMs, waits);
        return adapter->read(meter, timeoutMs, waits);
    }

    ScriptedController controller;
    SystemClock clock;
    WaitGroup waits{clock};
    std::unique_ptr<GpibAdapter> adapter;
    const GpibAddress meter{0, 5, {}};
};

TEST_F(PlusPlusAdapterTest, SetsTheControllerUpOnceAndEscapesWhatHasAMeaning)
{
    controller.replies = {"12.5\r\n"};
    EXPECT_EQ(ask("a+\r\n\x1b\xff"), "12.5\r\n");
    adapter->clear({0, 7, 96}, waits);
    EXPECT_EQ(adapter->version(waits), u"AR488 GPIB controller, ver. 0.53");
    EXPECT_EQ(
        controller.lines,
        (QByteArrayList{"++ver", "++mode 1", "++auto 0", "++eoi 1", "++eos 3", "++eot_enable 0",
                        "++addr 5", "a\x1b+\x1b\r\x1b\n\x1b\x1b\xff", "++read_tmo_ms 300",
                        "++read eoi", "++ver", "++addr 7 96", "++clr", "++ver"}));
    EXPECT_EQ(controller.connections, 1);
    EXPECT_EQ(adapter->description(),
              QStringLiteral("\"++\" controller at 127.0.0.1:%1").arg(controller.serverPort()));
}

TEST_F(PlusPlusAdapterTest, LongTimeOutsAreReadInSlicesThatEveryControllerTakes)
{
    controller.versionText = "Prologix GPIB-ETHERNET Controller version 01.06.06.00\r\n";
    adapter->write(meter, "?", 59999, waits);
    QTimer::singleShot(100, &controller, [this] { waits.close(); });
    EXPECT_EQ(adapter->read(meter, 59999, waits), "");
    EXPECT_TRUE(controller.lines.contains("++read_tmo_ms 3000"));
    EXPECT_EQ(controller.lines[1], "++savecfg 0"); // this maker's would save every setting
    waits.reopen();
    controller.replies = {"fresh"};
    EXPECT_EQ(ask("?"), "fresh"); // nothing of the cancelled read is left
    EXPECT_EQ(controller.connections, 2);
}

TEST_F(PlusPlusAdapterTest, FaultyControllersNeverHoldAReadLongerThanASecondPastItsTime)
{
    // Fault, the device's reply, what is read, what the error says, the latest end in ms.
    const std::tuple<Fault, QByteArray, QByteArray, const char *, int> rows[] = {
        {Fault::None, "", "", nullptr, timeoutMs},
        {Fault::Mute, "x", "", "does not answer any more", timeoutMs + 1000},
        {Fault::Gone, "x", "", "went away", 200},
        {Fault::Late, "late\n", "late\n", nullptr, timeoutMs},
        {Fault::Twice, "once\n", "once\n", nullptr, 200},
        {Fault::Garbage, "x", "\x01\xff\x80garbage", nullptr, timeoutMs + 1000},
        {Fault::DropsMark, "12\n", "12\n", nullptr, timeoutMs + 1000},
        {Fault::DropsMark, "", "", nullptr, timeoutMs + 1000},
        {Fault::MarkFirst, "12\n", "12\n", nullptr, 200},
    };
    for (const auto &[fault, reply, expected, said, latestMs] : rows) {
        const int number = static_cast<int>(fault);
        adapter->write(meter, "?", timeoutMs, waits);
        EXPECT_TRUE(waits.wait(20) == WaitEnd::TimedOut);
        controller.fault = fault;
        controller.replies = {reply};
        QElapsedTimer time;
        time.start();
        QByteArray read;
        EXPECT_TRUE(failsSaying(said, [&] { read = adapter->read(meter, timeoutMs, waits); }))
            << number;
        EXPECT_LT(time.elapsed(), latestMs + 150) << number;
        EXPECT_EQ(read, expected) << number;

        controller.fault = Fault::None;
        controller.replies = {"next\n"};
        EXPECT_EQ(ask("?"), "next\n") << number;
    }
}

TEST(PlusPlusReply, TellsTheWholeReplyFromThePartByWhereTheMarkStands)
{
    using End = gpibReply::End;
    using Pieces = std::vector<std::pair<int, QByteArray>>; // when, what
    const std::tuple<Pieces, int, QByteArray, End> rows[] = {
        {{{50, "12.5M\n"}}, 51, "12.5", End::Marked},
        {{{50, "12."}, {340, "5M"}, {341, "\n"}}, 342, "12.5", End::Marked},
        {{{50, "12."}, {350, "M\n"}}, 351, "12.", End::TimedOut},
        {{{50, "12."}, {340, "M"}, {341, "\n"}}, 342, "12.", End::TimedOut},
        // A mark before its time is no end: the reply follows.
        {{{5, "M\n"}, {60, "12"}, {70, ".5\n"}}, 71, "12.5\n", End::Unmarked},
        {{{5, "M\n"}, {60, "12"}}, 461, "12", End::Unmarked},
    };
    for (const auto &[pieces, endMs, text, end] : rows) {
        PlusPlusReply reply("M\n", true, 300, 300);
        for (const auto &[ms, bytes] : pieces) {
            EXPECT_EQ(reply.judge(ms - 1), PlusPlusReply::Verdict::Pending) << text.toStdString();
            reply.append(bytes, ms);
        }
        EXPECT_EQ(reply.judge(endMs), PlusPlusReply::Verdict::Complete) << text.toStdString();
        EXPECT_EQ(reply.text(), text);
        EXPECT_EQ(reply.end(), end) << text.toStdString();
    }
    PlusPlusReply flood("M\n", true, 300, 300);
    flood.append(QByteArray(gpibReply::longest + 1, 'x'), 10);
    EXPECT_EQ(flood.judge(11), PlusPlusReply::Verdict::Complete);
    EXPECT_TRUE(flood.end() == End::TooLong && flood.isCut());
    const std::tuple<End, const char *, const char *> said[] = {
        {End::Marked, "12.", ""},
        {End::TimedOut, "", ""},
        {End::TimedOut, "1\n", ""},
        {End::TimedOut, "1", "did not come in time"},
        {End::Unmarked, "1\n", ""},
        {End::Unmarked, "1", "may be incomplete"},
        {End::Endless, "1\n", "still sending"},
        {End::TooLong, "1\n", "cut after 16 MB"}};
    for (const auto &[end, text, why] : said) {
        const QString told = gpibReply::whyIncomplete(text, end);
        EXPECT_TRUE(*why == 0 ? told.isEmpty() : told.contains(QLatin1String(why))) << why;
    }
}

TEST_F(PlusPlusAdapterTest, ADeviceThatTalksWithoutEndIsCut)
{
    controller.fault = Fault::Endless;
    QElapsedTimer time;
    time.start();
    EXPECT_TRUE(ask("?").startsWith("endless endless "));
    EXPECT_LT(time.elapsed(), timeoutMs + 1300);
    EXPECT_EQ(adapter->replyEnd(), gpibReply::End::Endless);
    controller.fault = Fault::None;
    controller.replies = {"12\n"};
    EXPECT_EQ(ask("?"), "12\n");
    EXPECT_EQ(controller.connections, 2);
}

TEST_F(PlusPlusAdapterTest, AControllerThatCannotBeReachedIsAFaultThatSaysSo)
{
    controller.fault = Fault::Mute;
    EXPECT_TRUE(failsSaying("not answer \"++ver\"", [this] { adapter->open(meter, waits); }));
    controller.close();
    EXPECT_TRUE(failsSaying("refused", [this] { adapter->write(meter, "x", 100, waits); }));
    waits.close();
    EXPECT_EQ(adapter->read(meter, timeoutMs, waits), "");
    EXPECT_EQ(adapter->version(waits), QString());
}

TEST_F(PlusPlusAdapterTest, ASerialControllerIsGivenTimeToStartAndSmallPieces)
{
    const Pty far;
    QByteArray sent;
    QTimer answer;
    QObject::connect(&answer, &QTimer::timeout, &answer, [&] {
        const QByteArray news = far.read();
        EXPECT_LE(news.size(), 250);
        sent += news;
        if (news.contains("++ver"))
            far.write("AR488\r\n");
    });
    answer.start(1);
    QTimer::singleShot(500, &answer, [&far] { far.write("boot noise"); });
    const auto serial = GpibAdapterFactory().make(
        {.kind = GpibAdapterChoice::Kind::Serial, .device = far.device()}, 0);
    serial->write(meter, QByteArray(200, 'x'), timeoutMs, waits);
    EXPECT_EQ(serial->version(waits), u"AR488");
    EXPECT_TRUE(sent.startsWith("++ver\n++mode 1\n"));
    EXPECT_TRUE(sent.contains("++addr 5\n" + QByteArray(200, 'x') + '\n'));
    const auto missing = GpibAdapterFactory().make(
        {.kind = GpibAdapterChoice::Kind::Serial, .device = QStringLiteral("/dev/no")}, 0);
    EXPECT_TRUE(
        failsSaying("GPIB controller: /dev/no: there", [&] { missing->open(meter, waits); }));
}

TEST(GpibAdapterChoice, IsReadAndWrittenAsText)
{
    using Kind = GpibAdapterChoice::Kind;
    EXPECT_EQ(
        GpibAdapterChoice::parse(QStringLiteral("tcp:[fe80::1]:99")),
        (GpibAdapterChoice{.kind = Kind::Tcp, .host = QStringLiteral("fe80::1"), .port = 99}));
    EXPECT_EQ(GpibAdapterChoice::parse(QStringLiteral("library:3")),
              (GpibAdapterChoice{.kind = Kind::Library, .libraryBoard = 3}));
    // The setup window's test takes every other kind through its text and back.
    const char *const rows[][2] = {{" Auto ", "auto"},
                                   {"tcp:box", "tcp:box:1234"},
                                   {"tcp:[::1]", "tcp:[::1]:1234"},
                                   {"serial:/dev/a:b", "serial:/dev/a:b"},
                                   {"library:0", "library:0"}};
    for (const auto &[text, written] : rows)
        EXPECT_EQ(GpibAdapterChoice::parse(QLatin1String(text)).toString(), QLatin1String(written));
    const char *const faults[][2] = {{"", "it must be"},        {"usb", "it must be"},
                                     {"tcp", "a host"},         {"tcp::1", "a host"},
                                     {"tcp:a:0", "port \"0\""}, {"tcp:a:x", "port \"x\""},
                                     {"serial:", "a device"},   {"library:16", "number \"16\""},
                                     {"visa:1", "nothing may"}, {"auto:x", "nothing may"}};
    for (const auto &[text, said] : faults)
        EXPECT_TRUE(failsSaying(said, [&] { GpibAdapterChoice::parse(QLatin1String(text)); }));
}
