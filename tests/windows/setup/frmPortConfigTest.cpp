// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/setup/frmPortConfig.h"

#include "tests/support/FakeSerialPort.h"
#include "tests/support/Testing.h"

using namespace corvane;

namespace {

struct PortConfig : testing::Test
{
    FakeSerialPort port;

    static QString shown(const frmPortConfig &window)
    {
        QStringList texts;
        for (const QComboBox *box : window.cboCfg)
            texts.append(box->currentText());
        return texts.join(u'|');
    }
};

} // namespace

TEST_F(PortConfig, TheWindowOpensWithTheFourPartsOfThePortsSettings)
{
    const std::pair<QString, QString> rows[] = {
        {u"9600,N,8,1"_s, u"9600|N|8|1"_s},
        {u"9600,n,8,1"_s, u"9600|N|8|1"_s},
        {u"9600,Q,9"_s, u"9600|Q|9|"_s},
        {u"abc,N,8,1,7"_s, u"abc|N|8|1"_s},
        {QString(), u"|||"_s},
    };
    frmPortConfig window(0, port);
    for (const auto &[settings, boxes] : rows) {
        port.setSettings(settings);
        window.openWindow();
        EXPECT_EQ(shown(window), boxes);
        EXPECT_TRUE(window.cmdPortConfig[0]->isEnabled());
        EXPECT_TRUE(window.cmdPortConfig[1]->isEnabled());
        EXPECT_FALSE(window.cmdPortConfig[2]->isEnabled());
        window.cmdPortConfig_Click(1);
        EXPECT_EQ(port.settings(), settings) << "cancelled, so unchanged";
    }
    window.openWindow();
    window.cboCfg[2]->setEditText(u"7"_s);
    window.openWindow();
    EXPECT_EQ(shown(window), u"||7|") << "still open: what was typed stays";
}

TEST_F(PortConfig, OnlyThePresetsOfTheServedChannelAreShown)
{
    port.setSettings(u"9600,N,8,1"_s);
    frmPortConfig rs485(0, port);
    rs485.openWindow();
    EXPECT_TRUE(rs485.fraPresets485->isVisible());
    EXPECT_FALSE(rs485.fraPresets232->isVisible());
    rs485.cmdPreset485[0]->click();
    EXPECT_EQ(shown(rs485), u"9600|N|8|1");

    frmPortConfig rs232(1, port);
    rs232.openWindow();
    EXPECT_FALSE(rs232.fraPresets485->isVisible());
    EXPECT_TRUE(rs232.fraPresets232->isVisible());
    for (std::size_t i = 0; i < rs232.cmdPreset232.size(); ++i) {
        rs232.cmdPreset232[i]->click();
        EXPECT_EQ(shown(rs232), i == 1 ? u"57600|N|8|1" : u"19200|N|8|1");
    }
    EXPECT_EQ(port.settings(), u"9600,N,8,1") << "a preset alone applies nothing";
}

TEST_F(PortConfig, ApplyStoresTheSettingsAndClosesUnlessTheWindowShallStay)
{
    port.setSettings(u"19200,N,8,1"_s);
    frmPortConfig window(1, port);
    window.openWindow();
    QTest::mouseClick(window.cmdPreset232[1], Qt::LeftButton);
    ASSERT_TRUE(window.cmdPortConfig[2]->isEnabled()) << "something was changed";
    window.cmdPortConfig[2]->click();
    EXPECT_EQ(port.settings(), u"57600,N,8,1");
    EXPECT_TRUE(window.isVisible());
    EXPECT_FALSE(window.cmdPortConfig[2]->isEnabled()) << "nothing is left to apply";

    window.cboCfg[0]->setEditText(u" 1200 "_s);
    window.cboCfg[1]->setCurrentIndex(4);
    window.cboCfg[3]->setCurrentIndex(1);
    QTest::keyClick(window.cboCfg[0], Qt::Key_Return);
    EXPECT_EQ(port.settings(), u"1200,S,8,1.5");
    EXPECT_FALSE(window.isVisible());
}

TEST_F(PortConfig, EveryParityEntryGivesItsLetterAndOtherTextsStayAsTheyStand)
{
    port.setSettings(u"9600,N,8,1"_s);
    frmPortConfig window(0, port);
    window.openWindow();
    QString entries;
    QString letters;
    for (int i = 0; i < window.cboCfg[1]->count(); ++i) {
        window.cboCfg[1]->setCurrentIndex(i);
        window.cmdPortConfig_Click(2);
        entries += window.cboCfg[1]->currentText() + u';';
        letters += port.settings().section(u',', 1, 1);
    }
    EXPECT_EQ(entries, u"E - Even;M - Mark;N - None;O - Odd;S - Space;");
    EXPECT_EQ(letters, u"EMNOS");
    window.cboCfg[1]->setEditText(u"e - even"_s);
    window.cmdPortConfig_Click(2);
    EXPECT_EQ(port.settings(), u"9600,e - even,8,1");
}

TEST_F(PortConfig, TheWindowTellsWhatIsInUseWhatIsAppliedAndWhatIsOnlyEntered)
{
    port.setSettings(u"9600,n,8,1"_s);
    frmPortConfig window(1, port);
    window.openWindow();
    const auto told = [&] { return window.lblSummary->text(); };
    EXPECT_EQ(told(), u"Applied, in effect from the next Connect: 9600,n,8,1");
    window.cmdPreset232[1]->click();
    EXPECT_EQ(told(), u"Applied, in effect from the next Connect: 9600,n,8,1\n"
                      u"Entered, not applied: 57600,N,8,1");
    window.portOpened(true);
    EXPECT_EQ(told(), u"Applied and in use: 9600,n,8,1\nEntered, not applied: 57600,N,8,1");
    window.cmdPortConfig[2]->click();
    EXPECT_EQ(told(), u"In use until Disconnect: 9600,n,8,1\n"
                      u"Applied, in effect from the next Connect: 57600,N,8,1");
    window.portOpened(false);
    EXPECT_EQ(told(), u"Applied, in effect from the next Connect: 57600,N,8,1");
    window.portOpened(true);
    EXPECT_EQ(told(), u"Applied and in use: 57600,N,8,1");
}
