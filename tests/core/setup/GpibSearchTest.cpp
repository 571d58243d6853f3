// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/setup/GpibSearch.h"

#include "core/channels/GpibSession.h"
#include "core/channels/Module1.h"
#include "core/setup/SetupTexts.h"
#include "devices/DeviceAbsent.h"
#include "devices/GpibControl.h"
#include "tests/support/FakeClock.h"
#include "tests/support/FakeGpibAdapter.h"
#include "tests/support/ScriptedDialogs.h"
#include "windows/setup/frmGPIB.h"

using namespace corvane;

namespace {

/// A search over four boards, each a bus of its own, with its window.
struct Search : testing::Test
{
    FakeClock clock;
    std::array<FakeGpibBus, 4> buses;
    GpibControl control{clock, [this](int board) {
                            return std::make_unique<FakeGpibAdapter>(buses.at(size_t(board)));
                        }};
    Module1 module;
    ScriptedDialogs dialogs;
    WaitGroup waits{clock};
    ChannelUsers users;
    GpibSession channel{control, {module, dialogs, waits, users}};
    GpibSearch search{channel, users, module, clock};
    QSignalSpy ended{&search, &GpibSearch::ended};
    frmGPIB window{search, module, dialogs};

    void openAndSearch()
    {
        window.openWindow();
        window.tmrStart_Timer();
    }
    /// Puts an instrument at an address of a board.
    void place(std::size_t board, const QString &address, const QByteArray &reply)
    {
        buses.at(board).onWrite = [address, reply](const QString &to, const QByteArray &text) {
            return to == address && text == "*IDN?" ? std::optional(reply) : std::nullopt;
        };
    }
    [[nodiscard]] qsizetype probes(std::size_t board) const
    {
        return buses.at(board).calls.filter(u"clear "_s).size();
    }
    void expectAtRest(const QString &status)
    {
        EXPECT_EQ(window.lblSearch->text().toStdString(), status.toStdString());
        EXPECT_TRUE(window.cmdSearch->isEnabled());
        EXPECT_TRUE(window.cmdClose->isVisibleTo(&window) && window.cmdClose->isDefault());
        EXPECT_FALSE(window.cmdCancel->isVisibleTo(&window));
        EXPECT_FALSE(search.isRunning());
    }
    void expectNothingChosen()
    {
        EXPECT_EQ(control.connectString(), u"GPIB0::0");
        EXPECT_EQ(channel.connectString(), u"GPIB0::0");
        EXPECT_EQ(channel.response().bytes(), "");
    }
};

} // namespace

TEST_F(Search, AnEmptyBusIsProbedInOrderAndTakesJustItsWaits)
{
    control.setTimeout(200);
    const quint32 start = clock.MS_TIMER();
    openAndSearch();
    EXPECT_EQ(clock.MS_TIMER() - start, 124U * (75 + 200));
    for (std::size_t board = 0; board < 4; ++board) {
        QStringList expected;
        for (int address = 0; address <= 30; ++address) {
            const auto at = u"GPIB%1::%2"_s.arg(board).arg(address);
            expected << u"clear "_s + at << u"write %1 *IDN?"_s.arg(at) << u"read "_s + at;
        }
        EXPECT_EQ(buses.at(board).calls, expected);
    }
    expectAtRest(u"Status: No Device Found"_s);
    expectNothingChosen();
    EXPECT_EQ(window.progress->value(), 124);
    EXPECT_EQ(ended.size(), 1);
}

TEST_F(Search, TheFirstInstrumentThatAnswersIsChosen)
{
    place(1, u"GPIB1::0"_s, "ACME,\r\nVX,\n1\r\n");
    control.setTimeout(25);
    clock.after(3110, [this] { control.setConnectString(u"GPIB3::9"_s); }); // by its combo box
    openAndSearch();
    EXPECT_EQ(probes(0), 31);
    EXPECT_EQ(probes(1), 1);
    EXPECT_EQ(probes(2), 0);
    expectAtRest(u"Status: Found device at: GPIB1::0"_s);
    EXPECT_EQ(channel.response().bytes(), "ACME,VX,1");
    EXPECT_EQ(channel.board() + channel.address(), u"GPIB10");
    EXPECT_EQ(control.connectString(), u"GPIB1::0");
    EXPECT_EQ(ended.size(), 1);
}

TEST_F(Search, TheWindowTellsWhatIsProbedAndACancelledSearchCanBeRepeated)
{
    clock.after(1, [this] {
        EXPECT_EQ(window.lblSearch->text(), u"Status: GPIB0::0");
        EXPECT_EQ(window.progress->text(), u"Address 1 of 124");
        EXPECT_FALSE(window.cmdSearch->isEnabled());
        EXPECT_FALSE(window.cmdClose->isVisibleTo(&window));
        EXPECT_TRUE(window.cmdCancel->isVisibleTo(&window));
        window.openWindow(); // only comes to the front
        window.cmdSearch_Click();
        EXPECT_TRUE(search.isRunning());
        window.cmdCancel->click();
    });
    openAndSearch();
    expectAtRest(u"Status: User canceled search."_s);
    EXPECT_TRUE(module.SearchCancelled);
    place(0, u"GPIB0::2"_s, "ACME");
    window.cmdSearch->click();
    expectAtRest(u"Status: Found device at: GPIB0::2"_s);
}

TEST_F(Search, CancellingEndsTheSearchBeforeAnotherExchange)
{
    // ms after the start: in the first pause, in the first read, in the second address's pause.
    const std::pair<int, QString> rows[] = {{30, u"write GPIB0::0 *IDN?"_s},
                                            {500, u"read GPIB0::0"_s},
                                            {1100, u"write GPIB0::1 *IDN?"_s}};
    for (const auto &[at, lastCall] : rows) {
        buses[0].calls.clear();
        const quint32 start = clock.MS_TIMER();
        clock.after(at, [this] { window.cmdCancel_Click(); });
        openAndSearch();
        EXPECT_EQ(clock.MS_TIMER() - start, quint32(at));
        EXPECT_EQ(buses[0].calls.last(), lastCall);
        expectAtRest(u"Status: User canceled search."_s);
        expectNothingChosen();
        window.close();
    }
}

TEST_F(Search, AClickThatWaitedBehindAReadIsHandledBeforeTheNextProbe)
{
    buses[0].afterRead = [this] {
        QMetaObject::invokeMethod(&window, &frmGPIB::cmdCancel_Click, Qt::QueuedConnection);
    };
    openAndSearch();
    EXPECT_EQ(probes(0), 1);
}

TEST_F(Search, ClosingTheWindowCancelsAndReopeningSearchesAgain)
{
    clock.after(10, [this] {
        QTest::keyClick(&window, Qt::Key_Escape);
        EXPECT_TRUE(module.SearchCancelled);
        window.openWindow();
        window.tmrStart_Timer(); // the first search has not returned yet
        EXPECT_TRUE(window.tmrStart->isActive());
    });
    openAndSearch();
    EXPECT_EQ(buses[0].calls.size(), 2);
    place(0, u"GPIB0::0"_s, "ACME");
    window.tmrStart_Timer();
    EXPECT_FALSE(window.tmrStart->isActive());
    expectAtRest(u"Status: Found device at: GPIB0::0"_s);
    window.cmdClose->click();
    EXPECT_TRUE(module.SearchCancelled);
    EXPECT_FALSE(window.isVisible());
}

TEST_F(Search, AFaultCostsItsAddressAndABoardOnlyWhenItsAdapterIsGoneOrFailsThreeTimesInARow)
{
    const auto faulty = [](const QStringList &addresses, const QString &why) {
        return [=](const QString &address, const QByteArray &) -> std::optional<QByteArray> {
            if (addresses.contains(address))
                throw PlatformError(address + u": "_s + why);
            return std::nullopt;
        };
    };
    const QString cable = u"check the cable"_s;
    buses[0].fault = u"board GPIB0 has no adapter"_s;
    buses[2].fault = u"board GPIB2 has no adapter"_s;
    buses[1].onWrite = faulty({u"GPIB1::0"_s, u"GPIB1::1"_s, u"GPIB1::3"_s, u"GPIB1::30"_s}, cable);
    buses[3].onWrite = faulty({u"GPIB3::2"_s, u"GPIB3::4"_s, u"GPIB3::5"_s, u"GPIB3::6"_s}, cable);
    buses[1].afterRead = [this] { // told while it searches
        if (buses[1].calls.last() == u"read GPIB1::2") {
            EXPECT_EQ(window.lblFaults->text(),
                      u"GPIB0: the board has no adapter\nGPIB1::0, GPIB1::1: check the cable");
        }
    };
    openAndSearch();
    for (const auto &[board, count] :
         {std::pair(0U, 1), std::pair(1U, 31), std::pair(2U, 1), std::pair(3U, 7)})
        EXPECT_EQ(probes(board), count) << board;
    expectAtRest(u"Status: No Device Found"_s);
    EXPECT_EQ(window.lblFaults->text(),
              u"GPIB0, GPIB2: the board has no adapter\n"
              u"GPIB1::0, GPIB1::1, GPIB1::3, GPIB1::30, GPIB3::2, GPIB3::4 to GPIB3::30: "
              u"check the cable");
    expectNothingChosen();
    window.cmdClose_Click();
    window.openWindow();
    EXPECT_TRUE(window.lblFaults->text().isEmpty());
}

TEST_F(Search, AnAddressWithoutADeviceIsNoFaultAndIsNotRead)
{
    buses[0].onWrite = [](const QString &address, const QByteArray &) -> std::optional<QByteArray> {
        if (address == u"GPIB0::5")
            return "ACME";
        throw DeviceAbsent(u"no listener"_s);
    };
    openAndSearch();
    expectAtRest(u"Status: Found device at: GPIB0::5"_s);
    EXPECT_FALSE(buses[0].calls.contains(u"read GPIB0::0"_s));
    EXPECT_TRUE(window.lblFaults->text().isEmpty());
}

TEST_F(Search, ASearchIsRefusedWhileTheControlIsInOtherUse)
{
    using enum ChannelUse;
    window.openWindow();
    for (const ChannelUse use : {List, Loop, Reply, Board}) {
        users.claim(channels::ieee488, use);
        dialogs.expectMessage(ChannelUsers::told(channels::ieee488, use));
        window.cmdSearch_Click();
        users.release(channels::ieee488, use);
        expectAtRest(u"Status: Search not started."_s);
    }
    EXPECT_TRUE(buses[0].calls.isEmpty());
    clock.after(1,
                [&] { EXPECT_EQ(search.refusal(), ChannelUsers::told(channels::ieee488, Reply)); });
    control.read();
}
