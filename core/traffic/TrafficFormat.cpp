// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/traffic/TrafficFormat.h"

#include "core/channels/ChannelTraits.h"
#include "core/text/Csv.h"
#include "core/text/ProductInfo.h"
#include "core/traffic/TrafficText.h"

#include <QtEndian>

#include <limits>

namespace corvane {

namespace {

constexpr qsizetype all = std::numeric_limits<qsizetype>::max();

// Text

QByteArray nothing(const QDateTime &)
{
    return {};
}

QByteArray textLine(const QDateTime &began, const TrafficEvent &event)
{
    return u"%1  %2  %3  %4\n"_s
        .arg(trafficText::stampOf(began, event.time),
             channelCaption(event.channel).leftJustified(8),
             trafficText::kindOf(event.kind).leftJustified(12),
             trafficText::contentOf(event, trafficText::Style::Text, all))
        .toUtf8();
}

// Comma-separated values

QByteArray csvTitles(const QDateTime &)
{
    return "seconds,clock,channel,kind,text,hexadecimal\r\n";
}

QByteArray csvLine(const QDateTime &began, const TrafficEvent &event)
{
    using trafficText::Style;
    const QString numbers =
        event.isBytes() ? trafficText::contentOf(event, Style::Hexadecimal, all) : QString();
    const QStringList fields{trafficText::secondsOf(event.time),
                             trafficText::stampOf(began, event.time),
                             channelCaption(event.channel),
                             trafficText::kindOf(event.kind),
                             csv::cell(trafficText::contentOf(event, Style::Text, all)),
                             numbers};
    return fields.join(u',').toUtf8() + "\r\n";
}

// Packets: blocks of little-endian numbers, each padded to four bytes

namespace pcapng {

constexpr quint32 sectionHeader = 0x0A0D0D0A;
constexpr quint32 interfaceDescription = 1;
constexpr quint32 enhancedPacket = 6;
constexpr quint16 commentOption = 1;
constexpr quint16 nameOption = 2;
constexpr quint16 resolutionOption = 9;
constexpr quint16 flagsOption = 2;
constexpr quint16 programOption = 4;
constexpr quint16 userLink = 147; ///< bytes of a protocol of one's own

template <typename Number>
QByteArray number(Number value)
{
    QByteArray bytes(sizeof value, '\0');
    qToLittleEndian(value, bytes.data());
    return bytes;
}

QByteArray padded(QByteArrayView bytes)
{
    const qsizetype size = (bytes.size() + 3) / 4 * 4;
    return bytes.toByteArray().leftJustified(size, '\0');
}

QByteArray option(quint16 code, QByteArrayView value)
{
    return number(code) + number(static_cast<quint16>(value.size())) + padded(value);
}

QByteArray block(quint32 type, const QByteArray &body)
{
    const QByteArray size = number(static_cast<quint32>(body.size()) + 12);
    return number(type) + size + body + size;
}

QByteArray start(const QDateTime &)
{
    const QByteArray program = QString::fromUtf16(productInfo::title).toUtf8() + ' ' +
                               QString::fromUtf16(productInfo::version).toUtf8();
    QByteArray bytes = block(sectionHeader, number(quint32{0x1A2B3C4D}) + number(quint16{1}) +
                                                number(quint16{0}) + number(qint64{-1}) +
                                                option(programOption, program) + option(0, {}));
    for (const ChannelTraits &channel : channelTraits())
        bytes += block(interfaceDescription,
                       number(userLink) + number(quint16{0}) + number(quint32{0}) +
                           option(nameOption, channel.caption.toUtf8()) +
                           option(resolutionOption, QByteArray(1, '\6')) + option(0, {}));
    return bytes;
}

QByteArray packet(const QDateTime &began, const TrafficEvent &event)
{
    const auto time = static_cast<quint64>(began.toMSecsSinceEpoch() * 1000 + event.time);
    const QByteArrayView data = event.isBytes() ? event.content : QByteArrayView();
    QByteArray options;
    if (event.isBytes()) {
        const quint32 direction = event.kind == TrafficKind::Received ? 1 : 2;
        options = option(flagsOption, number(direction));
    } else {
        const QString comment = trafficText::kindOf(event.kind) + u' ' + event.text();
        options = option(commentOption, comment.trimmed().left(1000).toUtf8());
    }
    const QByteArray size = number(static_cast<quint32>(data.size()));
    return block(enhancedPacket, number(static_cast<quint32>(event.channel)) +
                                     number(static_cast<quint32>(time >> 32)) +
                                     number(static_cast<quint32>(time)) + size + size +
                                     padded(data) + options + option(0, {}));
}

} // namespace pcapng

} // namespace

TrafficFormat TrafficFormat::ofPath(const QString &path)
{
    if (path.endsWith(u".csv", Qt::CaseInsensitive))
        return {csvTitles, csvLine};
    if (path.endsWith(u".pcapng", Qt::CaseInsensitive))
        return {pcapng::start, pcapng::packet};
    return {nothing, textLine};
}

} // namespace corvane
