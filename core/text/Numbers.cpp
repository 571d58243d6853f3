#include "core/text/Numbers.h"

#include "devices/WholeNumber.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace corvane::numbers {

namespace {

qsizetype digitsFrom(QStringView text, qsizetype at)
{
    qsizetype end = at;
    while (end < text.size() && isDigit(text[end]))
        ++end;
    return end - at;
}

bool isSign(QStringView text, qsizetype at)
{
    return at < text.size() && (text[at] == u'+' || text[at] == u'-');
}

/// The length of the decimal number that the text begins with; 0 when it begins with none.
qsizetype numberLength(QStringView text)
{
    qsizetype at = isSign(text, 0) ? 1 : 0;
    const qsizetype whole = digitsFrom(text, at);
    at += whole;
    qsizetype fraction = 0;
    if (at < text.size() && text[at] == u'.') {
        fraction = digitsFrom(text, at + 1);
        if (whole + fraction > 0)
            at += 1 + fraction;
    }
    if (whole + fraction == 0)
        return 0;
    if (at < text.size() && (text[at] == u'e' || text[at] == u'E')) {
        const qsizetype sign = isSign(text, at + 1) ? 1 : 0;
        const qsizetype exponent = digitsFrom(text, at + 1 + sign);
        if (exponent > 0)
            at += 1 + sign + exponent;
    }
    return at;
}

double toFinite(QStringView number)
{
    const double value = number.toDouble();
    return std::isfinite(value) ? value : 0.0;
}

} // namespace

double leadingNumber(QStringView text)
{
    const QStringView start = text.trimmed();
    return toFinite(start.first(numberLength(start)));
}

bool startsWithNumber(QStringView text)
{
    return numberLength(text.trimmed()) > 0;
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
    const QStringView number = text.trimmed();
    if (number.isEmpty() || numberLength(number) != number.size())
        return std::nullopt;
    bool ok = false;
    const double value = number.toDouble(&ok);
    if (!ok || !std::isfinite(value))
        return std::nullopt;
    return value;
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
