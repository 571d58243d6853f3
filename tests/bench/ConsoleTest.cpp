// SPDX-License-Identifier: GPL-3.0-or-later
#include "ReplaySupport.h"

#include <csignal>

using namespace Qt::StringLiterals;

using namespace corvane::bench;

namespace {

class Console : public testing::Test
{
protected:
    ~Console() override
    {
        process.kill();
        process.waitForFinished();
    }
    void start(const QStringList &more = {})
    {
        QStringList arguments = {u"--chamber-port"_s, u"0"_s, u"--board-port"_s, u"0"_s,
                                 u"--gpib-port"_s,    u"0"_s};
        process.start(QStringLiteral(BENCH_PROGRAM), arguments + more);
    }
    bool prints(const char *text)
    {
        return soon([&] {
            output += process.readAllStandardOutput();
            return output.contains(text);
        });
    }
    bool ends()
    {
        return soon([this] { return process.state() == QProcess::NotRunning; });
    }
    [[nodiscard]] QStringList links() const
    {
        return QDir(folder.path())
            .entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot);
    }

    QProcess process;
    QByteArray output;
    QTemporaryDir folder;
};

} // namespace

TEST_F(Console, SaysWhatIsWhereAndTakesOrdersUntilItQuits)
{
    start({u"--links"_s, folder.path(), u"--gpib2"_s, u"0"_s});
    ASSERT_TRUE(prints("\"quit\" ends."));
    EXPECT_EQ(links().size(), 4);
    const QByteArray com = "corvane --com 1=" + folder.path().toLocal8Bit() + "/rs485 ";
    EXPECT_TRUE(output.contains(com)) << output.toStdString();
    EXPECT_TRUE(output.contains("--gpib 1=tcp:127.0.0.1:"));
    process.write("sensor 3\nlist\nnonsense\n");
    EXPECT_TRUE(prints("sensor on channel 3"));
    EXPECT_TRUE(prints("no place \"nonsense\""));
    process.write("quit\n");
    ASSERT_TRUE(ends());
    EXPECT_EQ(process.exitCode(), 0);
    EXPECT_TRUE(links().isEmpty());
}

TEST_F(Console, SignalsEndItCleanlyAndTheEndOfItsInputDoesNot)
{
    for (const int signal : {SIGINT, SIGTERM}) {
        output.clear();
        start({u"--links"_s, folder.path()});
        ASSERT_TRUE(prints("\"quit\" ends."));
        process.closeWriteChannel();
        PtyUser user(folder.filePath(u"rs232"_s)); // still served
        user.send("? SN\r");
        user.expect("CH-10421\r\n");
        ASSERT_EQ(process.state(), QProcess::Running);
        ::kill(static_cast<pid_t>(process.processId()), signal);
        ASSERT_TRUE(ends());
        EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
        EXPECT_TRUE(links().isEmpty());
    }
}

TEST_F(Console, ReplaysARecordingAndRefusesWhatIsNone)
{
    RecordingFile file;
    file.write({"1 RS-232 > A\r", "2 RS-232 < a\r\n"});
    start({u"--replay"_s, file.path(), u"--links"_s, folder.path(), u"--fast"_s});
    ASSERT_TRUE(prints("\"quit\" ends."));
    EXPECT_TRUE(output.contains("r.jsonl: 1 exchange, at once\n")) << output.toStdString();
    EXPECT_TRUE(output.contains("\n  corvane --com 2=" + folder.path().toLocal8Bit() + "/rs232\n"));
    PtyUser user(folder.filePath(u"rs232"_s));
    user.send("B\rA\r");
    user.expect("a\r\n");
    EXPECT_TRUE(prints("not in the recording, on RS-232: \"B\"\n"));
    process.write("quit\n");
    ASSERT_TRUE(ends());

    file.writeRaw("= SP 25\n");
    for (const auto &[arguments, message] :
         {std::pair(QStringList{u"--fast"_s}, "--fast: needs --replay FILE\n"),
          std::pair(QStringList{u"--replay"_s, file.path()},
                    "r.jsonl: it is no recording of traffic\n")}) {
        start(arguments);
        ASSERT_TRUE(process.waitForFinished());
        EXPECT_EQ(process.exitCode(), 2);
        EXPECT_TRUE(process.readAllStandardError().endsWith(message)) << message;
    }
}

TEST_F(Console, WrongOptionsAreRefusedAndHelpExplains)
{
    for (const char *port : {"70000", "abc", "-1", ""}) {
        start({u"--gpib2"_s, QLatin1String(port)});
        ASSERT_TRUE(process.waitForFinished());
        EXPECT_EQ(process.exitCode(), 2) << port;
        EXPECT_TRUE(process.readAllStandardError().contains("is no port for --gpib2"));
    }
    start({u"--help"_s});
    ASSERT_TRUE(process.waitForFinished());
    EXPECT_TRUE(process.readAllStandardOutput().contains("Orders on its standard"));
}
