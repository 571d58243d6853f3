// SPDX-License-Identifier: GPL-3.0-or-later
#include "ReplaySupport.h"
#include "bench/ReplayDevice.h"

#include <sys/stat.h>

using namespace Qt::StringLiterals;

using namespace corvane::bench;

namespace {

/// Answers as the only device of the rows.
struct OneDevice
{
    explicit OneDevice(const QList<QByteArray> &rows,
                       ReplayDevice::Pace pace = ReplayDevice::Pace::Recorded)
        : recording(RecordingFile().write(rows).read())
        , device(recording.devices.at(0), pace,
                 [this](const QByteArray &line) { unknown.append(line); })
    {
        EXPECT_EQ(recording.notes, QStringList());
    }
    std::string ask(const QByteArray &line) { return written(device.respond(line)); }

    QByteArrayList unknown;
    Recording recording;
    ReplayDevice device;
};

} // namespace

TEST(Recording, RepliesComeInTheirOrderAndThenAnew)
{
    OneDevice one({"1 TCP/IP-1 > ? PV\r", "2 TCP/IP-1 < 21\r\n", "3 TCP/IP-1 > ? SP\r",
                   "4 TCP/IP-1 > ? PV\r\n", "5 TCP/IP-1 > ? PV\n", "6 TCP/IP-1 < 22\r\n",
                   "7 TCP/IP-1 > \r\n", "8 TCP/IP-1 < 23\r\n"});
    for (int round = 0; round < 2; ++round) {
        EXPECT_EQ(one.ask("? PV"), "1:21\r\n$");
        EXPECT_EQ(one.ask("? SP"), "") << "it was silent";
        EXPECT_EQ(one.ask("? PV"), "");
        EXPECT_EQ(one.ask("? PV"), "1:22\r\n|2:23\r\n$") << "an empty line is no request";
    }
    EXPECT_EQ(one.ask("? pv"), "");
    EXPECT_EQ(one.unknown, QByteArrayList{"? pv"});
    EXPECT_EQ(one.ask("? PV"), "1:21\r\n$");
    one.device.rewind();
    EXPECT_EQ(one.ask("? PV"), "1:21\r\n$");
    EXPECT_EQ(one.device.recorded().exchanges, 4);
}

TEST(Recording, PiecesKeepTheirDelaysFromTheEndOfTheRequest)
{
    // Each delay alone would round to nothing.
    const QList<QByteArray> rows{"0 RS-485 > >05", "9 RS-485 >  ? PV\rlost", "9.4 RS-485 < <",
                                 "9.8 RS-485 < 0", "10.2 RS-485 < 5",        "40 RS-485 < :21"};
    EXPECT_EQ(OneDevice(rows).ask(">05 ? PV"), "0:<|1:0|0:5|30::21$");
    EXPECT_EQ(OneDevice(rows, ReplayDevice::Pace::Fast).ask(">05 ? PV"), "0:<05:21$");
    const QList<QByteArray> alarm{"1 TCP/IP-1 > A\r", "41 TCP/IP-1 < a", "81 TCP/IP-1 < \r\n",
                                  "981 TCP/IP-1 < ALARM", "982 TCP/IP-1 < \r\n"};
    EXPECT_EQ(OneDevice(alarm, ReplayDevice::Pace::Fast).ask("A"), "0:a\r\n|980:ALARM|1:\r\n$");
    // A clock that goes back, and one that goes too far.
    EXPECT_EQ(OneDevice({"9 RS-485 > A\r", "3 RS-485 < 1", "10 RS-485 < 2",
                         "9000000000000 RS-485 < 3", "9000000000001 RS-485 < 4"})
                  .ask("A"),
              "0:1|1:2|2147483647:3|1:4$");
    OneDevice bytes({"1 RS-232 > \xff\x01\r", QByteArray("1 RS-232 < \0\x80\xff\\\"", 16)});
    EXPECT_EQ(bytes.ask("\xff\x01"), std::string("0:\0\x80\xff\\\"$", 8));
}

TEST(Recording, WhatCameUnaskedComesOnceAfterItsConnection)
{
    const QList<QByteArray> rows{"5 TCP/IP-2 + h:1",  "8 TCP/IP-2 < hello", "9 TCP/IP-2 <  you",
                                 "9 TCP/IP-2 > A\r",  "10 TCP/IP-2 < a",    "60 TCP/IP-2 + h:1",
                                 "70 TCP/IP-2 + h:1", "71 TCP/IP-2 < again"};
    OneDevice one(rows);
    EXPECT_EQ(written(one.device.greet()), "3:hello|1: you$");
    EXPECT_EQ(written(one.device.greet()), "") << "nothing came after the second";
    EXPECT_EQ(one.ask("A"), "1:a$");
    EXPECT_EQ(written(one.device.greet()), "1:again$");
    EXPECT_EQ(written(one.device.greet()), "");
}

TEST(Recording, WhatCannotBeUsedIsSaidAndTheRestIsUsed)
{
    const auto with = [](QLatin1String member, const QJsonValue &value) {
        QJsonObject line{{u"event"_s, u"data"_s},
                         {u"time"_s, 1},
                         {u"channel"_s, u"RS-232"_s},
                         {u"direction"_s, u"sent"_s},
                         {u"bytes"_s, u"A\r"_s}};
        line.insert(member, value);
        return QJsonDocument(line).toJson(QJsonDocument::Compact);
    };
    const QByteArray good = with("more"_L1, QJsonArray{1});
    const std::pair<QByteArray, const char *> lines[] = {
        {"", "no JSON object"},
        {"[1]", "no JSON object"},
        {good.chopped(1), "no JSON object"},
        {with("event"_L1, QJsonValue::Undefined), "no \"event\""},
        {with("time"_L1, QJsonValue::Undefined), "\"time\""},
        {with("time"_L1, -1), "\"time\""},
        {with("time"_L1, 0.5), "\"time\""},
        {with("channel"_L1, u"RS-422"_s), "\"channel\""},
        {with("direction"_L1, u"up"_s), "\"direction\""},
        {with("bytes"_L1, QJsonValue::Undefined), "\"bytes\""},
        {with("bytes"_L1, u"\u20ac"_s), "\"bytes\""},
        {"1 IEEE 488 @ GPIB0::31", "no GPIB address"},
        {"1 IEEE 488 @ GPIB0::5::95", "no GPIB address"},
        {R"({"event":"lost","time":1,"count":7})", "missing here: 7"},
        {R"({"event":"start","time":0,"format":"corvane-traffic","version":1})",
         "another recording"},
    };
    for (const auto &[line, note] : lines) {
        const Recording recording = RecordingFile().write({good, line, good}).read();
        const QString notes = recording.notes.join(u'|');
        EXPECT_TRUE(notes.startsWith(u"line 3: "_s)) << line.toStdString();
        EXPECT_TRUE(notes.contains(QLatin1String(note))) << notes.toStdString();
        EXPECT_EQ(recording.devices.at(0).exchanges, 2);
    }
    const Recording moved = RecordingFile()
                                .write({"1 RS-232 + COM1, 9600", good, "2 RS-232 + COM1, 2400",
                                        "3 RS-232 + COM2, 2400", "4 RS-232 + COM1, 2400"})
                                .read();
    EXPECT_EQ(moved.notes.join(u'|').toStdString(),
              "line 5: RS-232 goes to COM2 here, and to COM1 before; one device answers for all "
              "its places");
    const OneDevice passedOver(
        {good, with("event"_L1, u"fault"_s), with("event"_L1, u"not known yet"_s)});
    const Recording many = RecordingFile().write({good, QByteArray(100, '\n')}).read();
    EXPECT_EQ(many.notes.size(), 11);
    EXPECT_EQ(many.notes.last().toStdString(), "and 91 more");
}

TEST(Recording, NothingIsJoinedOverWhatIsMissing)
{
    const QByteArray before[] = {"1 TCP/IP-1 > A\r", "2 TCP/IP-1 > hal", "3 IEEE 488 @ GPIB0::5",
                                 "4 IEEE 488 > A"};
    const QByteArray after[] = {"5 TCP/IP-1 < lost's",    "6 TCP/IP-1 > A\r",
                                "7 TCP/IP-1 < a",         "8 IEEE 488 < lost's",
                                "9 IEEE 488 > B",         "10 RS-232 < lost's",
                                "11 IEEE 488 @ GPIB0::5", "12 IEEE 488 < lost's",
                                "13 RS-485 + p",          "14 RS-485 < up"};
    for (const QByteArray missing : {R"({"event":"lost","time":1,"count":7})", "{damaged"}) {
        QList<QByteArray> rows(std::begin(before), std::end(before));
        rows.append(missing);
        rows.append(QList<QByteArray>(std::begin(after), std::end(after)));
        const Recording recording = RecordingFile().write(rows).read();
        EXPECT_EQ(recording.notes.value(1).toStdString(),
                  "data events whose request or GPIB address is not known, and which are not used: "
                  "5, the first in line 7");
        ASSERT_EQ(recording.devices.size(), 3U);
        EXPECT_EQ(written(recording.devices[0].unasked.at(0)), "1:up$");
        for (const RecordedDevice &device : {recording.devices[1], recording.devices[2]}) {
            EXPECT_EQ(device.replies.keys(), QByteArrayList{"A"});
            EXPECT_EQ(written(device.replies["A"].at(0)), "");
        }
        EXPECT_EQ(written(recording.devices[2].replies["A"].at(1)), "1:a$");
    }
}

TEST(Recording, ReadsNoMoreThanItMayKeep)
{
    const QByteArray row = "1 RS-232 > A\r";
    RecordingFile file;
    const Recording cut = file.write({row, row, row}).read({.keptBytes = 300});
    EXPECT_EQ(cut.devices.at(0).exchanges, 2);
    EXPECT_EQ(cut.notes.value(0).toStdString(),
              "line 3: there is too much data; what follows is not used");
    const Recording skipped =
        file.write({row, QByteArray(1000, 'x'), row}).read({.lineBytes = 200});
    EXPECT_EQ(skipped.devices.at(0).exchanges, 2);
    EXPECT_EQ(skipped.notes.join(u'|').toStdString(), "line 3: it is longer than 200 bytes");
    file.writeRaw(QByteArray(1000, '\0'));
    EXPECT_EQ(file.read({.lineBytes = 200}).fault.toStdString(), "it is no recording of traffic");
}

TEST(Recording, AFileThatIsNoneIsRefusedWithTheReason)
{
    const std::pair<QByteArray, const char *> texts[] = {
        {"", "it is empty"},
        {"? SP x\n! SP 25 9\n", "it is no recording of traffic"},
        {QByteArray("\x7f\x45LF\0\1", 6), "it is no recording of traffic"},
        {"{\"a\":1}\n", "it is no recording of traffic"},
        {R"({"event":"start","time":0,"format":"corvane-traffic"})", "it is no recording"},
        {R"({"event":"start","time":0,"format":"corvane-traffic","version":2})",
         "of version 2, and only version 1"},
        {RecordingFile::start, "there is no data in it"},
    };
    RecordingFile file;
    for (const auto &[text, fault] : texts)
        EXPECT_TRUE(file.writeRaw(text).read().fault.contains(QLatin1String(fault)))
            << text.toStdString();
    const Recording wrong = file.write({"nonsense"}).read();
    EXPECT_EQ(wrong.fault.toStdString(), "there is no data in it (line 2: it is no JSON object)");

    const QTemporaryDir folder;
    const QString pipe = folder.filePath(u"pipe"_s);
    ASSERT_EQ(::mkfifo(pipe.toLocal8Bit().constData(), 0600), 0);
    for (const auto &[path, fault] : {std::pair(folder.path(), "it is no regular file"),
                                      std::pair(pipe, "it is no regular file"),
                                      std::pair(folder.filePath(u"gone"_s), "No such file")})
        EXPECT_TRUE(Recording::read(path).fault.startsWith(QLatin1String(fault)))
            << path.toStdString();
    QFile::setPermissions(file.path(), {});
    if (::geteuid() != 0) {
        EXPECT_EQ(file.read().fault.toStdString(), "Permission denied");
    }
}
