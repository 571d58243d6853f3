// SPDX-License-Identifier: GPL-3.0-or-later
#include "devices/GpibAddress.h"

#include "devices/PlatformError.h"
#include "devices/WholeNumber.h"

#include <QStringList>

namespace corvane {

GpibAddress GpibAddress::parse(const QString &connectString)
{
    const QStringList parts = connectString.split(u"::"_s);
    const QString prefix = u"GPIB"_s;
    if (parts.size() < 2 || parts.size() > 3 || !parts[0].startsWith(prefix, Qt::CaseInsensitive))
        throw PlatformError(
            u"\"%1\" is no GPIB address; it has the form GPIB0::5"_s.arg(connectString));
    GpibAddress address;
    address.board = requiredNumber(connectString, u"board number"_s, parts[0].mid(prefix.size()), 0,
                                   boardCount - 1);
    address.primary = requiredNumber(connectString, u"device address"_s, parts[1], 0, 30);
    if (parts.size() == 3)
        address.secondary =
            requiredNumber(connectString, u"secondary address"_s, parts[2], 96, 126);
    return address;
}

QString GpibAddress::boardName(int board)
{
    return u"GPIB%1"_s.arg(board);
}

QString GpibAddress::toString() const
{
    const QString text = u"%1::%2"_s.arg(boardName(board)).arg(primary);
    return secondary ? text + u"::%1"_s.arg(*secondary) : text;
}

} // namespace corvane
