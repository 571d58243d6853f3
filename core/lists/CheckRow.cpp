// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/lists/CheckRow.h"

#include "core/lists/Blanks.h"
#include "core/text/LineEnds.h"
#include "core/text/Numbers.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace corvane {

namespace {

using Cell = CheckRow::Cell;

QString oneLine(const QString &text)
{
    return trimBlanks(lineEnds::removed(text));
}

QString withoutQuotes(QString text)
{
    if (text.startsWith(u'"'))
        text.remove(0, 1);
    if (text.endsWith(u'"'))
        text.chop(1);
    return trimBlanks(text);
}

CheckRow::Verdict judgeText(const QString &reply, const QString &expected)
{
    if (reply.isEmpty() && expected.isEmpty())
        return {true, Cell::Untouched};
    const bool sameLength = reply.size() == expected.size();
    const bool begins = reply.startsWith(expected);
    // Without a character to compare, the lengths have the last word.
    const bool shownPassed = begins && (sameLength || !expected.isEmpty());
    return {begins && sameLength, shownPassed ? Cell::Passed : Cell::Failed};
}

/// A difference beyond single precision is larger than any tolerance.
bool within(double reply, double expected, double tolerance)
{
    const float allowed =
        std::min(numbers::single(std::abs(tolerance)), std::numeric_limits<float>::max());
    return allowed >= numbers::single(std::abs(reply - expected));
}

} // namespace

CheckRow::Verdict CheckRow::judge() const
{
    const QString got = oneLine(reply);
    QString wanted = oneLine(expected);
    if (wanted.contains(u'"'))
        wanted = withoutQuotes(wanted);
    const auto number = numbers::numericValue(wanted);
    if (!number)
        return judgeText(got, wanted);
    const auto measured = numbers::numericValue(got);
    const bool passed = measured && within(*measured, *number, numbers::leadingNumber(tolerance));
    return {passed, passed ? Cell::Passed : Cell::Failed};
}

} // namespace corvane
