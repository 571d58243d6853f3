// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/traffic/TrafficLine.h"
#include "core/traffic/TrafficRecorder.h"
#include "core/traffic/TrafficWriter.h"
#include "devices/PlatformError.h"
#include "tests/devices/Pty.h"
#include "tests/support/FakeChannels.h"
#include "tests/support/Soon.h"
#include "tests/support/WriteLimit.h"

using namespace corvane;

namespace {

/// "0 sent *IDN?\r" of the Channel 0.
QString told(const TrafficEvent &event)
{
    const char *const kinds[] = {"sent",      "received", "connected", "disconnected",
                                 "addressed", "fault",    "timeout"};
    return u"%1 %2 %3"_s.arg(event.channel)
        .arg(QLatin1StringView(kinds[static_cast<int>(event.kind)]), event.text())
        .trimmed();
}

QStringList told(const TrafficRecorder &recorder)
{
    QStringList events;
    for (quint64 number = recorder.first(); number < recorder.end(); ++number)
        events.append(told(recorder.at(number)));
    return events;
}

struct Recording : testing::Test
{
    [[nodiscard]] QByteArray file() const
    {
        QFile written(path);
        return written.open(QIODevice::ReadOnly) ? written.readAll() : QByteArray();
    }

    QTemporaryDir folder;
    const QString path = folder.filePath(u"traffic.jsonl"_s);
    TrafficRecorder recorder;
};

} // namespace

TEST(TrafficRecorder, RecordsWhatPassesAChannelWhoeverUsesItAndAFaultOnce)
{
    FakeChannels desk;
    TrafficRecorder recorder;
    for (const ChannelSession *each : desk.channels.all())
        recorder.listenTo(*each);
    desk.channels.serial(0).open();
    desk.channels.serial(0).send();
    desk.rs485.feed("<01:A\r\n");
    desk.rs485.failWrite = u"broken"_s;
    desk.dialogs.expectMessage(u"Error occurred in CmdSend"_s);
    desk.channels.serial(0).send();
    desk.rs485.unplug(u"gone"_s);
    desk.channels.tcp(3).open();
    desk.tcpClient1.sendData("by another"); // as the board window does
    desk.tcpClient1.feed(QByteArray("\0\xff", 2));
    desk.channels.tcp(3).close();
    for (int attempt = 0; attempt < 2; ++attempt) {
        Q_EMIT desk.channels.tcp(4).connectFailed(u"refused"_s);
        QCoreApplication::processEvents();
    }
    const QString place = desk.channels.serial(0).place();
    EXPECT_EQ(told(recorder),
              (QStringList{u"0 connected fake port 1, address 01"_s, u"0 sent >01 *IDN?"_s,
                           u"0 received <01:A"_s, u"0 fault broken"_s, u"0 fault gone"_s,
                           u"0 disconnected"_s, u"3 connected "_s + desk.channels.tcp(3).place(),
                           u"3 sent by another"_s, u"3 received "_s + QChar(0) + QChar(0xff),
                           u"3 disconnected"_s, u"4 fault refused"_s, u"4 fault refused"_s}));
}

TEST(TrafficRecorder, KeepsTheNewestInItsMemoryAndNumbersThemOn)
{
    TrafficRecorder recorder(qsizetype{4} << 20);
    quint64 dropped = 0;
    QObject::connect(&recorder, &TrafficRecorder::aboutToDrop, &recorder, [&](quint64 before) {
        EXPECT_EQ(recorder.first(), dropped);
        dropped = before;
    });
    const auto contentOf = [](quint64 number) {
        return QByteArray::number(number) + QByteArray(static_cast<qsizetype>(number % 700), 'x');
    };
    for (quint64 number = 0; number < 20'000; ++number)
        recorder.add(static_cast<int>(number % 5), TrafficKind::Received, contentOf(number));
    EXPECT_EQ(recorder.end(), 20'000U);
    EXPECT_EQ(recorder.first(), dropped);
    EXPECT_LE(recorder.size(), qsizetype{4} << 20);
    EXPECT_GT(recorder.end() - recorder.first(), 2000U);
    qint64 time = 0;
    for (quint64 number = recorder.first(); number < recorder.end(); ++number) {
        const TrafficEvent event = recorder.at(number);
        ASSERT_EQ(event.content, contentOf(number));
        ASSERT_EQ(event.channel, static_cast<int>(number % 5));
        ASSERT_GE(event.time, time);
        time = event.time;
    }
    const QByteArray flood(100'000, 'f');
    recorder.add(1, TrafficKind::Received, flood);
    QByteArray pieces;
    for (quint64 number = 20'000; number < recorder.end(); ++number)
        pieces += recorder.at(number).content;
    EXPECT_EQ(pieces, flood);
}

TEST_F(Recording, IsWrittenAsItComesEachEventAWholeLineThatReadsBack)
{
    recorder.add(0, TrafficKind::Connected, "/dev/tty\xc3\xbc");
    {
        QFile old(path); // longer than what is written at first
        ASSERT_TRUE(old.open(QIODevice::WriteOnly) && old.write(QByteArray(5000, '\n')) == 5000);
    }
    TrafficWriter writer(recorder, path);
    QByteArray all;
    for (int value = 0; value < 256; ++value)
        all += static_cast<char>(value);
    recorder.add(4, TrafficKind::Received, all);
    recorder.add(2, TrafficKind::TimedOut, {});
    EXPECT_TRUE(soon([&] { return file().count('\n') == 4; })) << "in time by itself";
    const QByteArrayList lines = file().split('\n');
    const auto object = [&lines](int line) {
        return QJsonDocument::fromJson(lines[line]).object();
    };
    EXPECT_EQ(object(0)[u"format"].toString(), u"corvane-traffic");
    EXPECT_EQ(object(1)[u"text"].toString(), u"/dev/tty\u00fc");
    EXPECT_EQ(object(2)[u"bytes"].toString(), QString::fromLatin1(all));
    EXPECT_EQ(object(2)[u"channel"].toString(), u"TCP/IP-2");
    EXPECT_TRUE(lines[2].contains("\\u000d\\u000e"));
    EXPECT_TRUE(lines[2].contains("\\\"#"));
    EXPECT_EQ(object(3)[u"event"].toString(), u"timeout");
    // What the ring drops while no event loop runs is written before.
    const QByteArray piece(TrafficRecorder::longestEvent, 'p');
    for (qsizetype size = 0; size < 2 * TrafficRecorder::mostKept; size += piece.size())
        recorder.add(1, TrafficKind::Sent, piece);
    EXPECT_EQ(writer.finish(), QString());
    EXPECT_EQ(file().count('\n'), 4 + 2 * (TrafficRecorder::mostKept / piece.size()));
}

TEST_F(Recording, EndsAtAWholeLineWithAWordWhenItCannotBeWritten)
{
    recorder.add(0, TrafficKind::Sent, "A");
    for (const QString &refused : {folder.path(), folder.filePath(u"none/a"_s), u"/dev/full"_s})
        EXPECT_THROW(TrafficWriter(recorder, refused), PlatformError);
    TrafficWriter writer(recorder, path);
    const QSignalSpy failures(&writer, &TrafficWriter::failed);
    const QByteArray before = file();
    recorder.add(0, TrafficKind::Sent, "fits");
    const QByteArray fitting = trafficLine::ofEvent(recorder.at(1));
    recorder.add(0, TrafficKind::Sent, QByteArray(1000, 'B'));
    {
        const WriteLimit limit(static_cast<rlim_t>(before.size() + fitting.size()) + 100);
        writer.finish();
    }
    EXPECT_EQ(file(), before + fitting) << "of what comes at once, all that there is room for";
    ASSERT_EQ(failures.size(), 1);
    EXPECT_TRUE(writer.fault().startsWith(path + u": File too large"_s));

    TrafficWriter other(recorder, path);
    QFile::remove(path);
    EXPECT_TRUE(soon([&] { return !other.fault().isEmpty(); }));
    EXPECT_TRUE(other.fault().contains(u"has gone"));
}

/// Each just before the end, when nothing more is to be written.
TEST_F(Recording, IsNotWholeWhenItsFileIsNoMoreItsOwn)
{
    const std::pair<std::function<void()>, QString> rows[] = {
        {[] {}, QString()},
        {[this] { QFile::remove(path); }, u"the file has gone"_s},
        {[this] {
             QFile::rename(path, path + u".moved"_s);
             QFile(path).open(QIODevice::WriteOnly);
         },
         u"another file has taken its place"_s},
        {[this] { QFile::resize(path, 0); }, u"somebody else has changed the file"_s},
    };
    for (const auto &[befall, word] : rows) {
        TrafficWriter writer(recorder, path);
        recorder.add(0, TrafficKind::Sent, "A");
        befall();
        EXPECT_TRUE(word.isEmpty() ? writer.finish().isEmpty() : writer.finish().contains(word))
            << word.toStdString();
        EXPECT_TRUE(word.isEmpty() || file().isEmpty());
        QFile::remove(path);
        QFile::remove(path + u".moved"_s);
    }
}

TEST_F(Recording, BehindALossTimesDoNotGoBackAndTheAddressIsTold)
{
    recorder.add(2, TrafficKind::Addressed, "GPIB0::4");
    recorder.add(2, TrafficKind::Addressed, "GPIB0::5");
    const QByteArray piece(TrafficRecorder::longestEvent, 'p');
    for (qsizetype size = 0; size < 2 * TrafficRecorder::mostKept; size += piece.size())
        recorder.add(1, TrafficKind::Sent, piece);
    QTest::qWait(5);
    TrafficWriter writer(recorder, path);
    EXPECT_EQ(writer.finish(), QString());
    const QByteArrayList lines = file().trimmed().split('\n');
    EXPECT_TRUE(lines[1].contains("\"lost\""));
    EXPECT_TRUE(lines[2].contains("\"addressed\"") && lines[2].contains("GPIB0::5"));
    qint64 before = 0;
    for (const QByteArray &line : lines) {
        const qint64 time = QJsonDocument::fromJson(line).object()[u"time"].toInteger();
        ASSERT_GE(time, before);
        before = time;
    }
}

/// The other end is there and reads nothing.
TEST_F(Recording, ATerminalThatIsNotReadHoldsNothingUp)
{
    const Pty terminal;
    const int end = ::open(qPrintable(terminal.device()), O_RDWR | O_NOCTTY);
    std::fflush(stdout);
    const int kept = ::dup(STDOUT_FILENO);
    ASSERT_GE(::dup2(end, STDOUT_FILENO), 0);
    ::alarm(20); // a write that does not return ends the test
    {
        TrafficWriter writer(recorder, u"-"_s);
        for (int each = 0; each < 1000; ++each)
            recorder.add(0, TrafficKind::Sent, QByteArray(100, 'x'));
        QTest::qWait(2 * TrafficWriter::intervalMs);
        EXPECT_EQ(writer.fault(), QString());
        EXPECT_TRUE(writer.finish().contains(u"standard output: it takes no more"));
    }
    ::alarm(0);
    ::dup2(kept, STDOUT_FILENO);
    ::close(kept);
    ::close(end);
}
