// SPDX-License-Identifier: GPL-3.0-or-later
#include "devices/QtSerialPort.h"

#include "Faults.h"
#include "Pty.h"
#include "devices/SerialLock.h"
#include "tests/support/Soon.h"

#include <grp.h>
#include <numeric>
#include <sys/stat.h>
#include <unistd.h>

using namespace corvane;

namespace {

QByteArray allBytes()
{
    QByteArray bytes(256, Qt::Uninitialized);
    std::iota(bytes.begin(), bytes.end(), '\0');
    return bytes;
}

} // namespace

class QtSerialPortTest : public testing::Test
{
protected:
    QtSerialPortTest()
    {
        list.pin(1, far.device());
        port.setCommPort(1);
        port.setRThreshold(1);
        QObject::connect(&port, &SerialPort::onComm, &port, [this](int event) {
            EXPECT_EQ(event, CommEvent::receive);
            received += port.input();
        });
    }

    Pty far;
    SerialPortList list{[] { return QList<SerialPortEntry>(); }};
    QtSerialPort port{list};
    QByteArray received;
};

TEST_F(QtSerialPortTest, CarriesEveryByteValueBothWays)
{
    port.setPortOpen(true);
    port.setPortOpen(true);
    EXPECT_TRUE(port.isPortOpen());
    port.output(allBytes());
    QByteArray sent;
    EXPECT_TRUE(soon([&] { return (sent += far.read()).size() >= 256; }));
    EXPECT_EQ(sent, allBytes());
    far.write(allBytes());
    EXPECT_TRUE(soon([&] { return received.size() >= 256; }));
    EXPECT_EQ(received, allBytes());
    port.setPortOpen(false);
    EXPECT_FALSE(port.isPortOpen());
    EXPECT_EQ(port.input(), "");
    EXPECT_THROW(port.output("x"), PlatformError);
}

TEST_F(QtSerialPortTest, ThresholdAndInputLengthBoundEventsAndReads)
{
    port.setRThreshold(4);
    port.setInputLen(3);
    port.setPortOpen(true);
    const QSignalSpy events(&port, &SerialPort::onComm);
    far.write("abc");
    while (far.waiting() < 3)
        sched_yield();
    EXPECT_TRUE(eventsRunDry());
    EXPECT_TRUE(events.empty());
    far.write("defg");
    EXPECT_TRUE(soon([&] { return !events.empty(); }));
    EXPECT_EQ(received, "abc");
    port.setInputLen(0);
    EXPECT_EQ(port.input(), "defg");
}

TEST_F(QtSerialPortTest, SettingsReachTheDriver)
{
    constexpr unsigned odd = PARODD;
    constexpr unsigned sticky = CMSPAR;
    constexpr unsigned twoStops = CSTOPB;
    const std::pair<const char *, unsigned> rows[] = {{"O,7,1", odd},
                                                      {"M,8,2", odd | sticky | twoStops},
                                                      {"S,5,1", sticky},
                                                      {"E,7,1", 0},
                                                      {"N,8,2", twoStops}};
    for (const unsigned rate : {1200u, 2400u, 4800u, 9600u, 14400u, 19200u, 28800u, 38400u, 56000u,
                                57600u, 115200u, 128000u, 256000u}) {
        for (const auto &[rest, flags] : rows) {
            port.setSettings(u"%1,%2"_s.arg(rate).arg(QLatin1String(rest)));
            port.setPortOpen(true);
            EXPECT_EQ(far.line().c_ospeed, rate) << rest;
            EXPECT_EQ(far.line().c_cflag & (odd | sticky | twoStops), flags) << rate << rest;
            port.setPortOpen(false);
        }
    }
}

TEST_F(QtSerialPortTest, AFaultAtOpeningSaysWhatIsWrongAndLeavesThePortClosed)
{
    const QTemporaryDir folder;
    const QString plain = folder.filePath(u"plain"_s);
    const QString missing = folder.filePath(u"missing"_s);
    EXPECT_TRUE(QFile(plain).open(QIODevice::WriteOnly));
    const std::tuple<QString, const char *, const char *> rows[] = {
        {far.device(), "9600,N,8", "as in 9600,N,8,1"},
        {far.device(), "9600,N,8,1.5", "cannot do 1.5 stop bits"},
        {missing, "9600,N,8,1", "/missing): there is no such device; the system lists"},
        {plain, "9600,N,8,1", "/plain): no serial port"},
    };
    for (const auto &[device, settings, said] : rows) {
        list.pin(1, device);
        port.setSettings(QLatin1String(settings));
        EXPECT_TRUE(failsSaying(said, [this] { port.setPortOpen(true); }));
        EXPECT_FALSE(port.isPortOpen());
    }
    port.setCommPort(70000);
    EXPECT_TRUE(failsSaying("there is no such port", [this] { port.setPortOpen(true); }));
}

TEST_F(QtSerialPortTest, AForbiddenDeviceNamesTheGroupToJoin)
{
    const QByteArray path = QFile::encodeName(far.device());
    const bool isRoot = geteuid() == 0;
    ASSERT_TRUE(!isRoot || chown(path.constData(), 0, getgrnam("tty")->gr_gid) == 0);
    chmod(path.constData(), 0060);
    const auto become = [isRoot](uid_t user) {
        return !isRoot || setresuid(user, user, 0) == 0; // nothing is forbidden to root
    };
    ASSERT_TRUE(become(65534));
    const QByteArray said = "permission denied; it belongs to the group " +
                            QFileInfo(far.device()).group().toLatin1() + ": add your user";
    EXPECT_TRUE(failsSaying(said.constData(), [this] { port.setPortOpen(true); }));
    ASSERT_TRUE(become(0));
}

TEST_F(QtSerialPortTest, ADeviceIsOpenedOnceUnderAnyOfItsNames)
{
    const QTemporaryDir folder;
    const QString link = folder.filePath(u"link"_s);
    QFile::link(far.device(), link);
    list.pin(2, link);
    port.setPortOpen(true);
    QtSerialPort second(list);
    second.setCommPort(2);
    EXPECT_TRUE(failsSaying("in use by another", [&second] { second.setPortOpen(true); }));
    port.setPortOpen(false);
    second.setPortOpen(true);
    EXPECT_TRUE(second.isPortOpen());
}

TEST_F(QtSerialPortTest, ALockOfALivingProgramIsRespectedAndALeftOverTakenOver)
{
    QFile lock(u"/var/lock/LCK.."_s + far.device().mid(5).replace(u'/', u'_'));
    if (!QFileInfo(u"/var/lock"_s).isWritable())
        GTEST_SKIP() << "no lock folder";
    const QTemporaryDir folder;
    const QString program = folder.filePath(u"sleep"_s);
    ASSERT_TRUE(QFile::copy(QStandardPaths::findExecutable(u"sleep"_s), program));
    QProcess holder;
    holder.start(program, {u"60"_s});
    ASSERT_TRUE(holder.waitForStarted());
    QFile name(u"/proc/%1/comm"_s.arg(holder.processId()));
    ASSERT_TRUE(name.open(QIODevice::ReadOnly | QIODevice::Unbuffered));
    ASSERT_TRUE(soon([&name] { return name.seek(0) && name.readAll() == "sleep\n"; }));
    QFile::remove(program); // as when it is replaced by a newer one
    const auto process = static_cast<int>(holder.processId());
    const QByteArray text = QByteArray::number(process).rightJustified(10) + '\n';
    const QByteArray binary(reinterpret_cast<const char *>(&process), sizeof process);
    const auto write = [&lock](const QByteArray &content) {
        ASSERT_TRUE(lock.open(QIODevice::WriteOnly));
        lock.write(content);
        lock.close();
    };
    EXPECT_EQ(serialLock::noteIn(QByteArray("15\0\0", 4)).process, '1' + 256 * '5');
    EXPECT_EQ(serialLock::noteIn(QByteArray("1\nx\0", 4)).program, QString()); // bytes, no line
    const QByteArray said = "in use by sleep (process " + QByteArray::number(process) + ")";
    for (const QByteArray &content :
         {text, binary, text.trimmed() + " sleep tester", text.trimmed() + "\nsleep\n"}) {
        write(content);
        EXPECT_TRUE(failsSaying(said.constData(), [this] { port.setPortOpen(true); }));
        EXPECT_TRUE(lock.open(QIODevice::ReadOnly) && lock.readAll() == content);
        lock.close();
    }
    write(text.trimmed() + "\nanother-program\n"); // the number is in use again
    port.setPortOpen(true);
    port.setPortOpen(false);
    write(binary);
    holder.kill();
    holder.waitForFinished();
    port.setPortOpen(true);
    EXPECT_TRUE(port.isPortOpen());
}

TEST_F(QtSerialPortTest, ADeviceIsFoundByItsName)
{
    const QString name = far.device().mid(far.device().lastIndexOf(u'/') + 1);
    for (const QString &given : {far.device(), name, far.device().mid(5)}) {
        port.setDevice(given);
        port.setPortOpen(true);
        EXPECT_EQ(port.place(), far.device() + u", 9600,N,8,1"_s);
        port.setPortOpen(false);
    }
    port.setDevice(u"abc"_s);
    EXPECT_TRUE(failsSaying("the port \"abc\" is neither a number nor a device; the system lists 1",
                            [this] { port.setPortOpen(true); }));
}

TEST_F(QtSerialPortTest, AnUnpluggedPortIsClosedAndReportedOnceAtNoCostAndOpensAgain)
{
    const QSignalSpy lost(&port, &SerialPort::lost);
    bool closedFirst = false;
    QObject::connect(&port, &SerialPort::lost, &port, [&] { closedFirst = !port.isPortOpen(); });
    port.setPortOpen(true);
    far.write("last words");
    EXPECT_TRUE(soon([&] { return !received.isEmpty(); }));
    port.output(QByteArray(100'000, 'x')); // more than the far end takes
    far.unplug();
    EXPECT_TRUE(soon([&] { return !lost.empty(); }));
    EXPECT_TRUE(closedFirst);
    EXPECT_TRUE(eventsRunDry()) << "the driver reports without end";
    EXPECT_EQ(received, "last words");
    EXPECT_THROW(port.output("x"), PlatformError);

    const Pty again;
    list.pin(1, again.device());
    port.setPortOpen(true);
    again.write("back");
    EXPECT_TRUE(soon([&] { return received.endsWith("back"); }));
    EXPECT_EQ(lost.size(), 1);
}

TEST_F(QtSerialPortTest, AFullBufferDoesNotStopTheDriverAndUnsentBytesAreBounded)
{
    port.setInputLen(100); // an event takes less than comes
    port.setPortOpen(true);
    qsizetype written = 0;
    while (written < 300'000) {
        written += std::max<qsizetype>(0, far.write(QByteArray(2000, 'x')));
        QTest::qWait(0);
        while (!port.input().isEmpty()) // what the events left over
            received.append('.');
        ASSERT_LE(received.size(), written);
    }
    port.setInputLen(0);
    received.clear();
    far.write("end");
    EXPECT_TRUE(soon([&] { return received.endsWith("end"); }));
    EXPECT_TRUE(failsSaying("takes no more data", [this] {
        for (int sent = 0; sent < 20; ++sent)
            port.output(QByteArray(1'000'000, 'x'));
    }));
}
