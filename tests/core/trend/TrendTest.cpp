// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/trend/TrendCsv.h"
#include "core/trend/TrendSeries.h"
#include "tests/core/trend/ScriptedEvents.h"

using namespace corvane;

namespace {

/// "RS-485 05|? PV x|27 28 C": place, question, points, unit of each curve.
QStringList told(const TrendSeries &series)
{
    QStringList curves;
    for (const TrendCurve &curve : series.curves()) {
        QStringList points;
        for (qsizetype index = 0; index < curve.size(); ++index)
            points += QString::number(curve.at(index).value);
        if (!curve.unit().isEmpty())
            points += curve.unit();
        curves +=
            curve.source().place() + u'|' + curve.source().question() + u'|' + points.join(u' ');
    }
    return curves;
}

struct Trend : testing::Test
{
    void exchange(int channel, QByteArrayView command, QByteArrayView reply)
    {
        events.sent(channel, command);
        events.received(channel, reply);
    }

    ScriptedEvents events;
    TrendSeries series{events};
};

} // namespace

TEST_F(Trend, TakesTheNumbersOfARepliesFirstLineAndTheirUnit)
{
    const struct
    {
        const char *reply;
        QStringList curves;
    } rows[] = {
        {"27.00\r\n", {u"TCP/IP-1|Q|27"_s}},
        {"\r\n +2.5E-1V\r\n9\r\n", {u"TCP/IP-1|Q|0.25 V"_s}},
        {"23.5 \xb0"
         "C\n",
         {u"TCP/IP-1|Q|23.5 \u00b0C"_s}},
        {"-.5", {u"TCP/IP-1|Q|-0.5"_s}},
        {"12:30:45\r\n", {u"TCP/IP-1|Q|12"_s}},
        {"5 of them in all\r\n", {u"TCP/IP-1|Q|5"_s}},
        {"1, x, 3V ,,07/08,1e999\r\n", {u"TCP/IP-1|Q [1]|1"_s, u"TCP/IP-1|Q [3]|3 V"_s}},
        {"<05:7%\r\n", {u"TCP/IP-1|Q|7 %"_s}},
        {"OK 5\r\n", {}},
        {"1e999\r\n", {}},
        {"nan\r\n", {}},
        {"\r\n", {}},
        {"", {}},
    };
    for (const auto &row : rows) {
        series.clear();
        exchange(channels::tcpIp1, "Q\r", row.reply);
        exchange(channels::tcpIp1, " \r", "99\r\n"); // no command, whose reply is nobody's
        series.follow();
        EXPECT_EQ(told(series), row.curves) << row.reply;
    }
}

TEST_F(Trend, ACurveIsAChannelItsDeviceAndACommandHoweverTheyInterleave)
{
    events.received(channels::rs485, "1\r\n"); // unasked
    events.sent(channels::rs485, ">05 ? PV x\r");
    exchange(channels::tcpIp2, "? PV x\r", "20.00");
    events.received(channels::rs485, "<05:");
    events.received(channels::rs485, "27.");
    events.addressed("GPIB0::1");
    exchange(channels::ieee488, "? PV x\n", "30\n");
    events.received(channels::rs485, "25\r\n99\r\n");
    events.received(channels::rs485, "98\r\n"); // of the same reply
    events.addressed("GPIB0::2");
    exchange(channels::ieee488, "? PV x\n", "31\n");
    exchange(channels::rs485, ">06 ? PV x\r", "28\r\n");
    events.sent(channels::rs485, ">05 ? PV x\r");
    events.sent(channels::rs485, ">05 ? SP x\r");
    events.received(channels::rs485, "29\r\n"); // late: it follows another command
    exchange(channels::tcpIp2, "? PV x\r", "21.00");
    events.sent(channels::tcpIp2, "? SP x\r");
    events.add(channels::tcpIp2, TrafficKind::Disconnected, {});
    events.received(channels::tcpIp2, "5\r\n");
    EXPECT_FALSE(series.follow());
    EXPECT_EQ(told(series),
              (QStringList{u"IEEE 488 GPIB0::1|? PV x|30"_s, u"RS-485 05|? PV x|27.25"_s,
                           u"IEEE 488 GPIB0::2|? PV x|31"_s, u"RS-485 06|? PV x|28"_s,
                           u"RS-485 05|? SP x|29"_s, u"TCP/IP-2|? PV x|20 21"_s}))
        << "in the order in which they were known";
    EXPECT_EQ(series.curves()[1].first().time, 50'000) << "when the reply began";
}

TEST_F(Trend, AReplyWithoutALineEndIsTakenAfterASilence)
{
    exchange(channels::rs232, "Q\r", "1");
    series.follow();
    EXPECT_TRUE(series.curves().empty());
    events.received(channels::rs232, "2");
    events.pass(TrendSeries::silenceUs);
    series.follow();
    EXPECT_EQ(told(series), QStringList{u"RS-232|Q|12"_s});
    events.received(channels::rs232, "3\r\n");
    series.follow();
    EXPECT_EQ(told(series), QStringList{u"RS-232|Q|12"_s}) << "one point a reply";
}

TEST_F(Trend, HalfALineIsNoNumberWhereLinesEnd)
{
    exchange(channels::tcpIp1, "Q\r", "27.25\r");
    events.received(channels::tcpIp1, "\n");
    exchange(channels::tcpIp1, "Q\r", "27.");
    exchange(channels::tcpIp1, "Q\r", "26\r\n"); // the rest of it, too late
    events.received(channels::tcpIp1, "27.27\r\n");
    exchange(channels::tcpIp1, "Q\r", "2");
    events.pass(TrendSeries::silenceUs);
    series.follow();
    events.received(channels::tcpIp1, "7.28\r\n");
    exchange(channels::tcpIp1, "Q\r", "27.");
    events.add(channels::tcpIp1, TrafficKind::Disconnected, {});
    events.received(channels::tcpIp1, "29\r\n");
    exchange(channels::tcpIp1, "Q\r", "30"); // another device, without line ends
    exchange(channels::tcpIp1, "Q\r", "31");
    events.pass(TrendSeries::silenceUs);
    series.follow();
    EXPECT_EQ(told(series), QStringList{u"TCP/IP-1|Q|27.25 27.27 27.28 30 31"_s});
    const TrendCurve &curve = series.curves().front();
    for (qsizetype point = 1; point < curve.size(); ++point)
        EXPECT_EQ(curve.isInterrupted(curve.at(point - 1).time, curve.at(point).time), point == 3)
            << "a gap, where it was closed: " << point;
}

TEST_F(Trend, KeepsStatisticsOfAllNumbersHoweverLargeAndTheUnitWhileItIsOne)
{
    for (const char *reply : {"1e308V\r\n", "-1e308V\r\n", "3V\r\n"})
        exchange(channels::tcpIp1, "Q\r", reply);
    series.follow();
    const TrendCurve &curve = series.curves().front();
    EXPECT_EQ(curve.unit(), u"V");
    EXPECT_EQ(curve.lowest(), -1e308);
    EXPECT_EQ(curve.highest(), 1e308);
    EXPECT_NEAR(curve.mean(), 1, 1e293);
    exchange(channels::tcpIp1, "Q\r", "4mV\r\n");
    series.follow();
    EXPECT_EQ(curve.unit(), QString());
    TrendCurve many({});
    for (int index = 0; index < 1'000'000; ++index)
        many.add({index, 1e9 + index % 2}, {});
    EXPECT_NEAR(many.mean(), 1e9 + 0.5, 1e-5);
}

TEST_F(Trend, StaysInItsMemoryAndSaysWhatIsMissing)
{
    TrendCurve curve({});
    for (qsizetype index = 0; index < TrendCurve::mostPoints + 100; ++index)
        curve.add({index, index == 0 ? -7.0 : 0.0}, {});
    EXPECT_LE(curve.size(), TrendCurve::mostPoints);
    EXPECT_GT(curve.size(), TrendCurve::mostPoints - 100);
    EXPECT_EQ(curve.last().time, TrendCurve::mostPoints + 99);
    EXPECT_EQ(curve.lowest(), -7) << "of all, not only of those kept";

    for (int command = 0; command < TrendSeries::mostCurves + 5; ++command)
        exchange(channels::tcpIp1, "Q" + QByteArray::number(command) + '\r', "1\r\n");
    events.sent(channels::tcpIp2, "Q\r");
    while (series.follow()) {
    }
    EXPECT_EQ(std::ssize(series.curves()), TrendSeries::mostCurves);
    EXPECT_EQ(series.note(),
              u"5 numbers are left out: there are 64 curves already; Clear makes room.");
    for (int event = 0; event < 30'000; ++event)
        events.sent(channels::rs232, "Q\r");
    events.dropBefore(events.end() - 20'000);
    events.received(channels::tcpIp2, "8\r\n"); // whose command may be among those dropped
    EXPECT_TRUE(series.follow()) << "a bounded amount a call";
    while (series.follow()) {
    }
    EXPECT_TRUE(series.note().startsWith(u"10000 events had been dropped"));
    EXPECT_EQ(std::ssize(series.curves()), TrendSeries::mostCurves);
    series.clear();
    EXPECT_FALSE(series.follow());
    EXPECT_EQ(told(series), QStringList());
    EXPECT_EQ(series.note(), QString());
}

TEST(TrendCurve, IsReducedToWhatAPictureShows)
{
    TrendCurve curve({});
    for (qint64 index = 0; index < 100'000; ++index)
        curve.add({index * 10, index == 77'777 ? 50.0 : static_cast<double>(index % 7)}, {});
    const auto picture = curve.reduced(200'000, 900'000, 500);
    EXPECT_LT(picture.size(), 1010U);
    EXPECT_TRUE(std::ranges::is_sorted(picture, {}, &TrendPoint::time));
    EXPECT_EQ(std::ranges::count(picture, TrendPoint{777'770, 50}), 1) << "no peak is lost";
    EXPECT_EQ(picture.front().time, 199'990) << "the line goes on to both edges";
    EXPECT_GE(picture.back().time, 900'000);
    for (qint64 column = 200'200; column < 900'000; column += 1400) {
        double lowest = 9;
        for (const TrendPoint &point : picture)
            lowest = point.time >= column && point.time < column + 1400
                         ? std::min(lowest, point.value)
                         : lowest;
        ASSERT_EQ(lowest, 0) << column;
    }
    EXPECT_EQ(curve.reduced(500, 530, 500).size(), 5U) << "few points are taken as they are";
    EXPECT_EQ(curve.reduced(2'000'000, 3'000'000, 500).size(), 1U);
    EXPECT_EQ(curve.nearest(504).time, 500);
    EXPECT_EQ(curve.nearest(506).time, 510);
    EXPECT_EQ(curve.nearest(-5).time, 0);
    EXPECT_EQ(curve.nearest(5'000'000).time, 999'990);
}

TEST_F(Trend, IsWrittenAsATable)
{
    exchange(channels::tcpIp1, "= %2,b\r", "1.5,-2\r\n");
    exchange(channels::rs485, ">05 ? PV x\r", "27.00\r\n");
    series.follow();
    EXPECT_EQ(trendCsv::text(series),
              "Time (s),Wall clock,Channel,Command,Value\r\n"
              "0.020000,2026-01-02T03:04:05.020Z,TCP/IP-1,\" = %2,b [1]\",1.5\r\n"
              "0.020000,2026-01-02T03:04:05.020Z,TCP/IP-1,\" = %2,b [2]\",-2\r\n"
              "0.040000,2026-01-02T03:04:05.040Z,RS-485 05,? PV x,27\r\n");
}
