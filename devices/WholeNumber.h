// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <limits>
#include <optional>

namespace corvane {

/// True for 0 to 9 alone; QChar::isDigit() takes the digits of other scripts as well.
inline bool isDigit(QChar c)
{
    return c >= u'0' && c <= u'9';
}

/// The whole decimal number that the text is, blanks at its ends aside; nothing when it is none or
/// not within the range.
std::optional<int> wholeNumber(QStringView text, int first = std::numeric_limits<int>::min(),
                               int last = std::numeric_limits<int>::max());

/// The same. Throws PlatformError that begins with `where` and names the part by `what`.
int requiredNumber(const QString &where, const QString &what, const QString &text, int first,
                   int last);

} // namespace corvane
