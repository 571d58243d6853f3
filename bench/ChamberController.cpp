// SPDX-License-Identifier: GPL-3.0-or-later
#include "bench/ChamberController.h"

#include "bench/Text.h"

#include <algorithm>
#include <utility>

namespace corvane::bench {

namespace {

constexpr const char *model = "KT2000";

/// Exact for any way of cutting the time into steps, so the value depends on the clock alone.
double towards(double value, double target, double ratePerMinute, qint64 ms)
{
    const double reach = ratePerMinute * static_cast<double>(ms) / 60000;
    return value + std::clamp(target - value, -reach, reach);
}

} // namespace

ChamberController::ChamberController(TimeSource time, int address, QByteArray serial)
    : ScpiDevice(Acknowledge::Yes)
    , m_time(std::move(time))
    , m_serial(std::move(serial))
    , m_movedAt(m_time())
{
    m_settings.write("ADDR", QByteArray::number(address));
}

std::optional<QByteArray> ChamberController::answer(const QByteArray &line)
{
    if (!line.startsWith('>'))
        return ScpiDevice::answer(line);
    const auto [address, command] = text::wordAndRest(line.sliced(1));
    const int own = static_cast<int>(m_settings.number("ADDR"));
    if (text::whole(address, 1, 30) != own)
        return std::nullopt;
    const auto reply = ScpiDevice::answer(command);
    if (!reply)
        return std::nullopt;
    return '<' + QByteArray::number(own).rightJustified(2, '0') + ':' + *reply;
}

QByteArray ChamberController::identity() const
{
    return QByteArray("BRENNICK,") + model + ",R4.10,P2.30," + m_serial;
}

ScpiDevice::Reply ChamberController::execute(const QByteArray &header, const QByteArray &arguments)
{
    moveOn();
    if (header == "?") {
        const auto [name, rest] = text::wordAndRest(arguments);
        return query(name == "=" ? text::wordAndRest(rest).first : name);
    }
    if (header == "=") {
        const auto [name, value] = text::wordAndRest(arguments);
        return set(name, value);
    }
    if (arguments.isEmpty() || arguments.compare("x", Qt::CaseInsensitive) == 0)
        return query(header);
    return set(header, arguments);
}

ScpiDevice::Reply ChamberController::query(const QByteArray &name)
{
    if (auto value = measured(name.toUpper()))
        return value;
    auto value = m_settings.read(name);
    return value ? value : refuseHeader();
}

ScpiDevice::Reply ChamberController::set(const QByteArray &name, const QByteArray &value)
{
    if (measured(name.toUpper()))
        return refuse(-203, "Command protected");
    if (value.isEmpty() && m_settings.has(name))
        return refuse(-109, "Missing parameter");
    switch (m_settings.write(name, value)) {
    case ChamberSettings::Outcome::Done:
        return done();
    case ChamberSettings::Outcome::WrongType:
        return refuse(-104, "Data type error");
    case ChamberSettings::Outcome::OutOfRange:
        return refuseRange();
    case ChamberSettings::Outcome::Unknown:
        break;
    }
    return refuseHeader();
}

std::optional<QByteArray> ChamberController::measured(const QByteArray &name) const
{
    if (name == "PV")
        return text::fixed(m_temperature, 2);
    if (name == "HPV")
        return text::fixed(m_humidity, 2);
    if (name == "ALARM")
        return alarm() ? "1" : "0";
    if (name == "ID")
        return model;
    if (name == "SN")
        return m_serial;
    return std::nullopt;
}

bool ChamberController::alarm() const
{
    return m_temperature < m_settings.number("ALLO") || m_temperature > m_settings.number("ALHI") ||
           m_humidity < m_settings.number("HALLO") || m_humidity > m_settings.number("HALHI");
}

void ChamberController::moveOn()
{
    const qint64 now = m_time();
    const qint64 passed = now - std::exchange(m_movedAt, now);
    if (m_settings.number("RUN") == 0)
        return;
    m_temperature =
        towards(m_temperature, m_settings.number("SP"), m_settings.number("RAMP"), passed);
    m_humidity = towards(m_humidity, m_settings.number("HSP"), m_settings.number("HRAMP"), passed);
}

} // namespace corvane::bench
