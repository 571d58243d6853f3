// SPDX-License-Identifier: GPL-3.0-or-later
#include "devices/SerialSettings.h"

#include "devices/PlatformError.h"
#include "devices/WholeNumber.h"

#include <QStringList>

#include <algorithm>
#include <optional>
#include <span>

namespace corvane {

namespace {

template <typename Value>
struct Spelling
{
    QLatin1String text;
    Value value;
};

using Parity = QSerialPort::Parity;
using StopBits = QSerialPort::StopBits;

constexpr Spelling<Parity> parities[] = {{"N"_L1, Parity::NoParity},
                                         {"E"_L1, Parity::EvenParity},
                                         {"O"_L1, Parity::OddParity},
                                         {"M"_L1, Parity::MarkParity},
                                         {"S"_L1, Parity::SpaceParity}};
constexpr Spelling<StopBits> stops[] = {
    {"1"_L1, StopBits::OneStop}, {"1.5"_L1, StopBits::OneAndHalfStop}, {"2"_L1, StopBits::TwoStop}};

template <typename Value>
std::optional<Value> valueOf(std::span<const Spelling<Value>> table, const QString &text)
{
    const auto found = std::ranges::find_if(table, [&text](const auto &row) {
        return text.compare(row.text, Qt::CaseInsensitive) == 0;
    });
    return found == table.end() ? std::nullopt : std::optional(found->value);
}

template <typename Value>
QLatin1String textOf(std::span<const Spelling<Value>> table, Value value)
{
    return std::ranges::find(table, value, &Spelling<Value>::value)->text;
}

/// Without a sign.
std::optional<int> digits(const QString &text, int first, int last)
{
    return std::ranges::all_of(text, isDigit) ? wholeNumber(text, first, last) : std::nullopt;
}

/// Gives the value of one part, or the fault that names the part and what it may be.
template <typename Value>
Value required(std::optional<Value> value, const QString &settings, const QString &part,
               const char *what, const char *allowed)
{
    if (!value)
        throw PlatformError(u"serial settings \"%1\": the %2 \"%3\" must be %4"_s.arg(
            settings, QLatin1String(what), part, QLatin1String(allowed)));
    return *value;
}

} // namespace

SerialSettings SerialSettings::parse(const QString &text)
{
    QStringList parts = text.split(u',');
    if (parts.size() != 4)
        throw PlatformError(u"serial settings \"%1\": baud rate, parity, data bits "
                            "and stop bits are needed, as in 9600,N,8,1"_s.arg(text));
    for (QString &part : parts)
        part = part.trimmed();
    SerialSettings settings;
    settings.baud = required(digits(parts[0], 1, std::numeric_limits<qint32>::max()), text,
                             parts[0], "baud rate", "a positive whole number");
    settings.parity = required(valueOf<Parity>(parities, parts[1]), text, parts[1], "parity",
                               "E (even), M (mark), N (none), O (odd) or S (space)");
    settings.dataBits = static_cast<QSerialPort::DataBits>(
        required(digits(parts[2], 5, 8), text, parts[2], "number of data bits", "5, 6, 7 or 8"));
    settings.stopBits = required(valueOf<StopBits>(stops, parts[3]), text, parts[3],
                                 "number of stop bits", "1, 1.5 or 2");
    return settings;
}

QString SerialSettings::toString() const
{
    return u"%1,%2,%3,%4"_s.arg(baud)
        .arg(textOf<Parity>(parities, parity))
        .arg(dataBits)
        .arg(textOf<StopBits>(stops, stopBits));
}

} // namespace corvane
