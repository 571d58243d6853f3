// SPDX-License-Identifier: GPL-3.0-or-later
#include "bench/Bench.h"

#include "BenchSupport.h"

#include <QTcpServer>

using namespace Qt::StringLiterals;

using namespace corvane::bench;

namespace {

BenchOptions anyPorts()
{
    BenchOptions options;
    options.chamberPort = 0;
    options.boardPort = 0;
    options.gpibPort = 0;
    options.secondGpibPort = 0;
    return options;
}

class WholeBench : public testing::Test
{
protected:
    WholeBench() { EXPECT_TRUE(bench.start()) << bench.errorString().toStdString(); }
    std::string order(const char *text) { return bench.order(QLatin1String(text)).toStdString(); }

    Bench bench{anyPorts()};
};

} // namespace

TEST_F(WholeBench, OrdersChangeTheDevices)
{
    for (const char *text : {"connector on", "stuck data 1 7 0", "stuck dir 0 0 1", "sensor 7",
                             "meter overflow", "serial 08/0042", "POWER", "connector off"})
        EXPECT_EQ(order(text), "done") << text;
    EXPECT_EQ(ask(bench.meter(), "data?"), "OVERFLOW");
    EXPECT_EQ(bench.meter().sensorChannel(), 7);
    EXPECT_EQ(bench.board().serial(), "08/0042");
    EXPECT_EQ(bench.board().ports().stuckBits().size(), 2U);
    EXPECT_EQ(order("stuck data 1 7 1"), "done");
    EXPECT_EQ(bench.state().toStdString(), "connector off, stuck dir 0 0 1 and data 1 7 1, sensor "
                                           "on channel 7, meter overflow, serial 08/0042");
    EXPECT_EQ(order("free"), "done");
    EXPECT_EQ(order("sensor follow"), "done");
    for (const auto &[command, channel] :
         {std::pair("DAC 6,1", 6), std::pair("DAC? 5", 5), std::pair("W38000", 3),
          std::pair("ADC? 2;DAC 9,1;DAC 1,9;DAC? x", 3)}) {
        bench.board().answer(command);
        EXPECT_EQ(bench.meter().sensorChannel(), channel) << command;
    }
    EXPECT_TRUE(bench.state().contains(u"no stuck bit, sensor follows, on channel"_s));
    for (const char *text : {"connector", "stuck data 4 0 0", "stuck data 0 8 0", "stuck up 0 0 0",
                             "sensor 8", "sensor", "meter loud", "serial", "serial 1,2",
                             "serial 1 2", "free 1", "connector on off"})
        EXPECT_EQ(order(text).substr(0, 5), "Use: ") << text;
    EXPECT_NE(order("rs486 silent").find("no place \"rs486\""), std::string::npos);
    EXPECT_NE(bench.order(u"rs485 garbage \u03A9"_s).indexOf(u"8-bit"), -1);
    EXPECT_NE(order("").find("help"), std::string::npos);
    EXPECT_NE(order("rs485 loud").find("no fault \"loud\""), std::string::npos);
}

TEST_F(WholeBench, FaultsActAtTheirPlaceUntilTheyAreCleared)
{
    PtyUser rs485(bench.rs485Device());
    PtyUser rs232(bench.rs232Device());
    EXPECT_EQ(order("rs485 silent"), "done");
    rs485.send(">05 ? SN\r");
    rs232.send("? SN\r");
    rs232.expect("CH-10421\r\n");
    EXPECT_EQ(rs485.input(), QByteArray());
    EXPECT_NE(order("list").find("silent"), std::string::npos);
    EXPECT_EQ(order("RS485 none"), "done");
    rs485.send(">05 ? SN\r");
    rs485.expect("<05:CH-10421\r\n");

    EXPECT_EQ(order("rs485 unplug"), "done");
    EXPECT_EQ(order("tcp-chamber unplug"), "done");
    QTcpSocket refused;
    refused.connectToHost(QHostAddress::LocalHost, bench.chamberPort());
    EXPECT_TRUE(soon([&] { return refused.error() == QAbstractSocket::ConnectionRefusedError; }));
    EXPECT_TRUE(rs485.hungUp());
    EXPECT_FALSE(QFileInfo::exists(bench.rs485Device()));
    EXPECT_EQ(order("clear"), "done");
    PtyUser again(bench.rs485Device());
    again.send(">01 ? SN\r");
    again.expect("<01:CH-10422\r\n");
    TcpUser tcp(bench.chamberPort());
    tcp.send("? SN\r");
    tcp.expect("CH-10421\r\n");
}

TEST(Bench, SaysWhatCouldNotStartAndRunsTheRest)
{
    BenchOptions options = anyPorts();
    const QTemporaryDir folder;
    options.linkFolder = folder.filePath(u"missing"_s);
    Bench bench(options);
    EXPECT_FALSE(bench.start());
    EXPECT_TRUE(bench.errorString().contains(options.linkFolder + u"/rs485"_s));
    TcpUser tcp(bench.chamberPort());
    tcp.send("? SN\r");
    tcp.expect("CH-10421\r\n");
    EXPECT_EQ(bench.order(u"rs485 none"_s).toStdString(), "rs485 cannot come back now.");
}
