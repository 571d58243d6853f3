#include "devices/GpibAddress.h"

#include "devices/PlatformError.h"

#include <QStringList>

namespace corvane {

namespace {

int partInRange(const QString &connectString, const QString &part, const QString &what, int first,
                int last)
{
    bool ok = false;
    const int value = part.trimmed().toInt(&ok);
    if (!ok || value < first || value > last)
        throw PlatformError(QStringLiteral("%1: the %2 \"%3\" is not a number from %4 to %5")
                                .arg(connectString, what, part)
                                .arg(first)
                                .arg(last));
    return value;
}

} // namespace

GpibAddress GpibAddress::parse(const QString &connectString)
{
    const QStringList parts = connectString.split(QStringLiteral("::"));
    const QString prefix = QStringLiteral("GPIB");
    if (parts.size() < 2 || parts.size() > 3 || !parts[0].startsWith(prefix, Qt::CaseInsensitive))
        throw PlatformError(QStringLiteral("\"%1\" is no GPIB address; it has the form GPIB0::5")
                                .arg(connectString));
    GpibAddress address;
    address.board = partInRange(connectString, parts[0].mid(prefix.size()),
                                QStringLiteral("board number"), 0, boardCount - 1);
    address.primary = partInRange(connectString, parts[1], QStringLiteral("device address"), 0, 30);
    if (parts.size() == 3)
        address.secondary =
            partInRange(connectString, parts[2], QStringLiteral("secondary address"), 96, 126);
    return address;
}

QString GpibAddress::toString() const
{
    const QString text = QStringLiteral("GPIB%1::%2").arg(board).arg(primary);
    return secondary ? text + QStringLiteral("::%1").arg(*secondary) : text;
}

} // namespace corvane
