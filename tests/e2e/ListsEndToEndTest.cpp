// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/UnattendedRun.h"
#include "core/traffic/TrafficWriter.h"
#include "tests/e2e/EndToEndDesk.h"
#include "windows/lists/CommandListArea.h"
#include "windows/main/SerialTab.h"
#include "windows/widgets/TextGrid.h"

#include <csignal>

using namespace corvane;

namespace {

struct ListRun
{
    int exitCode = -1;
    QString rows;
    QString messages;
};

/// Runs a list unattended on the desk's Channel, as `corvane --demo --run` does.
ListRun run(EndToEndDesk &desk, const CommandLine &given)
{
    CommandLine line = given;
    line.task = CommandLine::Task::Run;
    line.loopMs = line.loopMs.value_or(20);
    ListRun result;
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    QTextStream out(&buffer);
    desk.messages.clear();
    result.exitCode =
        UnattendedRun(desk.program.workbench(), line, out, desk.messageStream).execute();
    result.rows = QString::fromUtf8(buffer.data());
    result.messages = desk.messages;
    return result;
}

struct Folder
{
    QString write(const char *name, const QByteArray &text) const
    {
        QString path = folder.filePath(QLatin1String(name));
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(text) == text.size());
        return path;
    }
    QByteArray read(const char *name) const
    {
        QFile file(folder.filePath(QLatin1String(name)));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    QTemporaryDir folder;
};

} // namespace

TEST(EndToEndLists, GetSendPassAndFailOnEveryChannel)
{
    const Folder files;
    const QString settings = files.write("a.kms", "SP\r\nTHI\r\n");
    const QString write = files.write("b.kms", "= SP 31\r\n");
    const QString pass = files.write("pass.tst", "? SP x\r\n! SP 31 0.5\r\n# PAUSE\r\n");
    const QString fail = files.write("fail.tst", "? SP x\r\n! SP 25 0.5\r\n? SP x\r\n");
    EndToEndDesk desk;
    for (int index = 0; index < channelCount; ++index) {
        CommandLine line;
        line.channel = index;
        line.list = write;
        EXPECT_EQ(run(desk, line).exitCode, 0) << index;
        line.list = pass;
        EXPECT_EQ(run(desk, line).messages, u"Test Passed.\n") << index;
        line.list = fail;
        line.junitFile = files.folder.filePath(u"f.xml"_s);
        line.csvFile = files.folder.filePath(u"f.csv"_s);
        const ListRun failed = run(desk, line);
        for (const QString &name : {u"window.csv"_s, u"window.xml"_s}) {
            desk.dialogs.savePath = files.folder.filePath(name);
            desk.main.commandList->cmdSaveResults->click();
        }
        EXPECT_EQ(files.read("window.csv"), files.read("f.csv"));
        EXPECT_TRUE(files.read("window.xml").contains("tests=\"1\" failures=\"1\" errors=\"0\""))
            << files.read("window.xml").toStdString();
        EXPECT_EQ(failed.exitCode, 1) << index;
        EXPECT_EQ(failed.messages, u"Test Failed.\n");
        EXPECT_EQ(failed.rows.count(u'\n'), 2) << failed.rows.toStdString();
        EXPECT_TRUE(files.read("f.xml").contains("expected &quot;25&quot;, tolerance "
                                                 "&quot;0.5&quot;, reply &quot;31.0&quot;"));
        line.csvFile.clear();
        line.list = settings;
        line.get = true;
        line.saveFile = files.folder.filePath(u"saved.kms"_s);
        line.csvFile = files.folder.filePath(u"grid.csv"_s);
        EXPECT_EQ(run(desk, line).exitCode, 0) << index;
        EXPECT_TRUE(files.read("saved.kms").startsWith("SP 31.0\r\nTHI ")) << index;
        EXPECT_TRUE(files.read("grid.csv").startsWith("Line,Command,Value,Response\r\n1,SP,31.0,"));
    }
}

TEST(EndToEndLists, ASessionOfAllChannelsThatWasRecordedIsReplayedToTheSameVerdicts)
{
    const Folder files;
    const QString lists[] = {files.write("pass.tst", "= SP 31\r\n? SP x\r\n! SP 31 0.5\r\n"),
                             files.write("fail.tst", "? SP x\r\n! SP 25 0.5\r\n")};
    const auto session = [&lists](EndToEndDesk &desk) {
        QStringList told;
        for (int index = 0; index < channelCount; ++index) {
            for (const QString &list : lists) {
                CommandLine line;
                line.channel = index;
                line.list = list;
                const ListRun result = run(desk, line);
                told << QString::number(result.exitCode) + result.rows + result.messages;
            }
        }
        return told;
    };
    CommandLine line = EndToEndDesk::demo();
    line.replayFile = files.folder.filePath(u"session.jsonl"_s);
    line.replaysFast = true;
    QStringList recorded;
    {
        EndToEndDesk desk;
        TrafficWriter writer(desk.program.workbench().traffic(), line.replayFile);
        recorded = session(desk);
        EXPECT_EQ(writer.finish(), QString());
    }
    EXPECT_EQ(recorded.filter(u"Test Passed."_s).size(), channelCount);
    EXPECT_EQ(recorded.filter(u"Test Failed."_s).size(), channelCount);
    EndToEndDesk again(line);
    EXPECT_EQ(session(again), recorded);
}

TEST(EndToEndLists, WhatCannotRunEndsWithTwoAndTheReason)
{
    const Folder files;
    const QString list = files.write("a.kms", "= SP 25\r\n= SP 26\r\n");
    EndToEndDesk desk;
    CommandLine line;
    line.channel = 3;
    line.patienceSeconds = 1;
    line.list = files.folder.filePath(u"none.tst"_s);
    EXPECT_EQ(run(desk, line).exitCode, 2);
    line.list = list;
    desk.order("tcp-chamber silent");
    const ListRun silent = run(desk, line);
    EXPECT_EQ(silent.exitCode, 2);
    EXPECT_TRUE(silent.messages.contains(u"row 1: no reply within 1 s"_s));
    desk.order("clear");
    line.loopMs = 1200; // longer than the patience, and no reply is out
    EXPECT_EQ(run(desk, line).exitCode, 0);
    line.loopMs.reset();
    line.list = files.write("s.kms", "= SP 25\r\nSP\r\n");
    const ListRun syntax = run(desk, line);
    EXPECT_EQ(syntax.exitCode, 2);
    EXPECT_TRUE(syntax.messages.contains(u"row 2: a cell that is needed is empty"_s));
    line.list = files.write("p.tst", "? SP x\r\n");
    line.get = true;
    EXPECT_EQ(run(desk, line).exitCode, 2);
    line.get = false;
    line.setups[line.channel].port = u"70000"_s;
    desk.main.cmdDisconnect_Click(3);
    EXPECT_EQ(run(desk, line).exitCode, 2);
}

TEST(EndToEndLists, StripOperatorSendsTheBareCommand)
{
    const Folder files;
    EndToEndDesk desk;
    CommandLine line;
    line.channel = 4;
    line.list = files.write("s.tst", "= SP 27\r\n");
    line.stripOperator = true;
    EXPECT_TRUE(run(desk, line).rows.startsWith(u"1\tSP 27\t"));
}

TEST(EndToEndLists, ResultsThatCannotBeKeptAreRefusedBeforeAnythingIsSent)
{
    const Folder files;
    CommandLine line;
    line.channel = 3;
    line.list = files.write("a.tst", "= SP 29\r\n");
    const QString report = files.write("old.xml", "old");
    const QString folder = files.folder.path();
    ASSERT_TRUE(QFile::link(u"n"_s, folder + u"/l"_s));
    const std::array<QString, 3> refused[] = {
        {folder + u"/x/a.csv"_s, report, u"No such file"_s},
        {report, folder, u"regular file"_s},
        {u"/dev/full"_s, report, u"regular file"_s},
        {report, folder + u"/./a.tst"_s, u"the list itself"_s},
        {folder + u"/l"_s, folder + u"/./n"_s, u"--csv"_s},
        {u"-"_s, u"-"_s, u"--csv goes there"_s},
    };
    EndToEndDesk desk;
    for (const auto &[csv, junit, reason] : refused) {
        line.csvFile = csv;
        line.junitFile = junit;
        const ListRun ended = run(desk, line);
        EXPECT_EQ(ended.exitCode, 2) << reason.toStdString();
        EXPECT_TRUE(ended.messages.contains(reason)) << ended.messages.toStdString();
        EXPECT_EQ(ended.rows, QString());
    }
    EXPECT_EQ(files.read("old.xml"), "old");
    EXPECT_EQ(QDir(folder).entryList(QDir::Files | QDir::Hidden).size(), 2);
    line.csvFile = u"-"_s;
    line.junitFile.clear();
    const ListRun printed = run(desk, line);
    EXPECT_TRUE(printed.rows.startsWith(u"Line,Operator,")) << printed.rows.toStdString();
    EXPECT_TRUE(printed.messages.startsWith(u"1\t= SP 29\t"));
    EXPECT_TRUE(printed.messages.contains(u"no check"));
}

TEST(EndToEndLists, AFailedCheckIsToldAlsoWhenTheRowsCannotBePrinted)
{
    const Folder files;
    CommandLine line;
    line.loopMs = 20;
    line.channel = 3;
    line.list = files.write("a.tst", "? SP x\r\n! SP 99 1\r\n");
    line.junitFile = files.folder.filePath(u"a.xml"_s);
    QFile full(u"/dev/full"_s);
    ASSERT_TRUE(full.open(QIODevice::WriteOnly));
    QTextStream out(&full);
    EndToEndDesk desk;
    EXPECT_EQ(UnattendedRun(desk.program.workbench(), line, out, desk.messageStream).execute(), 2);
    EXPECT_TRUE(desk.messages.contains(u"row 2: the check failed all the same"));
    EXPECT_TRUE(files.read("a.xml").contains("tests=\"2\" failures=\"1\" errors=\"1\""));
}

TEST(EndToEndLists, NoRunIsDoneThatGotNoReplyAndNoneIsGivenUpThatGoesOn)
{
    const Folder files;
    EndToEndDesk desk;
    CommandLine line;
    line.patienceSeconds = 1;

    line.channel = 4; // the second half of the command gets no reply
    line.list = files.write("a.tst", "= SP 25;= SP 26\r\n");
    QObject context;
    QObject::connect(&desk.channels.at(4), &ChannelSession::replied, &context,
                     [&desk] { desk.order("tcp-chamber silent"); });
    EXPECT_TRUE(run(desk, line).messages.contains(u"row 1: no reply within 1 s"));
    desk.channels.at(4).disconnect(&context);
    desk.order("clear");

    line.channel = 3;
    line.get = true;
    line.list = line.saveFile = files.write("a.kms", "= SP 50\r\nTHI\r\n");
    desk.order("tcp-chamber garbage \\r\\n once");
    const ListRun empty = run(desk, line);
    EXPECT_EQ(empty.exitCode, 2);
    EXPECT_TRUE(empty.messages.contains(u"no value came for row 1\n"));
    EXPECT_EQ(files.read("a.kms"), "= SP 50\r\nTHI\r\n") << "the value there is not lost";
    line.saveFile.clear();
    desk.dialogs.savePath = files.folder.filePath(u"window.xml"_s);
    desk.main.commandList->cmdSaveResults->click();
    EXPECT_TRUE(files.read("window.xml").contains("no value came for row 1\""));

    line.channel = 2; // a reply is read one period after its command
    line.loopMs = 1500;
    EXPECT_EQ(run(desk, line).exitCode, 0);

    line.loopMs.reset();
    line.channel = 0;
    line.junitFile = files.folder.filePath(u"a.xml"_s);
    QObject::connect(&desk.program.workbench().engine(), &TransferEngine::rowFinished, &context,
                     [&desk] { desk.main.serialTab(0).cboAddress485->setCurrentText(u"09"_s); });
    EXPECT_TRUE(run(desk, line).messages.contains(u"row 2: no reply within 1 s"));
    EXPECT_TRUE(files.read("a.xml").contains("address 05, then /")) << "the second was asked, too";

    line.channel = 2;
    QTimer::singleShot(0, &context, [] { std::raise(SIGHUP); });
    QTimer::singleShot(0, &context, [] { std::raise(SIGTERM); });
    const ListRun stopped = run(desk, line);
    EXPECT_EQ(stopped.exitCode, 2);
    EXPECT_TRUE(stopped.messages.contains(u"stopped")) << stopped.messages.toStdString();
}
