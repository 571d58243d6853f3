#include "platform/QtSerialPort.h"

#include "Faults.h"
#include "Pty.h"

#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <grp.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace corvane;

namespace {

double processorSeconds()
{
    rusage used = {};
    getrusage(RUSAGE_SELF, &used);
    const auto seconds = [](const timeval &time) {
        return static_cast<double>(time.tv_sec) + 1e-6 * static_cast<double>(time.tv_usec);
    };
    return seconds(used.ru_utime) + seconds(used.ru_stime);
}

QByteArray allBytes()
{
    QByteArray bytes;
    for (int value = 0; value < 256; ++value)
        bytes.append(static_cast<char>(value));
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
    EXPECT_TRUE(QTest::qWaitFor([&] { return (sent += far.read()).size() >= 256; }));
    EXPECT_EQ(sent, allBytes());
    far.write(allBytes());
    EXPECT_TRUE(QTest::qWaitFor([&] { return received.size() >= 256; }));
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
    QTest::qWait(50);
    EXPECT_TRUE(events.empty());
    far.write("defg");
    EXPECT_TRUE(QTest::qWaitFor([&] { return !events.empty(); }));
    EXPECT_EQ(received, "abc");
    port.setInputLen(0);
    EXPECT_EQ(port.input(), "defg");
}

TEST_F(QtSerialPortTest, SettingsReachTheDriver)
{
    struct Row
    {
        const char *settings;
        Pty::Line line;
    };
    std::vector<Row> rows = {{"9600,O,7,1", {9600, true, false, false}},
                             {"9600,M,8,2", {9600, true, true, true}},
                             {"9600,S,5,1", {9600, false, true, false}},
                             {"9600,E,7,1", {9600, false, false, false}}};
    std::vector<std::string> rates;
    for (const unsigned rate : {1200u, 2400u, 4800u, 9600u, 14400u, 19200u, 28800u, 38400u, 56000u,
                                57600u, 115200u, 128000u, 256000u}) {
        rates.push_back(std::to_string(rate) + ",N,8,1");
        rows.push_back({nullptr, {rate, false, false, false}});
    }
    auto rate = rates.begin();
    for (Row &row : rows) {
        const char *settings = row.settings ? row.settings : (rate++)->c_str();
        port.setSettings(QLatin1String(settings));
        port.setPortOpen(true);
        const Pty::Line line = far.line();
        EXPECT_EQ(line.rate, row.line.rate) << settings;
        EXPECT_EQ(line.odd, row.line.odd) << settings;
        EXPECT_EQ(line.sticky, row.line.sticky) << settings;
        EXPECT_EQ(line.twoStops, row.line.twoStops) << settings;
        port.setPortOpen(false);
    }
}

TEST_F(QtSerialPortTest, AFaultAtOpeningSaysWhatIsWrongAndLeavesThePortClosed)
{
    const QTemporaryDir folder;
    const QString plain = folder.filePath(QStringLiteral("plain"));
    const QString missing = folder.filePath(QStringLiteral("missing"));
    QFile(plain).open(QIODevice::WriteOnly);
    struct Row
    {
        QString device;
        const char *settings;
        const char *said;
    };
    const Row rows[] = {
        {far.device(), "9600,N,8", "as in 9600,N,8,1"},
        {far.device(), "9600,N,8,1.5", "cannot do 1.5 stop bits"},
        {missing, "9600,N,8,1", "/missing): there is no such device; the system lists"},
        {plain, "9600,N,8,1", "/plain): no serial port"},
    };
    for (const Row &row : rows) {
        list.pin(1, row.device);
        port.setSettings(QLatin1String(row.settings));
        EXPECT_NE(faultOf([this] { port.setPortOpen(true); }).find(row.said), std::string::npos)
            << faultOf([this] { port.setPortOpen(true); });
        EXPECT_FALSE(port.isPortOpen());
    }
    port.setCommPort(70000);
    EXPECT_NE(faultOf([this] { port.setPortOpen(true); }), "");
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
    const std::string fault = faultOf([this] { port.setPortOpen(true); });
    ASSERT_TRUE(become(0));
    EXPECT_NE(fault.find("permission denied; it belongs to the group tty: add your user"),
              std::string::npos)
        << fault;
}

TEST_F(QtSerialPortTest, ADeviceIsOpenedOnceUnderAnyOfItsNames)
{
    const QTemporaryDir folder;
    const QString link = folder.filePath(QStringLiteral("link"));
    QFile::link(far.device(), link);
    list.pin(2, link);
    port.setPortOpen(true);
    QtSerialPort second(list);
    second.setCommPort(2);
    EXPECT_NE(faultOf([&second] { second.setPortOpen(true); }).find("in use by another"),
              std::string::npos);
    port.setPortOpen(false);
    second.setPortOpen(true);
    EXPECT_TRUE(second.isPortOpen());
}

TEST_F(QtSerialPortTest, AnUnpluggedPortIsClosedAndReportedOnceAtNoCostAndOpensAgain)
{
    const QSignalSpy lost(&port, &SerialPort::lost);
    bool closedFirst = false;
    QObject::connect(&port, &SerialPort::lost, &port, [&] { closedFirst = !port.isPortOpen(); });
    port.setPortOpen(true);
    far.write("last words");
    EXPECT_TRUE(QTest::qWaitFor([&] { return !received.isEmpty(); }));
    port.output(QByteArray(100'000, 'x')); // more than the far end takes
    far.unplug();
    EXPECT_TRUE(QTest::qWaitFor([&] { return !lost.empty(); }));
    EXPECT_TRUE(closedFirst);
    const double before = processorSeconds();
    QTest::qWait(1200);
    EXPECT_LT(processorSeconds() - before, 0.1);
    EXPECT_EQ(lost.size(), 1);
    EXPECT_EQ(received, "last words");
    EXPECT_THROW(port.output("x"), PlatformError);

    const Pty again;
    list.pin(1, again.device());
    port.setPortOpen(true);
    again.write("back");
    EXPECT_TRUE(QTest::qWaitFor([&] { return received.endsWith("back"); }));
}
