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
        throw PlatformError(
            u"%1: the %2 \"%3\" is not a number from %4 to %5"_s.arg(connectString, what, part)
                .arg(first)
                .arg(last));
    return value;
}

} // namespace

GpibAddress GpibAddress::parse(const QString &connectString)
{
    const QStringList parts = connectString.split(u"::"_s);
    const QString prefix = u"GPIB"_s;
    if (parts.size() < 2 || parts.size() > 3 || !parts[0].startsWith(prefix, Qt::CaseInsensitive))
        throw PlatformError(
            u"\"%1\" is no GPIB address; it has the form GPIB0::5"_s.arg(connectString));
    GpibAddress address;
    address.board = partInRange(connectString, parts[0].mid(prefix.size()), u"board number"_s, 0,
                                boardCount - 1);
    address.primary = partInRange(connectString, parts[1], u"device address"_s, 0, 30);
    if (parts.size() == 3)
        address.secondary = partInRange(connectString, parts[2], u"secondary address"_s, 96, 126);
    return address;
}

QString GpibAddress::toString() const
{
    const QString text = u"GPIB%1::%2"_s.arg(board).arg(primary);
    return secondary ? text + u"::%1"_s.arg(*secondary) : text;
}

} // namespace corvane
