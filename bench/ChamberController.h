// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "bench/ChamberSettings.h"
#include "bench/ScpiDevice.h"
#include "bench/TimeSource.h"

namespace corvane::bench {

/// An environmental chamber's controller: its settings, and a temperature and humidity that move
/// towards their set points at the ramp rates. Every command is answered; one that asks nothing
/// with "OK", a wrong one with "ERROR " and its error.
///
///     ? SP        the value of a setting ("? = SP" and a further word are understood too)
///     = SP 25     gives it a value
///     SP, SP x    the same without the operator: a query (a word that is only "x" is no value)
///     SP 25       the same without the operator: gives it a value
///     >05 ? SP    any of them by RS-485 address: answered with "<05:" in front, and only when the
///                 address is its own
///
/// Beside its settings it can be asked for PV and HPV (temperature and humidity now), ALARM (1
/// while an alarm limit is passed), ID (model) and SN (serial number).
class ChamberController : public ScpiDevice
{
public:
    /// `address` is its RS-485 address, 1 to 30, and can be changed by the setting "ADDR".
    ChamberController(TimeSource time, int address, QByteArray serial);

    std::optional<QByteArray> answer(const QByteArray &line) override;

protected:
    [[nodiscard]] QByteArray identity() const override;
    Reply execute(const QByteArray &header, const QByteArray &arguments) override;

private:
    Reply query(const QByteArray &name);
    Reply set(const QByteArray &name, const QByteArray &value);
    [[nodiscard]] std::optional<QByteArray> measured(const QByteArray &name) const;
    [[nodiscard]] bool alarm() const;
    void moveOn();

    TimeSource m_time;
    QByteArray m_serial;
    ChamberSettings m_settings;
    double m_temperature = 23.0;
    double m_humidity = 45.0;
    qint64 m_movedAt;
};

} // namespace corvane::bench
