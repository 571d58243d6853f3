// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/DemoGreeting.h"
#include "core/channels/Reconnect.h"
#include "core/setup/GpibSearch.h"
#include "devices/PlatformError.h"
#include "tests/e2e/EndToEndDesk.h"
#include "tests/support/Soon.h"
#include "windows/main/ConnectHint.h"
#include "windows/main/SerialTab.h"
#include "windows/main/SetupWindows.h"
#include "windows/main/StatusLine.h"
#include "windows/widgets/Led.h"

#include <array>
#include <set>

using namespace corvane;

namespace {

/// Counts the replies of every Channel.
struct ReplyCounter
{
    explicit ReplyCounter(Main &main)
    {
        for (int index = 0; index < channelCount; ++index)
            QObject::connect(&main.parts().channels.at(index), &ChannelSession::replied, &main,
                             [this, index] { ++replies.at(static_cast<size_t>(index)); });
    }
    /// Every Channel but those of `except` has more replies than before.
    [[nodiscard]] bool allAbove(const std::array<int, channelCount> &before,
                                const std::set<int> &except = {}) const
    {
        for (int index = 0; index < channelCount; ++index) {
            const auto at = static_cast<size_t>(index);
            if (!except.contains(index) && replies.at(at) <= before.at(at))
                return false;
        }
        return true;
    }

    std::array<int, channelCount> replies{};
};

void loopAll(const Main &main, const QString &ms)
{
    for (int index = 0; index < channelCount; ++index) {
        ChannelTab &channel = *main.channel(index);
        channel.cboMs->setEditText(ms);
        channel.cboMs_Change();
        channel.chkLoop->setChecked(true);
    }
}

} // namespace

TEST(EndToEnd, EveryChannelOfTheBenchAnswers)
{
    EndToEndDesk desk;
    QString printed;
    QTextStream out(&printed);
    EXPECT_EQ(greetTheBench(desk.channels, out), 0) << printed.toStdString();
    EXPECT_EQ(printed.count(u"BRENNICK,"_s), channelCount) << printed.toStdString();
    EXPECT_EQ(printed.count(u"\"No error\""_s), channelCount);
    desk.order("tcp-chamber silent");
    desk.open(3);
    EXPECT_EQ(desk.ask(3, u"*IDN?"_s, 300), std::nullopt);
    EXPECT_EQ(desk.messages, QString());
}

TEST(EndToEnd, AFaultOnOneChannelLeavesTheOthersLooping)
{
    const std::pair<const char *, std::set<int>> faults[] = {
        {"rs485 unplug", {0}},        {"rs232 unplug", {1}},           {"rs232 garbage", {1}},
        {"tcp-chamber drop", {3, 4}}, {"rs485 flood 2000000 64", {0}}, {"gpib:5 silent", {2}}};
    for (const auto &[fault, struck] : faults) {
        EndToEndDesk desk;
        ReplyCounter counter(desk.main);
        loopAll(desk.main, u"20"_s);
        ASSERT_TRUE(desk.waitFor([&] { return counter.allAbove({}); })) << fault;
        desk.order(fault);
        for (int round = 0; round < 3; ++round) {
            const auto before = counter.replies;
            EXPECT_TRUE(desk.waitFor([&] { return counter.allAbove(before, struck); })) << fault;
        }
        EXPECT_EQ(desk.messages, QString()) << fault;
    }
}

TEST(EndToEnd, APortThatComesBackIsConnectedAgain)
{
    EndToEndDesk desk;
    desk.main.channel(1)->chkLoop->setChecked(true);
    desk.order("rs232 unplug");
    ASSERT_TRUE(
        desk.waitFor([&] { return desk.main.channel(1)->lblStatus->text() == u"Port Closed"; }));
    desk.order("rs232 none");
    ASSERT_TRUE(desk.open(1));
    EXPECT_TRUE(desk.ask(1, u"*IDN?"_s));
}

TEST(EndToEnd, TheSearchFindsTheFirstInstrumentAndConnectsIt)
{
    EndToEndDesk desk;
    desk.program.window().parts().channels.gpib().control().setTimeout(30);
    desk.channels.at(2).fillIn({.address = u"30"_s});
    desk.main.setupWindows().search().SearchGPIBLoop();
    EXPECT_EQ(desk.main.parts().channels.gpib().control().connectString(), u"GPIB0::5");
    EXPECT_TRUE(desk.main.channel(2)->txtIn->text().startsWith(u"BRENNICK,"));
    desk.main.parts().channels.gpib().control().setTimeout(1000);
    EXPECT_TRUE(desk.ask(2, u"*IDN?"_s));
}

TEST(EndToEnd, TheWindowClosesWithEveryChannelLoopingAndAReadOut)
{
    for (const char *fault : {"clear", "gpib:5 silent", "tcp-chamber silent"}) {
        EndToEndDesk desk;
        desk.main.parts().channels.gpib().control().setTimeout(59999); // longer than a test waits
        loopAll(desk.main, u"50"_s);
        desk.channels.at(4).setCommand(u"A;B;C"_s);
        desk.order(fault);
        QTimer::singleShot(300, &desk.main, &QWidget::close);
        bool closed = false;
        QObject::connect(&desk.main, &Main::closed, &desk.main, [&closed] { closed = true; });
        EXPECT_TRUE(soon([&] { return closed; })) << fault;
        EXPECT_FALSE(desk.channels.at(0).isOpen());
        EXPECT_EQ(desk.messages, QString()) << "no box while it closes";
    }
}

TEST(EndToEnd, TheLogIsInTheFolderThatIsAskedFor)
{
    const QTemporaryDir folder;
    CommandLine line = EndToEndDesk::demo();
    line.folder = folder.path();
    EndToEndDesk desk(line);
    EXPECT_TRUE(desk.main.shpLog->toolTip().endsWith(folder.filePath(u"Log.txt"_s)));
    line.folder += u"/none"_s;
    EXPECT_THROW(WindowProgram(line, desk.dialogs), PlatformError);
}

#ifdef CORVANE_HAS_TREND
TEST(EndToEnd, TheTrendWindowIsLoadedAndShowsALoopedReply)
{
    EndToEndDesk desk;
    desk.channels.at(channels::tcpIp1).setCommand(u"? PV x"_s);
    desk.main.channel(channels::tcpIp1)->chkLoop->setChecked(true);
    desk.main.mnuTrend->trigger();
    const QWidgetList windows = QApplication::topLevelWidgets();
    const auto trend = std::ranges::find(windows, u"TrendWindow"_s, &QWidget::objectName);
    ASSERT_NE(trend, windows.end()) << desk.messages.toStdString();
    const auto *curves = (*trend)->findChild<QTableWidget *>(u"grdCurves"_s);
    EXPECT_TRUE(desk.waitFor([curves] { return curves->rowCount() == 1; }));
    EXPECT_EQ(curves->item(0, 2)->text(), u"? PV x");
    desk.main.close();
    EXPECT_FALSE((*trend)->isVisible()) << "closes with the program";
}
#endif

TEST(Bench, StartedFromAnEmptyResponseBoxItAnswersOnEveryChannelThatIsFree)
{
    QString messages;
    QTextStream stream(&messages);
    UnattendedDialogs dialogs(stream);
    WindowProgram program({}, dialogs);
    Main &window = program.window();
    window.show();
    ASSERT_TRUE(soon([&] { return window.channel(0)->hint != nullptr; }));
    QPushButton &bench = *window.channel(0)->hint->cmdBench;
    EXPECT_TRUE(soon([&] { return !bench.visibleRegion().isEmpty(); }));
    bench.click();
    ASSERT_NE(program.benchWindow(), nullptr) << messages.toStdString();
    EXPECT_TRUE(bench.isHidden());
    ChannelSet &channels = program.workbench().channels();
    for (int index = 0; index < channelCount; ++index) {
        ChannelSession &session = channels.at(index);
        EXPECT_TRUE(channelDriver::open(session, channels.waits(), EndToEndDesk::patienceMs));
        EXPECT_TRUE(
            channelDriver::ask(session, channels.waits(), u"*IDN?"_s, EndToEndDesk::patienceMs))
            << index << messages.toStdString();
        window.showChannel(index);
        EXPECT_TRUE(soon([&] { return window.channel(index)->hint != nullptr; }));
        EXPECT_TRUE(window.channel(index)->hint->isHidden());
    }
    window.close();
}

TEST(Reconnect, TriesAgainQuietlyUntilTheDeviceIsBackAndOnlyWhenItWasLost)
{
    EndToEndDesk desk;
    desk.main.show();
    const std::array<int, 2> lost{channels::rs485, channels::tcpIp1};
    const auto areOpen = [&](bool open) {
        return desk.waitFor([&, open] {
            return std::ranges::all_of(
                lost, [&](int index) { return desk.channels.at(index).isOpen() == open; });
        });
    };
    const auto says = [&desk](const QString &text) {
        return desk.waitFor([&] { return desk.main.lblFaults->text().count(text) == 2; });
    };
    for (const int index : lost)
        desk.main.channel(index)->chkReconnect->click();
    desk.channels.tcp(channels::tcpIp1).setLooping(true);
    desk.order("rs485 unplug");
    desk.order("tcp-chamber unplug");
    EXPECT_TRUE(areOpen(false));
    EXPECT_TRUE(says(u"trying again ("_s)) << desk.main.lblFaults->text().toStdString();
    EXPECT_TRUE(desk.channels.at(channels::rs232).isOpen());
    // Its port may be in use elsewhere for a moment.
    EXPECT_TRUE(desk.waitFor(
        [&] { return desk.program.workbench().bench()->order(u"clear"_s) == u"done"; }));
    EXPECT_TRUE(areOpen(true));
    EXPECT_TRUE(says(u"connected again"_s)) << desk.main.lblFaults->text().toStdString();
    desk.channels.at(channels::tcpIp1).setResponse({});
    EXPECT_TRUE(desk.waitFor([&] {
        return !desk.channels.at(channels::tcpIp1).response().bytes().isEmpty();
    })) << "the loop goes on";

    for (const int index : lost)
        desk.main.cmdDisconnect_Click(index);
    EXPECT_FALSE(desk.main.lblFaults->text().contains(u"again"));
    QTest::qWait(Reconnect::intervalMs + 500);
    EXPECT_TRUE(areOpen(false)) << "nobody wants them open";
    EXPECT_EQ(desk.messages.toStdString(), "");
}

TEST(Setup, OfTheCommandLineIsConnectedWhenTheWindowOpensEachForItself)
{
    bench::BenchOptions options;
    options.chamberPort = 0;
    bench::Bench bench(std::move(options));
    ASSERT_TRUE(bench.start());
    QString messages;
    QTextStream stream(&messages);
    UnattendedDialogs dialogs(stream);
    CommandLine line;
    line.setups[channels::rs485] = {.port = bench.serialDevices().first(), .address = u"5"_s};
    line.setups[channels::rs232] = {.port = u"/dev/none"_s};
    line.setups[channels::tcpIp2] = {.port = bench.entries().at(3).port, .host = u"127.0.0.1"_s};
    line.channel = channels::tcpIp2;
    line.loopMs = 50;
    line.connects = true;
    WindowProgram program(line, dialogs);
    Main &window = program.window();
    window.show();
    program.connectChannels(line);
    const ChannelSet &channels = program.workbench().channels();
    EXPECT_TRUE(soon([&] { return channels.at(channels::tcpIp2).isOpen(); }));
    EXPECT_TRUE(channels.at(channels::rs485).isOpen()) << messages.toStdString();
    EXPECT_FALSE(channels.at(channels::rs232).isOpen());
    EXPECT_TRUE(messages.contains(u"/dev/none"));
    EXPECT_EQ(window.tabChannels->currentIndex(), channels::tcpIp2);
    EXPECT_EQ(channels.at(channels::tcpIp2).periodMs(), 50);
    window.close();
}
