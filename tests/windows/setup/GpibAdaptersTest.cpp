// SPDX-License-Identifier: GPL-3.0-or-later
#include "devices/GpibAdapterFactory.h"
#include "devices/GpibControl.h"
#include "tests/support/FakeClock.h"
#include "tests/support/FakeGpibAdapter.h"
#include "tests/support/ScriptedDialogs.h"
#include "windows/setup/GpibAboutBox.h"
#include "windows/setup/frmGpibAdapters.h"

using namespace corvane;

namespace {

struct GpibAdapters : testing::Test
{
    FakeClock clock;
    std::array<FakeGpibBus, 4> buses;
    QList<int> made; ///< the boards whose adapter was made, in order
    GpibControl control{clock, [this](int board) {
                            made.append(board);
                            return std::make_unique<FakeGpibAdapter>(buses.at(size_t(board)));
                        }};
    GpibAdapterChoices choices;
    GpibAdapterFactory factory{{.ib = u"/none"_s, .visa = u"/none"_s}};
    ScriptedDialogs dialogs;
    frmGpibAdapters window{{.choices = choices,
                            .control = control,
                            .factory = factory,
                            .dialogs = dialogs,
                            .serialDevices = [] { return QStringList{u"/dev/ttyUSB0"_s}; }}};
    GpibAboutBox about{control};

    void choose(std::size_t board, GpibAdapterChoice::Kind kind, const QString &place = {})
    {
        window.cboKind.at(board)->setCurrentIndex(static_cast<int>(kind));
        if (!place.isEmpty())
            window.cboPlace.at(board)->setEditText(place);
    }
};

using Kind = GpibAdapterChoice::Kind;

} // namespace

TEST_F(GpibAdapters, EveryChoiceIsShownAsItIsAndStoredAsItIsShown)
{
    const QStringList texts{
        u"auto"_s,        u"none"_s,    u"tcp:bench:23"_s, u"tcp:[fe80::1]:1234"_s,
        u"serial:COM3"_s, u"library"_s, u"library:2"_s,    u"visa"_s};
    for (const QString &text : texts) {
        choices[3] = GpibAdapterChoice::parse(text);
        window.openWindow();
        choices[3] = GpibAdapterChoice::parse(u"none"_s);
        window.cmdOK->click();
        EXPECT_EQ(choices[3].toString().toStdString(), text.toStdString());
        EXPECT_FALSE(window.isVisible());
    }
}

TEST_F(GpibAdapters, APlaceIsAskedForOnlyWhereTheKindHasOne)
{
    window.openWindow();
    EXPECT_FALSE(window.cboPlace[0]->isEnabled());
    choose(0, Kind::Serial);
    EXPECT_TRUE(window.cboPlace[0]->isEnabled());
    EXPECT_EQ(window.cboPlace[0]->currentText(), u"/dev/ttyUSB0");
    choose(0, Kind::Tcp);
    EXPECT_EQ(window.cboPlace[0]->currentText(), QString()) << "a device is no host";
    choose(0, Kind::Visa);
    EXPECT_FALSE(window.cboPlace[0]->isEnabled());
    EXPECT_TRUE(window.lblInstalled->text().startsWith(u"No GPIB library and no VISA library."));
}

TEST_F(GpibAdapters, AWrongPlaceIsToldAndNothingIsStored)
{
    window.openWindow();
    choose(0, Kind::None);
    choose(1, Kind::Tcp, u"host:70000"_s);
    dialogs.expectMessage(u"GPIB adapter \"tcp:host:70000\": the port \"70000\" is not a number "
                          u"from 1 to 65535"_s);
    window.cmdOK->click();
    EXPECT_TRUE(window.isVisible());
    EXPECT_EQ(choices, GpibAdapterChoices());
    window.cmdCancel->click();
    EXPECT_FALSE(window.isVisible());
    EXPECT_EQ(choices, GpibAdapterChoices());
}

TEST_F(GpibAdapters, ATestStoresTheChoiceAndAsksANewAdapter)
{
    window.openWindow();
    EXPECT_EQ(control.adapterDescription(2), u"fake adapter");
    choose(2, Kind::Tcp, u"bench"_s);
    window.cmdTest[2]->click();
    EXPECT_EQ(choices[2].toString(), u"tcp:bench:1234");
    EXPECT_EQ(made, (QList<int>{2, 2})) << "the old adapter was forgotten";
    EXPECT_EQ(window.lblResult[2]->text(), u"fake adapter: fake 1.0");

    buses[2].fault = u"bench: connection refused"_s;
    window.cmdTest[2]->click();
    EXPECT_EQ(window.lblResult[2]->text(), u"bench: connection refused");
}

TEST_F(GpibAdapters, ClosingTheWindowEndsATestAndNoSecondOneStartsInside)
{
    window.openWindow();
    buses[0].whileAsked = [this] {
        window.cmdTest_Click(1);
        window.close();
    };
    window.cmdTest_Click(0);
    EXPECT_EQ(made, QList<int>{0});
    EXPECT_FALSE(window.isBusy());
}

TEST_F(GpibAdapters, TheAboutBoxSaysWhatServesEachBoardAndAsksNoMoreOnceClosed)
{
    buses[1].fault = u"no adapter"_s;
    about.openWindow();
    about.tmrAsk_Timer();
    for (const auto *label : about.lblAdapter)
        EXPECT_EQ(label->text(), u"fake adapter");
    EXPECT_EQ(about.lblVersion[1]->text(), u"no adapter");
    EXPECT_EQ(about.lblVersion[3]->text(), u"fake 1.0");
    buses[0].calls.clear();
    buses[2].calls.clear();
    buses[0].whileAsked = [this] { about.close(); };
    about.tmrAsk_Timer();
    EXPECT_EQ(buses[0].calls.size() + buses[2].calls.size(), 1);
    EXPECT_FALSE(about.isBusy());
}
