// SPDX-License-Identifier: GPL-3.0-or-later
#include "devices/WholeNumber.h"

#include "devices/PlatformError.h"

namespace corvane {

std::optional<int> wholeNumber(QStringView text, int first, int last)
{
    bool ok = false;
    const int value = text.toInt(&ok);
    return ok && value >= first && value <= last ? std::optional(value) : std::nullopt;
}

int requiredNumber(const QString &where, const QString &what, const QString &text, int first,
                   int last)
{
    if (const auto value = wholeNumber(text, first, last))
        return *value;
    throw PlatformError(u"%1: the %2 \"%3\" is not a number from %4 to %5"_s.arg(
        where, what, text, QString::number(first), QString::number(last)));
}

} // namespace corvane
