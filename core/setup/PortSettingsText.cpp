// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/setup/PortSettingsText.h"

namespace corvane::portSettingsText {

namespace {

constexpr int count = 4;
constexpr int parity = 1;

} // namespace

QStringList parts(const QString &settings)
{
    QStringList parts = settings.split(u',');
    parts.resize(count);
    parts[parity] = parts[parity].toUpper();
    return parts;
}

QString joined(QStringList parts)
{
    for (int i = 0; i < count; ++i) {
        if (i != parity)
            parts[i] = parts[i].trimmed();
        else if (parities.contains(parts[i]))
            parts[i].truncate(1);
    }
    return parts.join(u',');
}

} // namespace corvane::portSettingsText
