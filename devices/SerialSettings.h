// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QSerialPort>
#include <QString>

namespace corvane {

/// The line settings of a serial port, as in "9600,N,8,1".
struct SerialSettings
{
    qint32 baud = 9600; ///< any positive number
    QSerialPort::Parity parity = QSerialPort::NoParity;
    QSerialPort::DataBits dataBits = QSerialPort::Data8;
    QSerialPort::StopBits stopBits = QSerialPort::OneStop;

    /// Reads baud rate, parity letter (E M N O S), data bits and stop bits (1, 1.5, 2), separated
    /// by commas; blanks around a part and the letter's case do not matter. Throws PlatformError
    /// that names the wrong part.
    static SerialSettings parse(const QString &text);
    [[nodiscard]] QString toString() const;

    bool operator==(const SerialSettings &) const = default;
};

} // namespace corvane
