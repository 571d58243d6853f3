#include "devices/SerialSettings.h"

#include "devices/PlatformError.h"

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

using Parity = SerialSettings::Parity;
using StopBits = SerialSettings::StopBits;

constexpr Spelling<Parity> parities[] = {{QLatin1String("N"), Parity::None},
                                         {QLatin1String("E"), Parity::Even},
                                         {QLatin1String("O"), Parity::Odd},
                                         {QLatin1String("M"), Parity::Mark},
                                         {QLatin1String("S"), Parity::Space}};
constexpr Spelling<StopBits> stops[] = {{QLatin1String("1"), StopBits::One},
                                        {QLatin1String("1.5"), StopBits::OneAndHalf},
                                        {QLatin1String("2"), StopBits::Two}};

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

std::optional<qint32> wholeNumber(const QString &text, qint32 first, qint32 last)
{
    bool ok = false;
    const qint32 value = text.toInt(&ok);
    const bool digitsOnly =
        std::ranges::all_of(text, [](QChar c) { return c >= u'0' && c <= u'9'; });
    return ok && digitsOnly && value >= first && value <= last ? std::optional(value)
                                                               : std::nullopt;
}

/// Gives the value of one part, or the fault that names the part and what it may be.
template <typename Value>
Value required(std::optional<Value> value, const QString &settings, const QString &part,
               const char *what, const char *allowed)
{
    if (!value)
        throw PlatformError(QStringLiteral("serial settings \"%1\": the %2 \"%3\" must be %4")
                                .arg(settings, QLatin1String(what), part, QLatin1String(allowed)));
    return *value;
}

} // namespace

SerialSettings SerialSettings::parse(const QString &text)
{
    QStringList parts = text.split(u',');
    if (parts.size() != 4)
        throw PlatformError(QStringLiteral("serial settings \"%1\": baud rate, parity, data bits "
                                           "and stop bits are needed, as in 9600,N,8,1")
                                .arg(text));
    for (QString &part : parts)
        part = part.trimmed();
    SerialSettings settings;
    settings.baud = required(wholeNumber(parts[0], 1, std::numeric_limits<qint32>::max()), text,
                             parts[0], "baud rate", "a positive whole number");
    settings.parity = required(valueOf<Parity>(parities, parts[1]), text, parts[1], "parity",
                               "E (even), M (mark), N (none), O (odd) or S (space)");
    settings.dataBits = required(wholeNumber(parts[2], 5, 8), text, parts[2], "number of data bits",
                                 "5, 6, 7 or 8");
    settings.stopBits = required(valueOf<StopBits>(stops, parts[3]), text, parts[3],
                                 "number of stop bits", "1, 1.5 or 2");
    return settings;
}

QString SerialSettings::toString() const
{
    return QStringLiteral("%1,%2,%3,%4")
        .arg(baud)
        .arg(textOf<Parity>(parities, parity))
        .arg(dataBits)
        .arg(textOf<StopBits>(stops, stopBits));
}

} // namespace corvane
