// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/traffic/TrafficLine.h"

#include "core/channels/ChannelTraits.h"
#include "core/text/ProductInfo.h"

#include <array>

namespace corvane {

namespace {

struct Words
{
    const char *event;
    const char *direction; ///< null: it has none
};

/// In the order of TrafficKind.
constexpr std::array words{Words{"data", "sent"},       Words{"data", "received"},
                           Words{"connected", nullptr}, Words{"disconnected", nullptr},
                           Words{"addressed", nullptr}, Words{"fault", nullptr},
                           Words{"timeout", nullptr}};

/// Printable characters stand as they are, all others by their number.
QByteArray quoted(const QString &text)
{
    QString result;
    result.reserve(text.size() + 2);
    for (const QChar c : text) {
        if (c == u'"' || c == u'\\')
            result += u'\\';
        if (c.isPrint() || c.isSurrogate())
            result += c;
        else
            result += u"\\u%1"_s.arg(c.unicode(), 4, 16, QLatin1Char('0'));
    }
    return '"' + result.toUtf8() + '"';
}

QByteArray begun(qint64 time)
{
    return "{\"time\":" + QByteArray::number(time);
}

/// A name is one of ours and needs no escaping.
QByteArray member(const char *name, const QByteArray &value)
{
    return QByteArray(",\"") + name + "\":" + value;
}

} // namespace

QByteArray trafficLine::ofStart(const QDateTime &wall)
{
    const QString program =
        QString::fromUtf16(productInfo::title) + u' ' + QString::fromUtf16(productInfo::version);
    return begun(0) + member("event", "\"start\"") + member("format", "\"corvane-traffic\"") +
           member("version", "1") +
           member("wall", quoted(wall.toUTC().toString(u"yyyy-MM-ddTHH:mm:ss.zzz'Z'"_s))) +
           member("program", quoted(program)) + "}\n";
}

QByteArray trafficLine::ofEvent(const TrafficEvent &event)
{
    const auto &[name, direction] = words.at(static_cast<std::size_t>(event.kind));
    QByteArray line = begun(event.time) + member("channel", quoted(channelCaption(event.channel))) +
                      member("event", quoted(QString::fromLatin1(name)));
    if (direction)
        line += member("direction", quoted(QString::fromLatin1(direction)));
    if (event.isBytes() || !event.content.isEmpty())
        line += member(event.isBytes() ? "bytes" : "text", quoted(event.text()));
    return line + "}\n";
}

QByteArray trafficLine::ofLost(qint64 time, quint64 count)
{
    return begun(time) + member("event", "\"lost\"") + member("count", QByteArray::number(count)) +
           "}\n";
}

} // namespace corvane
