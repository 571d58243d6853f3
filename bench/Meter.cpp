// SPDX-License-Identifier: GPL-3.0-or-later
#include "bench/Meter.h"

#include "bench/Text.h"

namespace corvane::bench {

QByteArray Meter::identity() const
{
    return "BENCH INSTRUMENTS,DMM-6,M1.3,B1.0,0981142";
}

ScpiDevice::Reply Meter::execute(const QByteArray &header, const QByteArray &)
{
    if (!text::matches(header, "DATA?"))
        return refuseHeader();
    if (m_overflow)
        return "OVERFLOW";
    const double volts = m_probe(sensorChannel());
    return (volts < 0 ? "" : "+") + QByteArray::number(volts, 'E', 5);
}

} // namespace corvane::bench
