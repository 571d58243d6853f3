// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/CommandLine.h"

#include "devices/PlatformError.h"
#include "tests/support/Testing.h"

using namespace corvane;

namespace {

CommandLine parse(const QString &arguments)
{
    return CommandLine::parse((u"corvane "_s + arguments).split(u' ', Qt::SkipEmptyParts));
}

} // namespace

TEST(CommandLine, ReadsTheWindowsOptions)
{
    const CommandLine line =
        parse(u"--demo --com 1=/dev/ttyUSB0 --com 12=COM3 --gpib 0=tcp:10.0.0.5:1234 "
              "--gpib 3=visa --folder /a --replay r.jsonl --fast a.tst"_s);
    EXPECT_EQ(line.task, CommandLine::Task::Window);
    EXPECT_TRUE(line.demo && line.replaysFast);
    EXPECT_EQ(line.replayFile, u"r.jsonl");
    EXPECT_EQ(line.list, u"a.tst");
    EXPECT_EQ(line.folder, u"/a");
    EXPECT_EQ(line.serialDevices, (QMap<int, QString>{{1, u"/dev/ttyUSB0"_s}, {12, u"COM3"_s}}));
    EXPECT_EQ(line.gpibAdapters[0], u"tcp:10.0.0.5:1234");
    EXPECT_EQ(line.gpibAdapters[1], QString());
    EXPECT_EQ(line.gpibAdapters[3], u"visa");
}

TEST(CommandLine, SetsChannelsUp)
{
    const CommandLine line =
        parse(u"--tcp1 10.0.0.5:5001 --tcp2 fe80::1 --rs485 /dev/ttyUSB0,19200,n,8,1@5 "
              "--rs232 COM3 --gpib-address 1::9 --channel tcp2 --loop 100 --connect"_s);
    EXPECT_EQ(line.task, CommandLine::Task::Window);
    EXPECT_TRUE(line.connects);
    EXPECT_EQ(line.channel, 4);
    EXPECT_EQ(line.loopMs, 100);
    const auto told = [&line](int channel) {
        const ChannelEntries &entries = line.setups[channel];
        return QStringList{entries.port, entries.host, entries.address, entries.settings}
            .join(u'|')
            .toStdString();
    };
    EXPECT_EQ(told(0), "/dev/ttyUSB0||05|19200,N,8,1");
    EXPECT_EQ(told(1), "COM3|||");
    EXPECT_EQ(told(2), "||GPIB1::9|");
    EXPECT_EQ(told(3), "5001|10.0.0.5||");
    EXPECT_EQ(told(4), "|fe80::1||");
    EXPECT_EQ(parse(u"--tcp1 [fe80::1]:99"_s).setups[3].host, u"fe80::1");
    EXPECT_EQ(parse(u"--channel rs232 --port 2 --connect"_s).setups[1].port, u"2");
    EXPECT_EQ(parse(u"--channel tcp1 --connect"_s).setups.keys(), QList<int>{3});
    const CommandLine run = parse(u"--run a.tst --tcp2 h:5001"_s);
    EXPECT_EQ(run.channel, 4);
    EXPECT_EQ(run.setups[4].host, u"h");
}

TEST(CommandLine, ReadsAnUnattendedRun)
{
    const CommandLine line =
        parse(u"--run a.kms --channel GPIB --address 5 --timeout 500 --loop 10 --get --save b.kms "
              "--patience 3 --csv c.csv --junit j.xml --strip-operator"_s);
    EXPECT_EQ(line.task, CommandLine::Task::Run);
    EXPECT_EQ(line.list, u"a.kms");
    EXPECT_EQ(line.channel, 2);
    EXPECT_EQ(line.timeoutMs, 500);
    EXPECT_EQ(line.loopMs, 10);
    EXPECT_TRUE(line.get && line.stripOperator);
    EXPECT_EQ(line.saveFile, u"b.kms");
    EXPECT_EQ(line.patienceSeconds, 3);
    EXPECT_EQ(line.csvFile, u"c.csv");
    EXPECT_EQ(line.junitFile, u"j.xml");
}

TEST(CommandLine, NamesTheArgumentThatIsWrong)
{
    const std::pair<const char16_t *, const char16_t *> wrong[] = {
        {u"--nonsense", u"nonsense"},
        {u"--com 1", u"--com 1"},
        {u"--com 0=/dev/x", u"--com 0=/dev/x"},
        {u"--gpib 4=visa", u"--gpib 4=visa"},
        {u"--gpib 1=", u"--gpib 1="},
        {u"--gpib 1=lan", u"lan"},
        {u"--com 1=a --com 1=b", u"--com 1=b"},
        {u"--run a.tst --channel tcp1 --csv=", u"--csv"},
        {u"--run a.tst --channel tcp1 --csv a --csv b", u"--csv b"},
        {u"--run a.tst", u"--channel"},
        {u"--run a.tst --channel modem", u"modem"},
        {u"--run a.tst --channel tcp1 --timeout 60000", u"--timeout 60000"},
        {u"--run a.tst --channel tcp1 --loop 9", u"--loop 9"},
        {u"--run a.tst --channel tcp1 --patience abc", u"--patience abc"},
        {u"--run a.tst --channel tcp1 --save b.kms", u"--get"},
        {u"--run a.tst --channel tcp1 b.tst", u"b.tst"},
        {u"--loop 50", u"--loop 50: needs --channel"},
        {u"--host h", u"--host h: needs --channel"},
        {u"--timeout 50", u"--run"},
        {u"--connect", u"--connect: needs a Channel"},
        {u"--tcp1 h:0", u"--tcp1 h:0: the port \"0\""},
        {u"--tcp1 h:", u"--tcp1 h:: the port"},
        {u"--tcp1 a]", u"--tcp1 a]: HOST"},
        {u"--rs485 1@31", u"31 is not one of 01 to 30"},
        {u"--rs232 1,9600,Q,8,1", u"--rs232 1,9600,Q,8,1"},
        {u"--rs232 2x", u"--rs232 2x"},
        {u"--gpib-address 0::31", u"--gpib-address 0::31"},
        {u"--tcp1 a --tcp1 b", u"--tcp1 b"},
        {u"--tcp1 a --channel tcp1 --host b", u"--tcp1 says it already"},
        {u"--run a.tst --tcp1 a --tcp2 b", u"--channel"},
        {u"--run a.tst --tcp1 a --tcp2 b --channel tcp1", u"--tcp2"},
        {u"--run a.tst --tcp1 a --connect", u"--connect"},
        {u"--replay a.jsonl", u"--replay a.jsonl: needs --demo"},
        {u"--demo --fast", u"--fast: needs --replay"},
        {u"--folder=", u"--folder: DIR is missing"},
        {u"--run a.tst --channel tcp1 --folder /a", u"--folder /a"},
        {u"a.tst b.tst", u"b.tst"},
    };
    for (const auto &[arguments, named] : wrong) {
        try {
            parse(QString::fromUtf16(arguments));
            ADD_FAILURE() << "accepted: " << QString::fromUtf16(arguments).toStdString();
        } catch (const PlatformError &error) {
            EXPECT_TRUE(error.description().contains(QString::fromUtf16(named)))
                << error.description().toStdString();
        }
    }
}
