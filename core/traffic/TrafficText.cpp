// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/traffic/TrafficText.h"

#include "devices/Literals.h"

#include <algorithm>
#include <array>

namespace corvane {

namespace {

/// In the order of TrafficKind.
constexpr std::array kinds{"sent"_L1,      "received"_L1, "connected"_L1, "disconnected"_L1,
                           "addressed"_L1, "fault"_L1,    "time-out"_L1};

constexpr std::array controls{"NUL"_L1, "SOH"_L1, "STX"_L1, "ETX"_L1, "EOT"_L1, "ENQ"_L1, "ACK"_L1,
                              "BEL"_L1, "BS"_L1,  "HT"_L1,  "LF"_L1,  "VT"_L1,  "FF"_L1,  "CR"_L1,
                              "SO"_L1,  "SI"_L1,  "DLE"_L1, "DC1"_L1, "DC2"_L1, "DC3"_L1, "DC4"_L1,
                              "NAK"_L1, "SYN"_L1, "ETB"_L1, "CAN"_L1, "EM"_L1,  "SUB"_L1, "ESC"_L1,
                              "FS"_L1,  "GS"_L1,  "RS"_L1,  "US"_L1};

/// A time of the recording on the wall clock, to the millisecond, and the digits behind.
struct Wall
{
    Wall(const QDateTime &began, qint64 time)
    {
        const qint64 since = began.toMSecsSinceEpoch() * 1000 + time;
        at = QDateTime::fromMSecsSinceEpoch(since / 1000);
        microseconds = u"%1"_s.arg(since % 1000, 3, 10, QLatin1Char('0'));
    }

    QDateTime at;
    QString microseconds;
};

/// The byte of what stands between "<" and ">"; nothing when that names none.
std::optional<char> byteOf(QStringView name)
{
    const auto found = std::ranges::find_if(controls, [name](QLatin1StringView control) {
        return name.compare(control, Qt::CaseInsensitive) == 0;
    });
    if (found != controls.end())
        return static_cast<char>(found - controls.begin());
    bool ok = false;
    const uint code = name.toUInt(&ok, 16);
    return ok && name.size() == 2 ? std::optional(static_cast<char>(code)) : std::nullopt;
}

} // namespace

QString trafficText::kindOf(TrafficKind kind)
{
    return kinds.at(static_cast<std::size_t>(kind));
}

QString trafficText::visible(const QString &text)
{
    QString result;
    result.reserve(text.size());
    for (const QChar c : text) {
        const auto code = static_cast<std::size_t>(c.unicode());
        if (code < controls.size())
            result += u'<' + controls.at(code) + u'>';
        else if (c.isPrint() || c.isSurrogate())
            result += c;
        else
            result += u"<%1>"_s.arg(code, 2, 16, QLatin1Char('0')).toUpper();
    }
    return result;
}

QString trafficText::contentOf(const TrafficEvent &event, Style style, qsizetype most)
{
    TrafficEvent shown = event;
    const bool isCut = event.content.size() > most;
    shown.content = event.content.first(std::min(event.content.size(), most));
    const QString rest = isCut ? u" ... (%1 bytes)"_s.arg(event.content.size()) : QString();
    QString text = visible(shown.text()) + rest;
    if (!event.isBytes() || style == Style::Text)
        return text;
    const QString numbers =
        QString::fromLatin1(shown.content.toByteArray().toHex(' ').toUpper()) + rest;
    return style == Style::Hexadecimal ? numbers : text + u"  |  "_s + numbers;
}

QString trafficText::clockOf(const QDateTime &began, qint64 time)
{
    const Wall wall(began, time);
    return wall.at.toString(u"HH:mm:ss.zzz"_s) + wall.microseconds;
}

QString trafficText::stampOf(const QDateTime &began, qint64 time)
{
    const Wall wall(began, time);
    QString stamp = wall.at.toOffsetFromUtc(wall.at.offsetFromUtc()).toString(Qt::ISODateWithMs);
    return stamp.insert(QStringView(u"2026-11-25T15:55:00.123").size(), wall.microseconds);
}

QString trafficText::secondsOf(qint64 microseconds)
{
    constexpr qint64 million = 1'000'000;
    return u"%1.%2"_s.arg(microseconds / million)
        .arg(microseconds % million, 6, 10, QLatin1Char('0'));
}

std::optional<QByteArray> trafficText::bytesOf(const QString &text)
{
    QByteArray bytes;
    for (qsizetype at = 0; at < text.size(); ++at) {
        const qsizetype end = text.at(at) == u'<' ? text.indexOf(u'>', at) : -1;
        const auto named =
            end < 0 ? std::nullopt : byteOf(QStringView(text).sliced(at + 1, end - at - 1));
        if (!named && text.at(at).unicode() > 0xFF)
            return std::nullopt;
        bytes += named ? *named : text.at(at).toLatin1();
        at = named ? end : at;
    }
    return bytes;
}

} // namespace corvane
