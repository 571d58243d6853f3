#include "core/setup/PortSettingsText.h"

#include <QStringList>

#include <algorithm>

namespace corvane {

namespace {

QString parityLetter(const QString &text)
{
    const auto &list = PortSettingsText::parities;
    const bool listed = std::any_of(list.begin(), list.end(),
                                    [&text](const char16_t *entry) { return text == entry; });
    return listed ? text.first(1) : text;
}

} // namespace

PortSettingsText PortSettingsText::parse(const QString &settings)
{
    const QStringList parts = settings.split(u',');
    return {.baudRate = parts.value(0),
            .parity = parts.value(1).toUpper(),
            .dataBits = parts.value(2),
            .stopBits = parts.value(3)};
}

QString PortSettingsText::toString() const
{
    return QStringList{baudRate.trimmed(), parityLetter(parity), dataBits.trimmed(),
                       stopBits.trimmed()}
        .join(u',');
}

} // namespace corvane
