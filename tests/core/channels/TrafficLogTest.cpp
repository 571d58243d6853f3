// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/channels/TrafficLog.h"

#include "tests/support/Testing.h"
#include "tests/support/WriteLimit.h"

#include <sys/stat.h>

using namespace corvane;

namespace {

struct LogDesk
{
    struct Box
    {
        bool checked = false;
        bool connected = true;
        QString reply;
    };

    TrafficLog::Source source(const Box &box)
    {
        return {[&box] { return box.checked; }, [&box] { return box.connected; },
                [&box] { return box.reply.toLatin1(); }};
    }

    LogDesk()
    {
        QObject::connect(&log, &TrafficLog::recorded, &log,
                         [this](const QString &record) { comments += record + u'\n'; });
        QObject::connect(&log, &TrafficLog::loggingChanged, &log,
                         [this](bool logging) { isLit = logging; });
        QObject::connect(&log, &TrafficLog::flashed, &log,
                         [this](bool bright) { isBright = bright; });
    }

    [[nodiscard]] QByteArray file() const
    {
        QFile written(path);
        return written.open(QIODevice::ReadOnly) ? written.readAll() : QByteArray();
    }

    QTemporaryDir folder;
    QString path = folder.filePath(u"Log.txt"_s);
    Box first;
    Box second;
    QString comments;
    bool isLit = false;
    bool isBright = false;
    TrafficLog log{path, source(first), source(second)};
    QByteArray today = QDate::currentDate().toString(Qt::ISODate).toLatin1();
};

} // namespace

TEST(TrafficLog, WritesAPlainLineForTcpIp1AndQuotedRecordsForTheOthers)
{
    LogDesk desk;
    desk.first = {true, true, u"A\r\n\tB\u00e4"_s};
    desk.log.TimerLog_Timer();
    EXPECT_EQ(desk.file(), "AB\xe4\r\n");
    desk.first.checked = false;
    desk.second = {true, true, u"C\tD"_s};
    desk.log.TimerLog_Timer();
    desk.first.checked = true;
    desk.first.reply = u"A"_s;
    desk.log.TimerLog_Timer();
    const QByteArray second = desk.today + " , C\tD";
    const QByteArray both = desk.today + " , A , C\tD";
    EXPECT_EQ(desk.file(), "AB\xe4\r\n\"" + second + "\"\r\n\"" + both + "\"\r\n");
    EXPECT_EQ(desk.comments.toLatin1(), desk.today + " , AB\xe4\n" + second + "\n" + both + "\n");
}

TEST(TrafficLog, LogsNothingForAnEmptyReplyOrASocketThatIsNotConnected)
{
    LogDesk desk;
    desk.first = {true, true, QString()};
    desk.log.TimerLog_Timer();
    desk.first.reply = u"A"_s;
    desk.second = {true, false, u"B"_s};
    desk.log.TimerLog_Timer();
    desk.second = {false, true, u"B"_s};
    desk.first.connected = false;
    desk.log.TimerLog_Timer();
    EXPECT_FALSE(QFile::exists(desk.path));
    EXPECT_EQ(desk.comments, QString());
}

TEST(TrafficLog, FlashesAtEveryWriteAndShowsTheIndicatorWhileLogging)
{
    LogDesk desk;
    desk.log.initialise();
    EXPECT_FALSE(desk.isLit);
    desk.log.setLogging(true);
    EXPECT_TRUE(desk.log.TimerLog->isActive());
    EXPECT_TRUE(desk.isLit);

    desk.first = {true, true, u"A"_s};
    desk.log.TimerLog_Timer();
    ASSERT_TRUE(desk.log.TimerLED->isActive());
    desk.log.TimerLED_Timer();
    EXPECT_FALSE(desk.isBright);
    EXPECT_FALSE(desk.log.TimerLED->isActive());
    desk.log.TimerLog_Timer();
    desk.log.TimerLED_Timer();
    EXPECT_TRUE(desk.isBright);
    EXPECT_TRUE(desk.log.TimerLED->isActive());
    desk.log.TimerLED_Timer();
    EXPECT_FALSE(desk.isBright);
}

TEST(TrafficLog, AFileThatCannotBeWrittenIsToldOnceAndEndsLogging)
{
    LogDesk desk;
    const auto mayLog = [&desk] {
        QSignalSpy failures(&desk.log, &TrafficLog::failed);
        desk.log.setLogging(true);
        desk.log.TimerLog_Timer();
        const bool ended = !desk.log.TimerLog->isActive() && !desk.isLit;
        EXPECT_EQ(ended, failures.size() == 1);
        return failures.empty() ? QString() : failures[0][0].toString();
    };
    const QString refused = desk.path + u": it is no regular file"_s;
    QDir(desk.folder.path()).mkdir(u"Log.txt"_s);
    desk.first = {true, true, u"A"_s};
    EXPECT_EQ(mayLog(), refused);
    QDir(desk.folder.path()).rmdir(u"Log.txt"_s);
    ASSERT_EQ(mkfifo(QFile::encodeName(desk.path).constData(), 0600), 0);
    EXPECT_EQ(mayLog(), refused); // and nobody waits for a reader of the pipe
    QFile::remove(desk.path);
    EXPECT_EQ(mayLog(), QString());
    desk.first.reply = u"longer"_s;
    QString full;
    {
        const WriteLimit limit(6);
        full = mayLog();
    }
    EXPECT_EQ(full, desk.path + u": File too large"_s);
    EXPECT_EQ(mayLog(), QString());
    EXPECT_EQ(desk.file(), "A\r\nlonger\r\n"); // no part of the record before
}
