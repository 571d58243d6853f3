// SPDX-License-Identifier: GPL-3.0-or-later
#include "devices/SerialSettings.h"

#include "Faults.h"
#include "devices/SerialPortList.h"

using namespace corvane;

TEST(SerialSettings, AreReadWithBlanksAndSmallLettersAndWrittenBack)
{
    EXPECT_EQ(
        SerialSettings::parse(u"19200,E,7,2"_s),
        (SerialSettings{19200, QSerialPort::EvenParity, QSerialPort::Data7, QSerialPort::TwoStop}));
    const char *const rows[][2] = {{"9600,N,8,1", "9600,N,8,1"},
                                   {" 115200 , m , 5 , 1.5 ", "115200,M,5,1.5"},
                                   {"1,o,6,2", "1,O,6,2"},
                                   {"3000000,s,8,1", "3000000,S,8,1"}};
    for (const auto &[text, written] : rows)
        EXPECT_EQ(SerialSettings::parse(QLatin1String(text)).toString(), QLatin1String(written));
}

TEST(SerialSettings, AFaultNamesTheWrongPart)
{
    const std::pair<const char *, const char *> rows[] = {{"", "are needed"},
                                                          {"9600,N,8", "are needed"},
                                                          {"9600,N,8,1,", "are needed"},
                                                          {",N,8,1", "baud rate \"\""},
                                                          {"0,N,8,1", "baud rate"},
                                                          {"-9600,N,8,1", "baud rate \"-9600\""},
                                                          {"+9600,N,8,1", "baud rate"},
                                                          {"99999999999,N,8,1", "baud rate"},
                                                          {"9600.5,N,8,1", "baud rate"},
                                                          {"9600,X,8,1", "parity \"X\""},
                                                          {"9600,N,9,1", "data bits \"9\""},
                                                          {"9600,N,4,1", "data bits \"4\""},
                                                          {"9600,N,8,3", "stop bits \"3\""},
                                                          {"9600,N,8,", "stop bits \"\""}};
    for (const auto &[text, part] : rows)
        EXPECT_TRUE(
            failsSaying(part, [text = text] { SerialSettings::parse(QLatin1String(text)); }));
}

TEST(SerialPortList, NumbersPortsInNaturalOrderAndPinnedNumbersWin)
{
    const auto port = [](const char *device) {
        return SerialPortEntry{0, QLatin1String(device), u"maker"_s, {}, u"S1"_s};
    };
    SerialPortList list([&port] {
        return QList{port("/dev/ttyUSB10"), port("/dev/ttyS0"), port("/dev/ttyUSB2")};
    });
    EXPECT_EQ(list.device(1), u"/dev/ttyS0");
    EXPECT_EQ(list.device(2), u"/dev/ttyUSB2");
    EXPECT_EQ(list.device(3), u"/dev/ttyUSB10");
    list.pin({{2, u"/dev/serial/by-id/a=b"_s}, {7, u"/dev/ttyS0"_s}});
    EXPECT_EQ(list.device(2), u"/dev/serial/by-id/a=b");
    EXPECT_EQ(list.entries().size(), 4);
    EXPECT_EQ(list.entries().last(),
              (SerialPortEntry{7, u"/dev/ttyS0"_s, u"maker"_s, {}, u"S1"_s}));
    EXPECT_TRUE(
        failsSaying("serial port 0: there is no such port; the system lists 4 (1 = /dev/ttyS0, 2 = "
                    "/dev/serial/by-id/a=b, 3 = /dev/ttyUSB10, 7 = /dev/ttyS0)",
                    [&list] { (void)list.device(0); }));
    EXPECT_TRUE(SerialPortList::describe(list.entries())
                    .endsWith(u"\n3\t/dev/ttyUSB10\tmaker\t\tS1\n7\t/dev/ttyS0\tmaker\t\tS1"));
}

TEST(SerialPortList, PortsWithNumbersInTheirNamesKeepThem)
{
    const SerialPortList list([] {
        return QList{SerialPortEntry{0, u"\\\\.\\COM12"_s, {}, {}},
                     SerialPortEntry{0, u"\\\\.\\COM3"_s, {}, {}}};
    });
    EXPECT_EQ(list.device(12), u"\\\\.\\COM12");
    EXPECT_THROW((void)list.device(1), PlatformError);
    const SerialPortList none([] { return QList<SerialPortEntry>(); });
    EXPECT_TRUE(failsSaying("lists no serial ports", [&none] { (void)none.device(1); }));
}
