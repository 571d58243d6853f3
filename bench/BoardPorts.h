// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>
#include <vector>

namespace corvane::bench {

/// The board's four 8-bit ports as they stand electrically: direction registers (1 drives, 0
/// reads), data latches, the lines behind the pins, the loop-back connector that joins port 0 with
/// 2 and 1 with 3, and bits that were ordered to be stuck. Ports are 0 to 3, pins 0 to 7.
class BoardPorts
{
public:
    static constexpr int portCount = 4;
    static constexpr int pinCount = 8;

    enum class Where { Data, Direction };
    struct StuckBit
    {
        Where where;
        int port;
        int bit;
        bool high;
    };

    BoardPorts() { powerCycle(); }

    void setDirection(int port, int value) { m_direction.at(index(port)) = value; }
    [[nodiscard]] int direction(int port) const;
    /// Writes the data latch; it reaches the pins that the port drives.
    void setData(int port, int value) { m_latch.at(index(port)) = value; }
    /// The levels of the eight lines. One that nobody drives is pulled up; where two drive, low
    /// wins.
    [[nodiscard]] int data(int port) const;
    /// One bit of a port's latch.
    void setPin(int port, int pin, bool high);

    void setConnector(bool fitted) { m_connector = fitted; }
    [[nodiscard]] bool connector() const { return m_connector; }
    /// A stuck data bit holds its line, and so the joined one too. A bit is stuck at one level.
    void stick(const StuckBit &bit);
    void freeStuckBits() { m_stuck.clear(); }
    [[nodiscard]] const std::vector<StuckBit> &stuckBits() const { return m_stuck; }

    /// Port 0 drives, the others read, all latches at 0. Connector and stuck bits stay.
    void powerCycle();

private:
    static size_t index(int port) { return static_cast<size_t>(port); }
    [[nodiscard]] int withStuckBits(Where where, int port, int value) const;

    std::array<int, portCount> m_direction{};
    std::array<int, portCount> m_latch{};
    bool m_connector = false;
    std::vector<StuckBit> m_stuck;
};

} // namespace corvane::bench
