// SPDX-License-Identifier: GPL-3.0-or-later
#include "bench/Board.h"

#include "BenchSupport.h"
#include "bench/Meter.h"

using namespace corvane::bench;

namespace {

class BoardOnTheBench : public testing::Test
{
protected:
    /// The meter's reading with its sensor on that channel.
    double reading(int channel)
    {
        meter.pinSensor(channel);
        return QByteArray::fromStdString(ask(meter, "data?\r")).trimmed().toDouble();
    }
    Board board;
    Meter meter{[this](int channel) { return board.analog().outputVolts(channel); },
                [this] { return board.lastDacChannel(); }};
};

} // namespace

TEST_F(BoardOnTheBench, QueriesAreAnsweredAndSettingsAreNot)
{
    expectReplies(board, {{"*IDN?", "BRENNICK,P/N_25010-1,R2.14,P3.02,07/0123"},
                          {"DAC  4, .5,1.0,0.0", "(silent)"},
                          {"DAC? 4", "0.50000,1.00000,0.00000"},
                          {"DAC  4,2.50000;DAC?  4", "2.50000,1.00000,0.00000"},
                          {"ADC 4,0.99256,-0.01500;ADC?  4", "2.46651,0.99256,-0.01500"},
                          {"adc? 4", "2.46651,0.99256,-0.01500"},
                          {"TCPIP?", "192.0.2.25,255.255.255.0,192.0.2.1,5001"},
                          {":CALibrate:PICSerialNumber 7/5", "(silent)"},
                          {"*IDN?", "BRENNICK,P/N_25010-1,R2.14,P3.02,7/5"},
                          {":system:err?", "0,\"No error\""}});
    // The DAC gets (2 - 0.015) * 0.99256 = 1.9702316, step 51648 or 1.9702449, and its output is
    // 1.01 times that and 10 mV.
    board.answer("DAC 0,2,0.99256,-0.01500");
    EXPECT_NEAR(reading(0), 1.9999473, 0.000005);
}

TEST_F(BoardOnTheBench, TheJoinedCommandSetCountsInHexadecimal)
{
    expectReplies(board, {{"W48000;M4", "8000"},
                          {"DAC? 4", "1.25002,1.00000,0.00000"},
                          {"w4ff;m4", "00FF"},
                          {"W4FFFF;M4", "FFFF"},
                          {"W4;W9FFFF;W4FFFFF;W4G1;W4-1;M8", "(silent)"},
                          {"M4", "FFFF"},
                          {"SYST:ERR?", "-108,\"Parameter error\""}});
}

TEST_F(BoardOnTheBench, APowerCycleKeepsWhatWasSavedAndNothingElse)
{
    board.answer("DAC 3,1,1.1,0.01");
    board.answer("ADC 3,0.9,-0.01");
    board.powerCycle();
    EXPECT_EQ(ask(board, "DAC? 3"), "0.00000,1.00000,0.00000");
    board.answer("DAC 3,1,1.1,0.01");
    board.answer("ADC 3,0.9,-0.01");
    board.answer("CAL:PIC");
    board.answer("DAC 3,2,1.2,0.02");
    board.answer("PORT:DIR 1,255");
    board.answer("CAL:PICSN 08/0042;FOO");
    board.powerCycle();
    expectReplies(board, {{"DAC? 3", "0.00000,1.10000,0.01000"},
                          {"PORT:DIR? 1", "0"},
                          {"SYST:ERR?", "0,\"No error\""},
                          {"*IDN?", "BRENNICK,P/N_25010-1,R2.14,P3.02,08/0042"}});
    EXPECT_EQ(ask(board, "ADC? 3").substr(8), "0.90000,-0.01000");
}

TEST_F(BoardOnTheBench, PortsDriveReadAndJoinAsTheirConnectorSays)
{
    expectReplies(board, {{"PORT:DIR? 0", "255"},
                          {"PORT:DIR 2,255;PORT:DIR 0,0;PORT:DATA 2,165", "(silent)"},
                          {"PORT:DATA? 2;PORT:DATA? 0", "165;255"}});
    board.ports().setConnector(true);
    expectReplies(board, {{"PORT:DATA? 0;PORT:DATA? 1", "165;255"},
                          {"H? 0;H? 1", "1;0"},
                          // Both drive now, and low wins.
                          {"PORT:DIR 0,255;PORT:DATA 0,15;PORT:DATA? 2", "5"},
                          // Half of the port drives.
                          {"PORT:DIR 0,240;PORT:DATA? 0", "5"},
                          {"PORT:DATA 0,255;PORT:DATA? 0", "165"}});
    board.ports().setConnector(false);
    expectReplies(board, {{"PORT:DIR 0,255;L 7;PORT:DATA? 0", "127"}, {"H 7;H?  7", "1"}});
}

TEST_F(BoardOnTheBench, AStuckBitShowsOnItsLineAndOnTheJoinedOne)
{
    BoardPorts &ports = board.ports();
    ports.setConnector(true);
    ports.stick({BoardPorts::Where::Data, 3, 6, false});
    ports.stick({BoardPorts::Where::Direction, 2, 0, true});
    expectReplies(board, {{"PORT:DIR 1,255;PORT:DATA 1,64;PORT:DATA? 3;PORT:DATA? 1", "0;0"},
                          {"PORT:DATA 1,129;PORT:DATA? 3", "129"},
                          {"PORT:DIR 2,254;PORT:DIR? 2", "255"}});
    board.powerCycle();
    EXPECT_EQ(ask(board, "PORT:DIR? 2"), "1");
    ports.freeStuckBits();
    EXPECT_EQ(ask(board, "PORT:DIR? 2"), "0");
}
