#include "about/frmAbout.h"

#include "AboutFakes.h"
#include "about/AboutHost.h"

#include <QLabel>
#include <QPushButton>

using namespace corvane;

namespace {

class FakeAboutHost : public AboutHost
{
public:
    void showGpibAbout() override { ++shown; }
    int shown = 0;
};

struct About : AboutFixture
{
    FakeAboutHost host;
    frmAbout window{systemInfo, host};
};

} // namespace

TEST_F(About, TheWindowShowsTheProductsFacts)
{
    window.openWindow();
    EXPECT_EQ(window.windowTitle(), u"About Corvane");
    EXPECT_EQ(window.lblTitle->text(), u"Corvane");
    const QStringList version = QStringLiteral(PROJECT_VERSION_TEXT).split(u'.');
    EXPECT_EQ(window.lblVersion->text(),
              QStringLiteral("Version: %1.%2 Build %3").arg(version[0], version[1], version[2]));
    EXPECT_TRUE(window.lblFileDescription->text().startsWith(u"Part Number: "));
    EXPECT_EQ(window.lblDescription->text(),
              u"This application provides a simple, all-in-one test of the communications "
              u"capabilities of Brennick products.");
    EXPECT_TRUE(window.lblCopyRight->text().startsWith(u"Copyright"));
}

TEST_F(About, ItsButtonsReachTheToolTheGpibControlAndTheEnd)
{
    window.openWindow();
    launcher.installed = {QStringLiteral("hardinfo2")};
    window.cmdSysInfo->click();
    EXPECT_EQ(launcher.started, QStringList{QStringLiteral("/usr/bin/hardinfo2")});
    window.cmdQBXAbout->click();
    EXPECT_EQ(host.shown, 1);
    window.cmdOK->click();
    EXPECT_FALSE(window.isVisible());
}
