// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/lists/RunReport.h"

#include "core/lists/JUnitReport.h"
#include "tests/support/Testing.h"

using namespace corvane;

namespace {

/// What xmllint finds against the schema beside this file; nothing where it is not installed.
QByteArray findings(const QByteArray &junit)
{
    if (QStandardPaths::findExecutable(u"xmllint"_s).isEmpty())
        return {};
    const QString schema = QFileInfo(QStringLiteral(__FILE__)).dir().filePath(u"junit.xsd"_s);
    QProcess lint;
    lint.start(u"xmllint"_s, {u"--noout"_s, u"--schema"_s, schema, u"-"_s});
    lint.write(junit);
    lint.closeWriteChannel();
    EXPECT_TRUE(lint.waitForFinished());
    return lint.exitCode() == 0 ? QByteArray() : lint.readAllStandardError() + junit;
}

} // namespace

TEST(RunReport, ASpreadsheetTakesNoCellForAFormulaAndReadsEveryCharacter)
{
    RunReport report;
    report.rows = {{u"= SP"_s, u"="_s, u"-70.5"_s}};
    EXPECT_EQ(report.toCsv(), "\" = SP\",=,-70.5\r\n");
    report.rows = {{u"\"\u00b5,"_s, u"+a"_s}};
    EXPECT_EQ(report.toCsv(), "\xef\xbb\xbf\"\"\"\xc2\xb5,\",\" +a\"\r\n");
}

TEST(JUnitReport, IsValidWhateverAListAndADeviceHold)
{
    using enum GridModel::Verdict;
    RunReport report;
    report.listName = u"a \"b\" <c>&\n.tst"_s;
    report.began = QDateTime(QDate(2026, 3, 1), QTime(0, 30), QTimeZone(3600));
    EXPECT_EQ(findings(junitReport(report)), "");
    EXPECT_TRUE(junitReport(report).contains("name=\"run\" time=\"0.000\"/>")); // and has passed

    report.properties = {{u"device"_s, u"10.0.0.5:5000"_s}};
    report.seconds = 3.5;
    const QString anything = u"\x1b[2J\t\uffff"_s + QChar(0xd800);
    report.checks = {{1, anything, anything, anything, anything, Failed, 1.25}, {}, {}};
    report.checks[2].verdict = Passed;
    report.checks[2].seconds = 1;
    EXPECT_EQ(findings(junitReport(report)), "");
    EXPECT_FALSE(junitReport(report).contains("name=\"run\""));
    report.fault = u"no reply"_s;
    const QByteArray junit = junitReport(report);
    EXPECT_EQ(findings(junit), "");
    for (const char *part :
         {R"(timestamp="2026-02-28T23:30:00" hostname="localhost")",
          R"(hostname="localhost" tests="4" failures="1" errors="1" skipped="1" time="3.500")",
          R"(name="device" value="10.0.0.5:5000")", R"(name="row 1: \x1b[2J&#9;\uffff\ud800")",
          R"(time="1.250")", R"(name="run" time="1.250")", R"(<error message="no reply")"})
        EXPECT_TRUE(junit.contains(part)) << part << "\n" << junit.toStdString();
}
