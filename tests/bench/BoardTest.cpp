#include "bench/Board.h"

#include "BenchSupport.h"
#include "bench/Meter.h"

#include <cmath>

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
    double adc(int channel)
    {
        const std::string reply = ask(board, "ADC? " + QByteArray::number(channel));
        return std::stod(reply.substr(0, reply.find(',')));
    }
    /// A channel's calibration as a technician's program does it, with neutral values first.
    void calibrate(int channel)
    {
        const QByteArray number = ' ' + QByteArray::number(channel);
        const auto five = [](double value) { return QByteArray::number(value, 'f', 5); };
        board.answer("DAC " + number + ", .5,1.0,0.0");
        board.answer("ADC " + number + ",1.0,0.0");
        const double a1 = adc(channel);
        const double m1 = reading(channel);
        board.answer("DAC " + number + ", 2,1.0,0.0");
        const double a2 = adc(channel);
        const double m2 = reading(channel);
        const double dacOffset = 0.5 - m1;
        const double dacGain = 2.0 / (dacOffset + m2);
        const double adcOffset = m1 - a1;
        const double adcGain = m2 / (adcOffset + a2);
        board.answer("DAC " + number + ", 2," + five(dacGain) + ',' + five(dacOffset));
        board.answer("ADC " + number + ',' + five(adcGain) + ',' + five(adcOffset));
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

TEST_F(BoardOnTheBench, ACalibrationComesOutAsWorkedByHand)
{
    // Meter 0.515 and 2.03. The ADC sees 0.515 * 0.995 - 0.004 = 0.508425, step 13328 of 65535,
    // which is 0.50843; and 2.03 * 0.995 - 0.004 = 2.01585, step 52843, which is 2.01583.
    calibrate(0);
    // Offset 0.5 - 0.515; gain 2 / (-0.015 + 2.03) = 0.992556. So the DAC gets
    // (2 - 0.015) * 0.99256 = 1.9702316, step 51648 or 1.9702449, and puts out 1.9999473.
    EXPECT_EQ(ask(board, "DAC? 0"), "2.00000,0.99256,-0.01500");
    EXPECT_NEAR(reading(0), 1.9999473, 0.000005);
    // Offset 0.515 - 0.50843; gain 2.03 / (0.00657 + 2.01583) = 1.003758. The ADC now sees
    // 1.9999473 * 0.995 - 0.004 = 1.9859476, step 52060 or 1.9859617, and reports 2.00002.
    EXPECT_EQ(ask(board, "ADC? 0"), "2.00002,1.00376,0.00657");
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
