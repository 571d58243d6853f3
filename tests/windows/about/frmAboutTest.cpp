// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/about/frmAbout.h"

#include "tests/support/ScriptedDialogs.h"
#include "windows/about/ProgramLauncher.h"
#include "windows/about/SystemInfo.h"

#include <map>

using namespace corvane;

namespace {

class FakeLauncher : public ProgramLauncher
{
public:
    [[nodiscard]] bool fileExists(const QString &path) const override { return path == file; }
    [[nodiscard]] QString findProgram(const QString &name) const override
    {
        return installed.contains(name) ? u"/bin/"_s + name : QString();
    }
    bool start(const QString &program, const QStringList &arguments) override
    {
        started.append((QStringList{program} + arguments).join(u' '));
        return !broken.contains(program);
    }

    QString file;
    QStringList installed;
    QStringList broken; ///< programs that do not start
    QStringList started;
};

struct About : testing::Test
{
    void expectStarted(const QStringList &programs)
    {
        launcher.started.clear();
        window.cmdSysInfo_Click();
        EXPECT_EQ(launcher.started, programs);
    }

    std::map<QString, std::map<QString, QVariant>> registry;
    std::map<QString, QVariant> &tool = registry[u"SOFTWARE\\Microsoft\\Shared Tools\\MSINFO"_s];
    std::map<QString, QVariant> &folder = registry[u"SOFTWARE\\Microsoft\\Shared Tools Location"_s];
    FakeLauncher launcher;
    ScriptedDialogs dialogs;
    SystemInfo systemInfo{
        [this](const QString &key, const QString &name) { return registry[key][name]; }, launcher,
        dialogs};
    frmAbout window{systemInfo};
};

} // namespace

TEST_F(About, TheWindowShowsTheProductsFactsAndOpensItsDoors)
{
    window.openWindow();
    const QStringList version = QStringLiteral(PROJECT_VERSION_TEXT).split(u'.');
    EXPECT_EQ(window.lblVersion->text(),
              u"Version: %1.%2 Build %3"_s.arg(version[0], version[1], version[2]));
    EXPECT_TRUE(window.lblFileDescription->text().startsWith(u"Part Number: "));
    const QSignalSpy gpibAbout(&window, &frmAbout::gpibAboutRequested);
    window.cmdQBXAbout->click();
    EXPECT_EQ(gpibAbout.size(), 1);
    window.cmdOK->click();
    EXPECT_FALSE(window.isVisible());
}

TEST_F(About, ARegistryValueIsReadAsItsTextOrAsHexadecimalDigits)
{
    const QString full(1023, u'x');
    tool = {{u"text"_s, u"C:\\\u00fc\u0142"_s}, {u"empty"_s, QString()},        {u"full"_s, full},
            {u"long"_s, full + u'x'},           {u"number"_s, 0x0a10},          {u"negative"_s, -1},
            {u"longer"_s, 0x1'0000'0000LL},     {u"binary"_s, QByteArray("ab")}};
    const std::pair<QString, std::optional<QString>> rows[] = {
        {u"text"_s, u"C:\\\u00fc\u0142"_s},
        {u"empty"_s, QString()},
        {u"full"_s, full},
        {u"long"_s, {}},
        {u"number"_s, u"&h00000A10"_s},
        {u"negative"_s, u"&hFFFFFFFF"_s},
        {u"longer"_s, u"&h0000000100000000"_s},
        {u"binary"_s, {}},
        {u"missing"_s, {}},
    };
    const auto read = [this](const QString &key, const QString &name) {
        QString value;
        return systemInfo.GetKeyValue(key, name, value) ? std::optional(value) : std::nullopt;
    };
    for (const auto &[name, value] : rows)
        EXPECT_EQ(read(u"SOFTWARE\\Microsoft\\Shared Tools\\MSINFO"_s, name), value)
            << name.toStdString();
    EXPECT_EQ(read(u"no key"_s, u"text"_s), std::nullopt);
}

TEST_F(About, TheToolThatTheRegistryNamesIsStarted)
{
    launcher.installed = {u"hardinfo"_s};
    folder[u"MSINFO"_s] = u"C:\\Shared"_s;
    launcher.file = u"C:\\Shared\\MSINFO32.EXE"_s;
    expectStarted({u"C:\\Shared\\MSINFO32.EXE"_s});
    tool[u"PATH"_s] = u"C:\\info.exe"_s;
    expectStarted({u"C:\\info.exe"_s});
}

TEST_F(About, WithoutOneInTheRegistryTheFirstInstalledToolThatStartsIsTaken)
{
    launcher.installed = {u"gnome-control-center"_s, u"hardinfo"_s, u"kinfocenter"_s};
    expectStarted({u"/bin/hardinfo"_s});
    launcher.broken = {u"/bin/hardinfo"_s, u"/bin/kinfocenter"_s};
    expectStarted(
        {u"/bin/hardinfo"_s, u"/bin/kinfocenter"_s, u"/bin/gnome-control-center info-overview"_s});
}

TEST_F(About, WithoutAnyToolTheFixedTextIsShown)
{
    const QString unavailable = u"System Information Is Unavailable At This Time"_s;
    for (int i = 0; i < 3; ++i)
        dialogs.expectMessage(unavailable);
    expectStarted({});
    folder[u"MSINFO"_s] = u"C:\\Gone"_s;
    expectStarted({});
    tool[u"PATH"_s] = 1;
    launcher.broken = {u"&h00000001"_s};
    expectStarted({u"&h00000001"_s});
}

TEST(QtProgramLauncher, StartsWhatIsThereAndRefusesWhatIsNot)
{
    QtProgramLauncher launcher;
    const QString program = launcher.findProgram(u"true"_s);
    EXPECT_TRUE(launcher.fileExists(program) && launcher.start(program, {}));
    EXPECT_EQ(launcher.findProgram(u"no-such-program"_s), QString());
    EXPECT_FALSE(launcher.start(QTemporaryDir().filePath(u"missing"_s), {}));
}
