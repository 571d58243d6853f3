// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/ChannelSetup.h"

#include "core/channels/SerialSession.h"
#include "devices/GpibAddress.h"
#include "devices/PlatformError.h"
#include "devices/SerialPortList.h"
#include "devices/SerialSettings.h"
#include "devices/WholeNumber.h"

#include <QRegularExpression>

namespace corvane {

namespace {

/// "DEVICE[,SETTINGS]", and behind them "[@ADDRESS]" on an addressed line.
ChannelEntries serialEntries(const QString &text, bool isAddressed)
{
    const qsizetype at = isAddressed ? text.lastIndexOf(u'@') : -1;
    const QString line = at < 0 ? text : text.first(at);
    const qsizetype comma = line.indexOf(u',');
    ChannelEntries entries;
    entries.port = comma < 0 ? line : line.first(comma);
    (void)SerialPortList::numberIn(entries.port);
    if (comma >= 0)
        entries.settings = SerialSettings::parse(line.sliced(comma + 1)).toString();
    if (at >= 0)
        entries.address = text.sliced(at + 1);
    if (at >= 0)
        entries.address = SerialSession::knownAddress(entries.address);
    return entries;
}

/// "5", "0::5" or "GPIB0::5".
ChannelEntries gpibEntries(const QString &text)
{
    ChannelEntries entries;
    entries.address =
        !text.isEmpty() && text.front().isDigit() && text.contains(u"::") ? u"GPIB"_s + text : text;
    (void)GpibAddress::parse(text.contains(u"::") ? entries.address : u"GPIB0::"_s + text);
    return entries;
}

/// "HOST[:PORT]"; an address with colons of its own stands in brackets where a port follows.
ChannelEntries tcpEntries(const QString &text)
{
    static const QRegularExpression pattern(
        u"^([^\\[\\]]*:[^\\[\\]]*:[^\\[\\]]*)$|^(?:\\[([^\\]]+)\\]|([^:\\[\\]]+))(?::(.*))?$"_s);
    const QRegularExpressionMatch match = pattern.match(text);
    if (!match.hasMatch())
        throw PlatformError(u"HOST or HOST:PORT is expected"_s);
    ChannelEntries entries;
    entries.host = match.captured(1) + match.captured(2) + match.captured(3);
    entries.port = match.captured(4);
    if (match.hasCaptured(4) && !wholeNumber(entries.port, 1, 65535))
        throw PlatformError(u"the port \"%1\" is not a number from 1 to 65535"_s.arg(entries.port));
    return entries;
}

} // namespace

QString channelSetup::optionOf(int channel)
{
    return channel == channels::ieee488 ? u"gpib-address"_s
                                        : channelTraits().at(static_cast<size_t>(channel)).option;
}

ChannelEntries channelSetup::parse(int channel, const QString &text)
{
    switch (channel) {
    case channels::rs485:
    case channels::rs232:
        return serialEntries(text, channel == channels::rs485);
    case channels::ieee488:
        return gpibEntries(text);
    default:
        return tcpEntries(text);
    }
}

} // namespace corvane
