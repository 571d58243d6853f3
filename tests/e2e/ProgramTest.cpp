// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/bench/ReplaySupport.h"

using namespace Qt::StringLiterals;

namespace {

struct Ended
{
    int exitCode;
    QByteArray output;
    QByteArray errors;
};

/// The program as a shell starts it, without a display unless `command` sets one.
Ended shell(const QString &command)
{
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char *name :
         {"QT_QPA_PLATFORM", "QT_LOGGING_RULES", "DISPLAY", "WAYLAND_DISPLAY", "XDG_RUNTIME_DIR"})
        environment.remove(QLatin1String(name));
    environment.insert(u"corvane"_s, QCoreApplication::applicationDirPath() + u"/corvane"_s);
    process.setProcessEnvironment(environment);
    process.start(u"/bin/sh"_s, {u"-c"_s, command});
    EXPECT_TRUE(process.waitForFinished(240'000));
    return {process.exitCode(), process.readAllStandardOutput(), process.readAllStandardError()};
}

} // namespace

/// What is recorded of all Channels and of a run, held to the schema of the format.
TEST(Program, RecordsTheTrafficInItsFormatAndSaysWhenItCannot)
{
    const QTemporaryDir folder;
    const QString prepare = u"cd %1; printf '? SP x\\n! SP 25 9\\n' > a.tst; "_s.arg(folder.path());
    const Ended whole = shell(
        prepare + u"$corvane --demo --record t.jsonl a.tst >/dev/null && "
                  "python3 -c 'import json, sys, jsonschema\n"
                  "schema = json.load(open(sys.argv[1]))\n"
                  "lines = [json.loads(line) for line in open(sys.argv[2])]\n"
                  "for line in lines: jsonschema.validate(line, schema)\n"
                  "print(len({line[\"channel\"] for line in lines[1:]}), "
                  "sum(\"? SP\" in line.get(\"bytes\", \"\") for line in lines))' "
                  "%1/docs/traffic.schema.json t.jsonl"_s.arg(QStringLiteral(PROJECT_FOLDER)));
    EXPECT_EQ(whole.output, "5 1\n") << whole.errors.toStdString();
    const std::pair<const char *, const char *> rows[] = {
        {"$corvane --demo --record . a.tst 2>&1 >o; echo $?; cat o",
         "corvane: --record .: it is no regular file\n2\n"},
        {"$corvane --demo --record a.tst a.tst 2>&1; echo $?",
         "corvane: --record a.tst: that is the list itself\n2\n"},
        {"$corvane --demo --record - a.tst 2>e | grep -c time >n; test $(cat n) -gt 20; echo $?; "
         "tail -1 e",
         "0\nTest Passed.\n"},
        {"$corvane --demo --record /dev/stdout a.tst >o 2>&1; echo $?; cat o",
         "2\ncorvane: --record /dev/stdout: standard output goes there\n"},
        {"$corvane --demo --run a.tst --channel tcp1 --csv - --record o >o 2>e; echo $?; cat o e",
         "2\ncorvane: --record o: --csv goes there\n"},
        {"echo old >t.jsonl; head -c 99999 /dev/zero >long.tst; for list in none long; do $corvane "
         "--run $list.tst --channel tcp1 --record t.jsonl 2>e; echo $?; cat t.jsonl; done",
         "2\nold\n2\nold\n"},
        {"$corvane --demo a.tst >>a.tst 2>e; echo $?; tail -1 e",
         "2\ncorvane: standard output goes into the list itself\n"},
        {"{ $corvane --demo --record - a.tst >&-; echo $?; } 2>&1",
         "corvane: standard output: it is closed; the recording of the traffic ends here\n2\n"},
        {"ulimit -f 2; $corvane --demo --record t.jsonl a.tst >/dev/null 2>e; echo $?; "
         "grep -o 't.jsonl: File too large' e; tail -c 2 t.jsonl",
         "2\nt.jsonl: File too large\n}\n"},
    };
    for (const auto &[command, output] : rows)
        EXPECT_EQ(shell(prepare + QLatin1String(command)).output, output) << command;
}

TEST(Program, EndsWithAnExitCodeAndPlainWords)
{
    const QTemporaryDir folder;
    const struct
    {
        const char *command;
        int exitCode;
        const char *output;
        const char *errors;
    } rows[] = {
        {"$corvane -v", 0, "Corvane 1.0.0\n", ""},
        {"$corvane -v > /dev/full", 2, "", "corvane: standard output cannot be written\n"},
        {"DISPLAY=:9999 $corvane --nonsense", 2, "",
         "corvane: Unknown option 'nonsense'.\nSee corvane --help.\n"},
        {"$corvane", 2, "",
         "corvane: there is no display. Use --run LIST to run a list, or --demo.\n"},
        {"$corvane --demo --folder $folder", 2, "",
         "corvane: --folder FOLDER: is for the window, and there is no display\n"},
        {"cd $folder; QT_QPA_PLATFORM=nonsense $corvane 2>e; s=$?; head -1 e; exit $s", 2,
         "corvane: the toolkit cannot start on \"nonsense\" (QT_QPA_PLATFORM).\n", ""},
        {"$corvane $(printf 'caf\\351')", 2, "",
         "corvane: caf\xef\xbf\xbd: the name is not in the system's character set (UTF-8)\n"},
        {"$corvane --run a.tst --channel tcp1 >&-", 2, "", "corvane: standard output is closed\n"},
        {"$corvane --list-ports --run a.tst", 2, "",
         "corvane: --run a.tst: --list-ports runs no list\nSee corvane --help.\n"},
        {"cd $folder; { $corvane --demo --run a.tst --channel tcp2 --csv - 2>/dev/full; echo $? "
         ">&2; "
         "} | head -1 | tr -d '\\r'",
         0, "Line,Operator,Command,Value,Tolerance,Response\n", "2\n"},
        {"cd $folder; env -u HOME $corvane --demo a.kms <&- | tail -1", 0, "1\t= SP 25\tOK\t\n",
         ""},
        {"cd $folder; ulimit -f 0; $corvane --run n.kms --channel tcp1 --host 127.0.0.1 --port 1 "
         "--csv b.csv 2>&1 | tail -1",
         0, "corvane: b.csv: File too large\n", ""},
        {"cd $folder; $corvane --run a.tst --channel tcp1 --host 127.0.0.1 --port 1 --junit j.xml "
         "2>e; grep -l 'is not connected: .*refused' e j.xml",
         0, "e\nj.xml\n", ""},
        // Stopped while it writes more than the pipe takes.
        {"cd $folder; mkfifo p; exec 3<>p; $corvane --run n.kms --channel tcp1 --host 127.0.0.1 "
         "--port 1 --csv - >&3 2>e & read -r line <&3; kill $!; wait $!; s=$?; tail -1 e; exit $s",
         2, "corvane: stopped, and the output is read by nobody\n", ""},
        {"{ $corvane --demo --run $folder/a.tst --channel tcp2; echo $? >&2; } | true", 0, "",
         "Test Passed.\ncorvane: standard output cannot be written\n2\n"},
        {"cd $folder; $corvane --demo --replay r.jsonl --fast r.tst 2>e | tail -5; cat e", 0,
         "replays r.jsonl: 2 exchanges, at once\nline 6: the file is cut here; what is before it "
         "is "
         "used\n1\t? SP x\t9.0\t\n2\t! SP 9 1\tPASSED\tPASSED\n3\t? SP x\t8.0\t\nTest Passed.\n",
         ""},
        {"$corvane --demo --tcp1 127.0.0.1:1 a.tst", 2, "",
         "corvane: the set-up of a Channel is for the window, and there is no display. --run LIST "
         "runs a list on a Channel that is set up.\n"},
        {"cd $folder; $corvane --demo --replay a.kms", 2, "",
         "corvane: --replay a.kms: it is no recording of traffic\n"},
    };
    corvane::bench::RecordingFile recording;
    recording.write({"1 TCP/IP-1 > ? SP x\r", "2 TCP/IP-1 < 9.0\r\n", "3 TCP/IP-1 > ? SP x\r",
                     "4 TCP/IP-1 < 8.0\r\n", R"({"event":"da)"});
    EXPECT_TRUE(QFile::copy(recording.path(), folder.filePath(u"r.jsonl"_s)));
    shell(u"printf '= SP 25\\n' > %1/a.kms; printf '? SP x\\n! SP 25 9\\n' > %1/a.tst; "
          "printf '? SP x\\n! SP 9 1\\n? SP x\\n' > %1/r.tst; truncate -s -1 %1/r.jsonl; "
          "yes SP | head -20000 > %1/n.kms"_s.arg(folder.path()));
    for (const auto &row : rows) {
        const Ended ended = shell(u"folder=%1; "_s.arg(folder.path()) + QLatin1String(row.command));
        EXPECT_EQ(ended.exitCode, row.exitCode) << row.command;
        EXPECT_EQ(ended.output, row.output) << row.command;
        EXPECT_EQ(QByteArray(ended.errors).replace(folder.path().toLocal8Bit(), "FOLDER"),
                  row.errors)
            << row.command;
    }
}

/// What a screen reader is told of every window.
TEST(Program, IsReadByAScreenReader)
{
    const Ended ended = shell(
        u"command -v dbus-run-session >/dev/null || exit 77; for python in python3 "
        u"/usr/bin/python3; "
        "do $python -c 'import gi' 2>/dev/null && break; done; "
        "LSAN_OPTIONS=detect_leaks=0 dbus-run-session -- $python -W ignore %1/tests/e2e/readers.py "
        "$corvane"_s.arg(QStringLiteral(PROJECT_FOLDER)));
    if (ended.exitCode == 77)
        GTEST_SKIP() << "AT-SPI, its Python binding or Xvfb is not installed";
    EXPECT_EQ(ended.exitCode, 0) << ended.output.toStdString() << ended.errors.toStdString();
}
