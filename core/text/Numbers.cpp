// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/text/Numbers.h"

#include "devices/WholeNumber.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

namespace corvane::numbers {

namespace {

struct Leading
{
    double value = 0;     ///< 0 also when the number is beyond what a double holds
    qsizetype length = 0; ///< 0: the text begins with no number
    bool fits = false;
};

/// The decimal number that the text begins with.
Leading parse(QStringView text)
{
    const QByteArray bytes = text.toLatin1();
    const qsizetype plus = bytes.startsWith('+') ? 1 : 0;
    const qsizetype sign = bytes.startsWith('-') ? 1 : plus;
    const QLatin1Char first(sign < bytes.size() ? bytes[sign] : ' ');
    if (first != u'.' && !isDigit(first))
        return {}; // "inf" and "nan" are words
    Leading number;
    const auto end = std::from_chars(bytes.begin() + plus, bytes.end(), number.value);
    number.length = end.ec == std::errc::invalid_argument ? 0 : end.ptr - bytes.begin();
    number.fits = end.ec == std::errc();
    return number;
}

} // namespace

double leadingNumber(QStringView text)
{
    return parse(text.trimmed()).value;
}

bool startsWithNumber(QStringView text)
{
    return parse(text.trimmed()).length > 0;
}

std::optional<NumberAndRest> split(QStringView text)
{
    const QStringView trimmed = text.trimmed();
    const Leading number = parse(trimmed);
    if (!number.fits)
        return std::nullopt;
    return NumberAndRest{number.value, trimmed.sliced(number.length)};
}

int nearest(double value)
{
    return static_cast<int>(std::clamp(std::nearbyint(value),
                                       double{std::numeric_limits<int>::min()},
                                       double{std::numeric_limits<int>::max()}));
}

int leadingInteger(QStringView text)
{
    return nearest(leadingNumber(text));
}

std::optional<double> numericValue(QStringView text)
{
    const QStringView trimmed = text.trimmed();
    const Leading number = parse(trimmed);
    return number.fits && number.length == trimmed.size() ? std::optional(number.value)
                                                          : std::nullopt;
}

bool isNumeric(QStringView text)
{
    return numericValue(text).has_value();
}

QString numberText(double value)
{
    QString text = QString::number(std::abs(value), 'g', 7);
    if (text.startsWith(u"0."))
        text.remove(0, 1);
    return (value < 0 ? u"-"_s : u" "_s) + text;
}

QString numberText(int value)
{
    return value < 0 ? QString::number(value) : u" "_s + QString::number(value);
}

float single(double value)
{
    if (std::abs(value) > double{std::numeric_limits<float>::max()})
        return value < 0 ? -std::numeric_limits<float>::infinity()
                         : std::numeric_limits<float>::infinity();
    return static_cast<float>(value);
}

QString fixed5(double value)
{
    const QString text = QString::number(value, 'f', 5);
    return text == u"-0.00000" ? u"0.00000"_s : text;
}

QString fixed5(const QString &text)
{
    const auto value = numericValue(text);
    return value ? fixed5(*value) : text;
}

QString toHex(int value)
{
    return QString::number(static_cast<uint>(value), 16).toUpper();
}

std::optional<qint64> fromHex(QStringView text)
{
    const QStringView digits = text.trimmed();
    if (digits.isEmpty())
        return std::nullopt;
    qint64 value = 0;
    for (const QChar c : digits) {
        const auto digit = QStringView(u"0123456789ABCDEF").indexOf(c.toUpper());
        value = value * 16 + digit;
        if (digit < 0 || value > std::numeric_limits<quint32>::max())
            return std::nullopt;
    }
    return value;
}

} // namespace corvane::numbers
