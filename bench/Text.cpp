// SPDX-License-Identifier: GPL-3.0-or-later
#include "bench/Text.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace corvane::bench::text {

namespace {

bool samePart(QByteArrayView part, QByteArrayView pattern)
{
    QByteArray shortForm;
    for (const char c : pattern) {
        if (c < 'a' || c > 'z')
            shortForm.append(c);
    }
    return part.compare(pattern, Qt::CaseInsensitive) == 0 ||
           part.compare(shortForm, Qt::CaseInsensitive) == 0;
}

} // namespace

std::optional<double> number(QByteArrayView text)
{
    text = text.trimmed();
    if (text.startsWith('+') && !text.startsWith("+-"))
        text = text.sliced(1);
    double value = 0;
    const auto [end, error] = std::from_chars(text.begin(), text.end(), value);
    if (error != std::errc() || end != text.end() || !std::isfinite(value))
        return std::nullopt;
    return value;
}

std::optional<int> whole(QByteArrayView text, int low, int high)
{
    const auto value = number(text);
    if (!value || *value < low || *value > high || *value != std::floor(*value))
        return std::nullopt;
    return static_cast<int>(*value);
}

std::optional<int> hex(QByteArrayView text)
{
    text = text.trimmed();
    int value = 0;
    if (text.isEmpty() || text.size() > 4 || text.startsWith('-'))
        return std::nullopt;
    const auto [end, error] = std::from_chars(text.begin(), text.end(), value, 16);
    if (error != std::errc() || end != text.end())
        return std::nullopt;
    return value;
}

QByteArray fixed(double value, int decimals)
{
    const QByteArray written = QByteArray::number(value, 'f', decimals);
    const bool zero = written.startsWith('-') && number(written) == 0.0;
    return zero ? written.sliced(1) : written;
}

bool matches(QByteArrayView header, QByteArrayView pattern)
{
    if (header.startsWith(':'))
        header = header.sliced(1);
    while (true) {
        const qsizetype headerEnd = header.indexOf(':');
        const qsizetype patternEnd = pattern.indexOf(':');
        if ((headerEnd < 0) != (patternEnd < 0))
            return false;
        if (headerEnd < 0)
            return samePart(header, pattern);
        if (!samePart(header.first(headerEnd), pattern.first(patternEnd)))
            return false;
        header = header.sliced(headerEnd + 1);
        pattern = pattern.sliced(patternEnd + 1);
    }
}

std::pair<QByteArray, QByteArray> wordAndRest(const QByteArray &text)
{
    const qsizetype blank = text.indexOf(' ');
    if (blank < 0)
        return {text, {}};
    return {text.first(blank), text.sliced(blank).trimmed()};
}

QList<QByteArray> pieces(const QByteArray &text, char separator)
{
    QList<QByteArray> result = text.split(separator);
    for (QByteArray &piece : result)
        piece = piece.trimmed();
    return result;
}

QByteArray unescaped(const QByteArray &text)
{
    QByteArray result;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const char next = i + 1 < text.size() ? text[i + 1] : '\0';
        if (text[i] != '\\' || (next != 'r' && next != 'n' && next != '\\' && next != 'x')) {
            result.append(text[i]);
            continue;
        }
        ++i;
        if (next == 'x') {
            const auto value = hex(QByteArrayView(text).sliced(i + 1).first(
                std::min<qsizetype>(2, text.size() - i - 1)));
            result.append(static_cast<char>(value.value_or(0)));
            i += 2;
        } else {
            result.append(next == 'r' ? '\r' : next == 'n' ? '\n' : '\\');
        }
    }
    return result;
}

QByteArray escaped(const QByteArray &text)
{
    QByteArray result;
    for (const char c : text) {
        if (c == '\\')
            result += "\\\\";
        else if (c >= ' ' && c <= '~')
            result += c;
        else
            result += "\\x" + QByteArray(1, c).toHex();
    }
    return result;
}

} // namespace corvane::bench::text
