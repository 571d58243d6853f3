// SPDX-License-Identifier: GPL-3.0-or-later
#include "devices/GpibAdapterChoice.h"

#include "devices/PlatformError.h"
#include "devices/WholeNumber.h"

#include <algorithm>
#include <utility>

namespace corvane {

namespace {

using Kind = GpibAdapterChoice::Kind;

constexpr std::pair<QLatin1String, Kind> kinds[] = {
    {"auto"_L1, Kind::Auto},     {"none"_L1, Kind::None},       {"tcp"_L1, Kind::Tcp},
    {"serial"_L1, Kind::Serial}, {"library"_L1, Kind::Library}, {"visa"_L1, Kind::Visa}};

constexpr int highestLibraryBoard = 15;

QString named(const QString &text)
{
    return u"GPIB adapter \"%1\""_s.arg(text);
}

[[noreturn]] void refuse(const QString &text, const QString &why)
{
    throw PlatformError(named(text) + u": "_s + why);
}

/// Splits "HOST[:PORT]"; a host in brackets may hold colons.
void readPeer(GpibAdapterChoice &choice, const QString &text, const QString &peer)
{
    const auto bracket = peer.startsWith(u'[') ? peer.indexOf(u']') : -1;
    const auto colon = peer.indexOf(u':', std::max<qsizetype>(bracket, 0));
    choice.host = bracket > 0 ? peer.mid(1, bracket - 1) : peer.left(colon);
    if (choice.host.isEmpty())
        refuse(text, u"a host is needed, as in tcp:192.168.0.5:1234"_s);
    if (colon >= 0)
        choice.port = requiredNumber(named(text), u"port"_s, peer.mid(colon + 1), 1, 65535);
}

} // namespace

GpibAdapterChoice GpibAdapterChoice::parse(const QString &text)
{
    const QString trimmed = text.trimmed();
    const QString word = trimmed.section(u':', 0, 0).toLower();
    const QString rest = trimmed.section(u':', 1).trimmed();
    const auto known =
        std::ranges::find_if(kinds, [&word](const auto &row) { return word == row.first; });
    if (known == std::end(kinds))
        refuse(text, u"it must be auto, none, tcp:HOST[:PORT], serial:DEVICE, "
                     "library[:BOARD] or visa"_s);
    GpibAdapterChoice choice;
    choice.kind = known->second;
    if (choice.kind == Kind::Tcp) {
        readPeer(choice, text, rest);
    } else if (choice.kind == Kind::Serial) {
        choice.device = rest;
        if (rest.isEmpty())
            refuse(text, u"a device is needed, as in serial:/dev/ttyUSB0"_s);
    } else if (choice.kind == Kind::Library && !rest.isEmpty()) {
        choice.libraryBoard =
            requiredNumber(named(text), u"board number"_s, rest, 0, highestLibraryBoard);
    } else if (!rest.isEmpty()) {
        refuse(text, u"nothing may follow \"%1\""_s.arg(word));
    }
    return choice;
}

QString GpibAdapterChoice::toString() const
{
    QString word =
        std::ranges::find(kinds, kind, [](const auto &row) { return row.second; })->first;
    if (kind == Kind::Tcp)
        return u"%1:%2:%3"_s.arg(word, host.contains(u':') ? u'[' + host + u']' : host,
                                 QString::number(port));
    if (kind == Kind::Serial)
        return word + u':' + device;
    if (kind == Kind::Library && libraryBoard)
        return u"%1:%2"_s.arg(word).arg(*libraryBoard);
    return word;
}

} // namespace corvane
