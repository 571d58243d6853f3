// SPDX-License-Identifier: GPL-3.0-or-later
#include "bench/BoardPorts.h"

namespace corvane::bench {

namespace {

constexpr int allBits = 0xFF;

int joined(int port)
{
    return (port + 2) % BoardPorts::portCount;
}

int withBit(int value, int bit, bool high)
{
    return high ? value | 1 << bit : value & ~(1 << bit);
}

} // namespace

int BoardPorts::direction(int port) const
{
    return withStuckBits(Where::Direction, port, m_direction.at(index(port)));
}

int BoardPorts::data(int port) const
{
    const auto pulled = [this](int p) { return (m_latch.at(index(p)) | ~direction(p)) & allBits; };
    if (!m_connector)
        return withStuckBits(Where::Data, port, pulled(port));
    const int other = joined(port);
    const int line = pulled(port) & pulled(other);
    return withStuckBits(Where::Data, port, withStuckBits(Where::Data, other, line));
}

void BoardPorts::setPin(int port, int pin, bool high)
{
    int &latch = m_latch.at(index(port));
    latch = withBit(latch, pin, high);
}

void BoardPorts::stick(const StuckBit &bit)
{
    std::erase_if(m_stuck, [&bit](const StuckBit &other) {
        return other.where == bit.where && other.port == bit.port && other.bit == bit.bit;
    });
    m_stuck.push_back(bit);
}

void BoardPorts::powerCycle()
{
    m_direction = {allBits, 0, 0, 0};
    m_latch = {};
}

int BoardPorts::withStuckBits(Where where, int port, int value) const
{
    for (const StuckBit &stuck : m_stuck) {
        if (stuck.where == where && stuck.port == port)
            value = withBit(value, stuck.bit, stuck.high);
    }
    return value;
}

} // namespace corvane::bench
