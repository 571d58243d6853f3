#include "AboutFakes.h"

using namespace corvane;

namespace {

const QString toolKey = QStringLiteral("SOFTWARE\\Microsoft\\Shared Tools\\MSINFO");
const QString folderKey = QStringLiteral("SOFTWARE\\Microsoft\\Shared Tools Location");
const QString unavailable = QStringLiteral("System Information Is Unavailable At This Time");

struct SystemInfoTest : AboutFixture
{
    std::optional<QString> read(const QString &key, const QString &name)
    {
        QString value;
        const bool found =
            systemInfo.GetKeyValue(RegistryApi::Root::LocalMachine, key, name, value);
        EXPECT_EQ(registry.open, 0) << "every key that was opened is closed";
        return found ? std::optional(value) : std::nullopt;
    }
    void expectStarted(const QStringList &programs)
    {
        launcher.started.clear();
        systemInfo.StartSysInfo();
        EXPECT_EQ(launcher.started, programs);
    }
};

} // namespace

TEST_F(SystemInfoTest, AValueIsReadAsItsTextOrAsHexadecimalDigits)
{
    const QString full(1023, u'x');
    auto &key = registry.keys[QStringLiteral("key")];
    key[QStringLiteral("text")] = FakeRegistry::string(QStringLiteral("C:\\Program Files\\\u00fc"));
    key[QStringLiteral("unended")] = {.type = 1, .bytes = {'a', 0, 'b', 0}};
    key[QStringLiteral("empty")] = {.type = 1, .bytes = {}};
    key[QStringLiteral("full")] = FakeRegistry::string(full);
    key[QStringLiteral("long")] = FakeRegistry::string(full + u'x');
    key[QStringLiteral("number")] = {.type = 4, .bytes = {0x10, 0x0a, 0, 0}};
    key[QStringLiteral("expandable")] = {.type = 2, .bytes = {0xff}};

    struct Row
    {
        const char16_t *name;
        std::optional<QString> value;
    };
    const Row rows[] = {
        {u"text", QStringLiteral("C:\\Program Files\\\u00fc")},
        {u"unended", QStringLiteral("ab")},
        {u"empty", QString()},
        {u"full", full},
        {u"long", std::nullopt},
        {u"number", QStringLiteral("&h00000A10")},
        {u"expandable", QStringLiteral("&hFF")},
        {u"missing", std::nullopt},
    };
    for (const Row &row : rows)
        EXPECT_EQ(read(QStringLiteral("key"), QString::fromUtf16(row.name)), row.value)
            << QString::fromUtf16(row.name).toStdString();
    EXPECT_EQ(read(QStringLiteral("no key"), QStringLiteral("text")), std::nullopt);
}

TEST_F(SystemInfoTest, TheToolThatTheRegistryNamesIsStarted)
{
    launcher.installed = {QStringLiteral("hardinfo")};
    registry.keys[folderKey][QStringLiteral("MSINFO")] =
        FakeRegistry::string(QStringLiteral("C:\\Shared"));
    launcher.files = {QStringLiteral("C:\\Shared\\MSINFO32.EXE")};
    expectStarted({QStringLiteral("C:\\Shared\\MSINFO32.EXE")});

    registry.keys[toolKey][QStringLiteral("PATH")] =
        FakeRegistry::string(QStringLiteral("C:\\info.exe"));
    expectStarted({QStringLiteral("C:\\info.exe")});
}

TEST_F(SystemInfoTest, WithoutOneInTheRegistryTheFirstInstalledToolThatStartsIsTaken)
{
    launcher.installed = {QStringLiteral("gnome-control-center"), QStringLiteral("hardinfo"),
                          QStringLiteral("kinfocenter")};
    expectStarted({QStringLiteral("/usr/bin/hardinfo")});
    launcher.broken = {QStringLiteral("/usr/bin/hardinfo"), QStringLiteral("/usr/bin/kinfocenter")};
    expectStarted({QStringLiteral("/usr/bin/hardinfo"), QStringLiteral("/usr/bin/kinfocenter"),
                   QStringLiteral("/usr/bin/gnome-control-center info-overview")});
}

TEST_F(SystemInfoTest, WithoutAnyToolTheFixedTextIsShown)
{
    dialogs.expectMessage(unavailable);
    expectStarted({});

    registry.keys[folderKey][QStringLiteral("MSINFO")] =
        FakeRegistry::string(QStringLiteral("C:\\Gone"));
    dialogs.expectMessage(unavailable);
    expectStarted({});

    registry.keys[toolKey][QStringLiteral("PATH")] = {.type = 4, .bytes = {1}};
    launcher.broken = {QStringLiteral("&h01")};
    dialogs.expectMessage(unavailable);
    expectStarted({QStringLiteral("&h01")});
}

TEST(QtProgramLauncher, StartsWhatIsThereAndRefusesWhatIsNot)
{
    QtProgramLauncher launcher;
    const QString program = launcher.findProgram(QStringLiteral("true"));
    EXPECT_TRUE(launcher.fileExists(program));
    EXPECT_TRUE(launcher.start(program, {}));
    EXPECT_TRUE(launcher.findProgram(QStringLiteral("no-such-program")).isEmpty());
    EXPECT_FALSE(launcher.start(QStringLiteral("/no/such/program"), {}));
    EXPECT_FALSE(launcher.fileExists(QStringLiteral("/")));
}
