// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QList>

#include <optional>
#include <utility>

/// How the devices of the bench read and write numbers and command headers. They are other
/// people's machines: nothing here is shared with the program that tests them.
namespace corvane::bench::text {

/// The finite decimal number that the whole text is, blanks at its ends aside.
std::optional<double> number(QByteArrayView text);
/// The same for a whole number from `low` to `high`.
std::optional<int> whole(QByteArrayView text, int low, int high);
/// The number that the whole text is in hexadecimal, one to four digits.
std::optional<int> hex(QByteArrayView text);

/// A number with that many decimals; zero never has a minus sign.
QByteArray fixed(double value, int decimals);

/// True when the header is the pattern ("SYSTem:ERRor?") in any letter case, each part in its long
/// form or in its short one (the capitals), with or without a colon in front.
bool matches(QByteArrayView header, QByteArrayView pattern);

/// The text up to its first blank, and what follows that, trimmed.
std::pair<QByteArray, QByteArray> wordAndRest(const QByteArray &text);

/// The text cut at every `separator`, each piece trimmed.
QList<QByteArray> pieces(const QByteArray &text, char separator);

/// The text with \r, \n, \\ and \xHH replaced by the bytes that they stand for.
QByteArray unescaped(const QByteArray &text);
/// The text that is unescaped to this one: \\ for \, and \xHH for what cannot be printed.
QByteArray escaped(const QByteArray &text);

} // namespace corvane::bench::text
