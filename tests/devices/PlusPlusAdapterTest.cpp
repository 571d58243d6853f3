// SPDX-License-Identifier: GPL-3.0-or-later
#include "devices/PlusPlusAdapter.h"

#include "Faults.h"
#include "Pty.h"
#include "ScriptedController.h"
#include "devices/GpibAdapterFactory.h"
#include "devices/PlusPlusReply.h"
#include "devices/SystemClock.h"
#include "devices/WaitGroup.h"

#include <QTcpServer>
#include <QTcpSocket>

using namespace corvane;
using Fault = ScriptedController::Fault;

class PlusPlusAdapterTest : public testing::Test
{
protected:
    static constexpr int timeoutMs = 300;

    QByteArray ask(const QByteArray &question)
    {
        adapter.write(meter, question, timeoutMs, waits);
        return adapter.read(meter, timeoutMs, waits);
    }

    FakeClock clock;
    WaitGroup waits{clock};
    std::unique_ptr<ScriptedController> stream = std::make_unique<ScriptedController>(clock);
    ScriptedController &controller = *stream;
    PlusPlusAdapter adapter{std::move(stream)};
    const GpibAddress meter{0, 5, {}};
};

TEST_F(PlusPlusAdapterTest, SetsTheControllerUpOnceAndEscapesWhatHasAMeaning)
{
    controller.replies = {"12.5\r\n"};
    EXPECT_EQ(ask("a+\r\n\x1b\xff"), "12.5\r\n");
    adapter.clear({0, 7, 96}, waits);
    EXPECT_EQ(adapter.version(waits), u"AR488 GPIB controller, ver. 0.53");
    EXPECT_EQ(
        controller.lines,
        (QByteArrayList{"++ver", "++mode 1", "++auto 0", "++eoi 1", "++eos 3", "++eot_enable 0",
                        "++addr 5", "a\x1b+\x1b\r\x1b\n\x1b\x1b\xff", "++read_tmo_ms 300",
                        "++read eoi", "++ver", "++addr 7 96", "++clr", "++ver"}));
    EXPECT_EQ(controller.connections, 1);
    EXPECT_EQ(adapter.description(), u"\"++\" controller at memory"_s);
}

TEST_F(PlusPlusAdapterTest, LongTimeOutsAreReadInSlicesThatEveryControllerTakes)
{
    controller.versionText = "Prologix GPIB-ETHERNET Controller version 01.06.06.00\r\n";
    adapter.write(meter, "?", 59999, waits);
    const quint32 start = clock.MS_TIMER();
    EXPECT_EQ(adapter.read(meter, 59999, waits), "");
    EXPECT_EQ(clock.MS_TIMER() - start, 59999U);
    EXPECT_EQ(controller.lines.count("++read eoi"), 20);
    EXPECT_TRUE(controller.lines.contains("++read_tmo_ms 3000"));
    EXPECT_EQ(controller.lines[1], "++savecfg 0"); // this maker's would save every setting
    clock.after(100, [this] { waits.close(); });
    EXPECT_EQ(adapter.read(meter, 59999, waits), "");
    waits.reopen();
    controller.replies = {"fresh"};
    EXPECT_EQ(ask("?"), "fresh"); // nothing of the cancelled read is left
    EXPECT_EQ(controller.connections, 2);
}

TEST_F(PlusPlusAdapterTest, FaultyControllersNeverHoldAReadLongerThanASecondPastItsTime)
{
    // Fault, the device's reply, what is read, what the error says, when the read ends in ms.
    const std::tuple<Fault, QByteArray, QByteArray, const char *, int> rows[] = {
        {Fault::None, "", "", nullptr, timeoutMs},
        {Fault::Mute, "x", "", "does not answer any more", timeoutMs + 1000},
        {Fault::Gone, "x", "", "went away", 0},
        {Fault::Late, "late\n", "late\n", nullptr, 150},
        {Fault::Twice, "once\n", "once\n", nullptr, 0},
        {Fault::Garbage, "x", "\x01\xff\x80garbage", nullptr, timeoutMs + 400},
        // From here on the mark is not asked for.
        {Fault::DropsMark, "12\n", "12\n", nullptr, 0},
        {Fault::DropsMark, "", "", nullptr, timeoutMs},
        {Fault::MarkFirst, "12\n", "12\n", nullptr, 0},
    };
    for (const auto &[fault, reply, expected, said, endMs] : rows) {
        const int number = static_cast<int>(fault);
        adapter.write(meter, "?", timeoutMs, waits);
        EXPECT_TRUE(waits.wait(20) == WaitEnd::TimedOut);
        controller.fault = fault;
        controller.replies = {reply};
        const quint32 start = clock.MS_TIMER();
        QByteArray read;
        EXPECT_TRUE(failsSaying(said, [&] { read = adapter.read(meter, timeoutMs, waits); }))
            << number;
        EXPECT_EQ(static_cast<int>(clock.MS_TIMER() - start), endMs) << number;
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
        {{{290, "M\n12\n"}}, 291, "12\n", End::Unmarked},
        {{{5, "M"}, {320, "\n1M\n"}}, 321, "1", End::Marked},
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
    const quint32 start = clock.MS_TIMER();
    EXPECT_TRUE(ask("?").startsWith("endless endless "));
    EXPECT_EQ(clock.MS_TIMER() - start, timeoutMs + 1000U);
    EXPECT_EQ(adapter.replyEnd(), gpibReply::End::Endless);
    controller.fault = Fault::None;
    controller.replies = {"12\n"};
    EXPECT_EQ(ask("?"), "12\n");
    EXPECT_EQ(controller.connections, 2);
}

TEST_F(PlusPlusAdapterTest, AControllerThatDoesNotAnswerIsAFaultThatSaysSo)
{
    controller.fault = Fault::Mute;
    EXPECT_TRUE(failsSaying("not answer \"++ver\"", [this] { adapter.open(meter, waits); }));
    waits.close();
    EXPECT_EQ(adapter.read(meter, timeoutMs, waits), "");
    EXPECT_EQ(adapter.version(waits), QString());
}

TEST(PlusPlusOverTcp, AControllerThatGoesAwayOrRefusesIsAFaultThatSaysSo)
{
    SystemClock clock;
    WaitGroup waits{clock};
    QTcpServer controller;
    ASSERT_TRUE(controller.listen(QHostAddress::LocalHost));
    QObject::connect(&controller, &QTcpServer::newConnection, &controller, [&controller] {
        QTcpSocket *far = controller.nextPendingConnection();
        QObject::connect(far, &QIODevice::readyRead, far, [far] {
            far->readAll().contains("++read") ? far->disconnectFromHost()
                                              : void(far->write("V1\n"));
        });
    });
    const auto adapter = GpibAdapterFactory().make({.kind = GpibAdapterChoice::Kind::Tcp,
                                                    .host = u"127.0.0.1"_s,
                                                    .port = controller.serverPort()},
                                                   0);
    EXPECT_EQ(adapter->version(waits), u"V1");
    EXPECT_EQ(adapter->description(),
              u"\"++\" controller at 127.0.0.1:%1"_s.arg(controller.serverPort()));
    const auto read = [&] { adapter->read({0, 5, {}}, 30000, waits); };
    EXPECT_TRUE(failsSaying("went away during a read", read));
    controller.close();
    EXPECT_TRUE(failsSaying("refused", read));
}

TEST(PlusPlusOverSerialLine, AControllerIsGivenTimeToStartAndSmallPieces)
{
    SystemClock clock;
    WaitGroup waits{clock};
    const GpibAddress meter{0, 5, {}};
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
    serial->write(meter, QByteArray(200, 'x'), 300, waits);
    EXPECT_EQ(serial->version(waits), u"AR488");
    EXPECT_TRUE(sent.startsWith("++ver\n++mode 1\n"));
    EXPECT_TRUE(sent.contains("++addr 5\n" + QByteArray(200, 'x') + '\n'));
    const QTemporaryDir folder;
    const auto missing = GpibAdapterFactory().make(
        {.kind = GpibAdapterChoice::Kind::Serial, .device = folder.filePath(u"gone"_s)}, 0);
    EXPECT_TRUE(
        failsSaying("/gone: there is no such device", [&] { missing->open(meter, waits); }));
}

TEST(GpibAdapterChoice, IsReadAndWrittenAsText)
{
    using Kind = GpibAdapterChoice::Kind;
    EXPECT_EQ(GpibAdapterChoice::parse(u"tcp:[fe80::1]:99"_s),
              (GpibAdapterChoice{.kind = Kind::Tcp, .host = u"fe80::1"_s, .port = 99}));
    EXPECT_EQ(GpibAdapterChoice::parse(u"library:3"_s),
              (GpibAdapterChoice{.kind = Kind::Library, .libraryBoard = 3}));
    // The setup window's test takes every other kind through its text and back.
    const char *const rows[][2] = {{" Auto ", "auto"},
                                   {"tcp:box", "tcp:box:1234"},
                                   {"tcp:[fe80::1%2]", "tcp:[fe80::1%2]:1234"},
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
