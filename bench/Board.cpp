// SPDX-License-Identifier: GPL-3.0-or-later
#include "bench/Board.h"

#include "bench/Text.h"

#include <algorithm>

namespace corvane::bench {

namespace {

constexpr int volts5 = 5;
constexpr int lastChannel = BoardAnalog::channelCount - 1;
constexpr int lastPort = BoardPorts::portCount - 1;
constexpr int lastPin = BoardPorts::pinCount - 1;
constexpr int lastByte = 255;

std::optional<int> channelOf(const QByteArray &text)
{
    return text::whole(text, 0, lastChannel);
}

std::optional<Calibration> calibrationOf(const QByteArray &gain, const QByteArray &offset)
{
    const auto gainValue = text::number(gain);
    const auto offsetValue = text::number(offset);
    if (!gainValue || !offsetValue)
        return std::nullopt;
    return Calibration{*gainValue, *offsetValue};
}

QByteArray valueAndCalibration(double value, const Calibration &calibration)
{
    return text::fixed(value, volts5) + ',' + text::fixed(calibration.gain, volts5) + ',' +
           text::fixed(calibration.offset, volts5);
}

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

} // namespace

Board::Board()
    : ScpiDevice(Acknowledge::No)
{
}

bool Board::setSerial(const QByteArray &serial)
{
    const bool plain = std::all_of(serial.begin(), serial.end(),
                                   [](char c) { return c >= ' ' && c <= '~' && c != ','; });
    if (serial.isEmpty() || serial.size() > 20 || !plain)
        return false;
    m_serial = serial;
    return true;
}

void Board::powerCycle()
{
    m_analog.powerCycle();
    m_ports.powerCycle();
    m_lastDacChannel = 0;
    clearErrors();
}

QByteArray Board::identity() const
{
    return "BRENNICK,P/N_25010-1,R2.14,P3.02," + m_serial;
}

std::span<const Board::Command> Board::commands()
{
    static constexpr Command table[] = {
        {"DAC", 2, 4, &Board::setDac},
        {"ADC", 3, 3, &Board::setAdc},
        {"DAC?", 1, 1, &Board::readDac},
        {"ADC?", 1, 1, &Board::readAdc},
        {"CALibrate:PIC", 0, 0, &Board::saveCalibration},
        {"CALibrate:PICSerialNumber", 1, 1, &Board::storeSerial},
        {"PORT:DIRection", 2, 2, &Board::setPort<&BoardPorts::setDirection>},
        {"PORT:DIRection?", 1, 1, &Board::readPort<&BoardPorts::direction>},
        {"PORT:DATA", 2, 2, &Board::setPort<&BoardPorts::setData>},
        {"PORT:DATA?", 1, 1, &Board::readPort<&BoardPorts::data>},
        {"H", 1, 1, &Board::setPin<true>},
        {"L", 1, 1, &Board::setPin<false>},
        {"H?", 1, 1, &Board::readPin},
        {"TCPIP?", 0, 0, &Board::readNetwork},
    };
    return table;
}

ScpiDevice::Reply Board::execute(const QByteArray &header, const QByteArray &arguments)
{
    if (header.size() > 1 && isDigit(header[1])) {
        if (header[0] == 'W' || header[0] == 'w')
            return writeCounts(header.sliced(1) + arguments);
        if (header[0] == 'M' || header[0] == 'm')
            return readCounts(header.sliced(1) + arguments);
    }
    const Arguments list = arguments.isEmpty() ? Arguments() : text::pieces(arguments, ',');
    for (const Command &command : commands()) {
        if (!text::matches(header, command.header))
            continue;
        if (list.size() < command.least || list.size() > command.most)
            return refuseParameter();
        return (this->*command.handler)(list);
    }
    return refuseHeader();
}

ScpiDevice::Reply Board::setDac(const Arguments &arguments)
{
    const auto index = channelOf(arguments[0]);
    const auto volts = text::number(arguments[1]);
    if (!index || !volts || arguments.size() == 3)
        return refuseParameter();
    if (*volts < 0 || *volts > BoardAnalog::fullScale)
        return refuseRange();
    BoardAnalog::Channel &channel = m_analog.channel(*index);
    if (arguments.size() == 4) {
        const auto calibration = calibrationOf(arguments[2], arguments[3]);
        if (!calibration)
            return refuseParameter();
        channel.dac = *calibration;
    }
    channel.set = *volts;
    m_lastDacChannel = *index;
    return done();
}

ScpiDevice::Reply Board::setAdc(const Arguments &arguments)
{
    const auto index = channelOf(arguments[0]);
    const auto calibration = calibrationOf(arguments[1], arguments[2]);
    if (!index || !calibration)
        return refuseParameter();
    m_analog.channel(*index).adc = *calibration;
    return done();
}

ScpiDevice::Reply Board::readDac(const Arguments &arguments)
{
    const auto index = channelOf(arguments[0]);
    if (!index)
        return refuseParameter();
    m_lastDacChannel = *index;
    const BoardAnalog::Channel &channel = m_analog.channel(*index);
    return valueAndCalibration(channel.set, channel.dac);
}

ScpiDevice::Reply Board::readAdc(const Arguments &arguments)
{
    const auto index = channelOf(arguments[0]);
    if (!index)
        return refuseParameter();
    return valueAndCalibration(m_analog.adcVolts(*index), m_analog.channel(*index).adc);
}

ScpiDevice::Reply Board::saveCalibration(const Arguments &)
{
    m_analog.save();
    return done();
}

ScpiDevice::Reply Board::storeSerial(const Arguments &arguments)
{
    return setSerial(arguments[0]) ? done() : refuseParameter();
}

template <auto set>
ScpiDevice::Reply Board::setPort(const Arguments &arguments)
{
    const auto port = text::whole(arguments[0], 0, lastPort);
    const auto value = text::whole(arguments[1], 0, lastByte);
    if (!port || !value)
        return refuseParameter();
    (m_ports.*set)(*port, *value);
    return done();
}

template <auto get>
ScpiDevice::Reply Board::readPort(const Arguments &arguments)
{
    const auto port = text::whole(arguments[0], 0, lastPort);
    return port ? Reply(QByteArray::number((m_ports.*get)(*port))) : refuseParameter();
}

template <bool high>
ScpiDevice::Reply Board::setPin(const Arguments &arguments)
{
    const auto pin = text::whole(arguments[0], 0, lastPin);
    if (!pin)
        return refuseParameter();
    m_ports.setPin(0, *pin, high);
    return done();
}

ScpiDevice::Reply Board::readPin(const Arguments &arguments)
{
    const auto pin = text::whole(arguments[0], 0, lastPin);
    if (!pin)
        return refuseParameter();
    return (m_ports.data(0) >> *pin & 1) != 0 ? "1" : "0";
}

ScpiDevice::Reply Board::readNetwork(const Arguments &)
{
    return "192.0.2.25,255.255.255.0,192.0.2.1,5001";
}

ScpiDevice::Reply Board::writeCounts(const QByteArray &channelAndCounts)
{
    const auto index = channelOf(channelAndCounts.first(1));
    const auto counts = text::hex(channelAndCounts.sliced(1));
    if (!index || !counts)
        return refuseParameter();
    m_analog.channel(*index).set = BoardAnalog::volts(*counts);
    m_lastDacChannel = *index;
    return done();
}

ScpiDevice::Reply Board::readCounts(const QByteArray &channel)
{
    const auto index = channelOf(channel);
    if (!index)
        return refuseParameter();
    const int counts = BoardAnalog::counts(m_analog.adcVolts(*index));
    return QByteArray::number(counts, 16).toUpper().rightJustified(4, '0');
}

} // namespace corvane::bench
