#pragma once

#include <QString>

namespace corvane {

/// The line settings of a serial port, as in "9600,N,8,1".
struct SerialSettings
{
    enum class Parity { None, Even, Odd, Mark, Space };
    enum class StopBits { One, OneAndHalf, Two };

    qint32 baud = 9600; ///< any positive number
    Parity parity = Parity::None;
    int dataBits = 8; ///< 5..8
    StopBits stopBits = StopBits::One;

    /// Reads baud rate, parity letter (E M N O S), data bits and stop bits (1, 1.5, 2), separated
    /// by commas; blanks around a part and the letter's case do not matter. Throws PlatformError
    /// that names the wrong part.
    static SerialSettings parse(const QString &text);
    [[nodiscard]] QString toString() const;

    bool operator==(const SerialSettings &) const = default;
};

} // namespace corvane
