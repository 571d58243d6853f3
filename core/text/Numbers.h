// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "devices/Literals.h"

#include <QString>
#include <QStringView>

#include <optional>

/// The system's rules for numbers in texts: one home, C locale always, used everywhere.
namespace corvane::numbers {

/// The longest leading decimal number of the text, after leading blanks: an optional sign, digits
/// with an optional point, an optional exponent. 0 when there is none; never infinite or NaN.
double leadingNumber(QStringView text);

/// True when the text, after leading blanks, begins with a number: leadingNumber is not a 0 for
/// want of one.
bool startsWithNumber(QStringView text);

/// A number, and what stands behind it.
struct NumberAndRest
{
    double value = 0;
    QStringView rest;
};
/// The longest decimal number that the text begins with, after leading blanks; nothing when there
/// is none, and when it is beyond what a double holds.
std::optional<NumberAndRest> split(QStringView text);

/// The nearest whole number, of two the even one, clamped to 32 bits.
int nearest(double value);
/// The leading number as the nearest whole one.
int leadingInteger(QStringView text);

/// True when the whole text, blanks at its ends aside, is one finite decimal number.
bool isNumeric(QStringView text);
/// The number that the whole text is, or nothing when it is not one.
std::optional<double> numericValue(QStringView text);

/// A number as text with one leading blank when it is not negative and no zero before the point of
/// a fraction: " 3", " .5", "-2", "-.25".
QString numberText(double value);
QString numberText(int value);

/// The nearest single-precision number; infinite when the value is too large for one.
float single(double value);

/// Five decimals, at least one digit before the point: "0.00000" and "#0.00000" alike.
QString fixed5(double value);
/// A text as the format "0.00000" leaves it: a numeric text becomes fixed5, any other stays.
QString fixed5(const QString &text);

/// A number written in hexadecimal, upper case, no prefix, no leading zero.
QString toHex(int value);
/// The number that the whole text, blanks at its ends aside, is in hexadecimal digits, without any
/// prefix; nothing when it is not one or has more than 32 bits.
std::optional<qint64> fromHex(QStringView text);

} // namespace corvane::numbers
