// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "bench/BoardAnalog.h"
#include "bench/BoardPorts.h"
#include "bench/ScpiDevice.h"

#include <QList>

#include <span>

namespace corvane::bench {

/// The single-board computer: its command set over its converters, ports and identity. Only queries
/// are answered; what is wrong goes into the error queue.
///
///     DAC ch,volts[,gain,offset]    ADC ch,gain,offset    DAC? ch    ADC? ch   (value,gain,offset)
///     CAL:PIC                       keeps the calibrations over a power cycle
///     Wchhhh   Mch                  set a DAC, read an ADC in hexadecimal counts, all joined
///     PORT:DIR p,v   PORT:DIR? p    PORT:DATA p,v   PORT:DATA? p
///     H n   L n   H? n              pins of port 0
///     CAL:PICSN text                serial number, kept at once
///     TCPIP?                        address, mask, gateway, port
class Board : public ScpiDevice
{
public:
    Board();

    [[nodiscard]] const BoardAnalog &analog() const { return m_analog; }
    [[nodiscard]] BoardPorts &ports() { return m_ports; }
    /// The channel whose DAC was set or asked for last, 0 to 7.
    [[nodiscard]] int lastDacChannel() const { return m_lastDacChannel; }
    [[nodiscard]] QByteArray serial() const { return m_serial; }
    /// 1 to 20 printable characters without a comma; false and unchanged otherwise.
    bool setSerial(const QByteArray &serial);
    /// Off and on again: what was not kept in its EEPROM is lost.
    void powerCycle();

protected:
    [[nodiscard]] QByteArray identity() const override;
    Reply execute(const QByteArray &header, const QByteArray &arguments) override;

private:
    using Arguments = QList<QByteArray>;
    using Handler = Reply (Board::*)(const Arguments &);
    struct Command
    {
        const char *header;
        /// How many arguments it takes at least and at most.
        qsizetype least;
        qsizetype most;
        Handler handler;
    };
    static std::span<const Command> commands();

    Reply setDac(const Arguments &arguments);
    Reply setAdc(const Arguments &arguments);
    Reply readDac(const Arguments &arguments);
    Reply readAdc(const Arguments &arguments);
    Reply saveCalibration(const Arguments &arguments);
    /// The register of a port that this member of the ports sets.
    template <auto set>
    Reply setPort(const Arguments &arguments);
    template <auto get>
    Reply readPort(const Arguments &arguments);
    template <bool high>
    Reply setPin(const Arguments &arguments);
    Reply readPin(const Arguments &arguments);
    Reply storeSerial(const Arguments &arguments);
    Reply readNetwork(const Arguments &arguments);

    Reply writeCounts(const QByteArray &channelAndCounts);
    Reply readCounts(const QByteArray &channel);

    BoardAnalog m_analog;
    BoardPorts m_ports;
    int m_lastDacChannel = 0;
    QByteArray m_serial = "07/0123";
};

} // namespace corvane::bench
