#include "platform/GpibAdapterFactory.h"
#include "platform/GpibControl.h"
#include "setup/GpibAboutBox.h"
#include "setup/frmGpibAdapters.h"
#include "tests/support/FakeClock.h"
#include "tests/support/FakeGpibAdapter.h"
#include "tests/support/ScriptedDialogs.h"

#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QTimer>

#include <gtest/gtest.h>

using namespace corvane;

namespace {

/// An adapter whose version takes a while; `asked` runs meanwhile.
class SlowAdapter : public FakeGpibAdapter
{
public:
    SlowAdapter(FakeGpibBus &bus, std::function<void()> &asked)
        : FakeGpibAdapter(bus)
        , m_asked(asked)
    {
    }
    QString version(WaitGroup &waits) override
    {
        if (m_asked)
            m_asked();
        waits.wait(100);
        return FakeGpibAdapter::version(waits);
    }

private:
    std::function<void()> &m_asked;
};

struct GpibAdapters : testing::Test
{
    FakeClock clock;
    std::array<FakeGpibBus, 4> buses;
    std::function<void()> whileAsked;
    QList<int> made; ///< the boards whose adapter was made, in order
    GpibControl control{clock, [this](int board) {
                            made.append(board);
                            return std::make_unique<SlowAdapter>(
                                buses.at(static_cast<std::size_t>(board)), whileAsked);
                        }};
    GpibAdapterChoices choices;
    GpibAdapterFactory factory{{.ib = QStringLiteral("/none"), .visa = QStringLiteral("/none")}};
    ScriptedDialogs dialogs;
    frmGpibAdapters window{
        {.choices = choices,
         .control = control,
         .factory = factory,
         .dialogs = dialogs,
         .serialDevices = [] { return QStringList{QStringLiteral("/dev/ttyUSB0")}; }}};
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
    const QStringList texts{QStringLiteral("auto"),         QStringLiteral("none"),
                            QStringLiteral("tcp:bench:23"), QStringLiteral("tcp:[fe80::1]:1234"),
                            QStringLiteral("serial:COM3"),  QStringLiteral("library"),
                            QStringLiteral("library:2"),    QStringLiteral("visa")};
    for (const QString &text : texts) {
        choices[3] = GpibAdapterChoice::parse(text);
        window.openWindow();
        choices[3] = GpibAdapterChoice::parse(QStringLiteral("none"));
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
    choose(1, Kind::Tcp, QStringLiteral("host:70000"));
    dialogs.expectMessage(
        QStringLiteral("GPIB adapter \"tcp:host:70000\": the port \"70000\" is not a number from 1 "
                       "to 65535"));
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
    choose(2, Kind::Tcp, QStringLiteral("bench"));
    window.cmdTest[2]->click();
    EXPECT_EQ(choices[2].toString(), u"tcp:bench:1234");
    EXPECT_EQ(made, (QList<int>{2, 2})) << "the old adapter was forgotten";
    EXPECT_EQ(window.lblResult[2]->text(), u"fake adapter: fake 1.0");

    buses[2].fault = QStringLiteral("bench: connection refused");
    window.cmdTest[2]->click();
    EXPECT_EQ(window.lblResult[2]->text(), u"bench: connection refused");
    window.cmdTest_Click(4);
}

TEST_F(GpibAdapters, ClosingEndsATestAndASecondTestWaitsForTheFirst)
{
    window.openWindow();
    whileAsked = [this] {
        EXPECT_TRUE(window.isTesting());
        window.cmdTest_Click(1);
        window.close();
    };
    const quint32 start = clock.MS_TIMER();
    window.cmdTest_Click(0);
    EXPECT_EQ(clock.MS_TIMER(), start) << "the wait ended at once";
    EXPECT_EQ(made, QList<int>{0});
    EXPECT_FALSE(window.isTesting());
}

TEST_F(GpibAdapters, TheAboutBoxSaysWhatServesEachBoard)
{
    buses[1].fault = QStringLiteral("no adapter");
    about.openWindow();
    about.tmrAsk_Timer();
    for (const auto *label : about.lblAdapter)
        EXPECT_EQ(label->text(), u"fake adapter");
    EXPECT_EQ(about.lblVersion[0]->text(), u"fake 1.0");
    EXPECT_EQ(about.lblVersion[1]->text(), u"no adapter");
    EXPECT_EQ(about.lblVersion[3]->text(), u"fake 1.0");
    EXPECT_FALSE(about.tmrAsk->isActive());
}

TEST_F(GpibAdapters, TheAboutBoxAsksNoMoreOnceClosed)
{
    about.openWindow();
    whileAsked = [this] { about.close(); };
    about.tmrAsk_Timer();
    EXPECT_EQ(buses[0].calls.size() + buses[1].calls.size(), 1);
    EXPECT_FALSE(about.isAsking());
    whileAsked = nullptr;
    about.openWindow();
    about.tmrAsk_Timer();
    EXPECT_EQ(about.lblVersion[3]->text(), u"fake 1.0");
}
