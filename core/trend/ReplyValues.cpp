// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/trend/ReplyValues.h"

#include "core/channels/ChannelTraits.h"
#include "core/text/LineEnds.h"
#include "core/text/Numbers.h"

#include <QList>

#include <algorithm>

namespace corvane::replyValues {

namespace {

/// Longer ones are told apart by their beginnings.
constexpr qsizetype longestCommand = 200;
constexpr qsizetype longestUnit = 8;

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

/// The two digits of "xNNy" at the start, or nothing.
QByteArrayView addressIn(QByteArrayView text, char before, char after)
{
    const bool fits = text.size() >= 4 && text[0] == before && isDigit(text[1]) &&
                      isDigit(text[2]) && text[3] == after;
    return fits ? text.sliced(1, 2) : QByteArrayView();
}

/// The first line that is not blank, from its first character on.
QByteArrayView firstLine(QByteArrayView reply)
{
    const QByteArrayView begun = reply.sliced(
        std::ranges::find_if(reply, [](char c) { return static_cast<uchar>(c) > ' '; }) -
        reply.begin());
    return begun.first(std::ranges::find_if(begun, lineEnds::isOne) - begun.begin());
}

bool isUnit(QStringView text)
{
    constexpr QStringView signs = u"%\u00b0\u00b5";
    return !text.isEmpty() && text.size() <= longestUnit &&
           (text.front().isLetter() || signs.contains(text.front())) &&
           std::ranges::none_of(text, [](QChar c) { return c.isSpace() || !c.isPrint(); });
}

/// The numbers among the fields; one with anything but a unit behind it is a date or a name.
std::vector<Value> fieldValues(QStringView line)
{
    std::vector<Value> found;
    int field = 0;
    for (const QStringView each : line.split(u',')) {
        ++field;
        const auto number = numbers::split(each);
        if (!number)
            continue;
        const QStringView rest = number->rest.trimmed();
        if (rest.isEmpty() || isUnit(rest))
            found.push_back({field, number->value, rest.toString()});
    }
    return found;
}

} // namespace

Command command(int channel, QByteArrayView sent)
{
    const QByteArrayView address =
        isChannel(channel) && channelTraits().at(static_cast<size_t>(channel)).isAddressed
            ? addressIn(sent, '>', ' ')
            : QByteArrayView();
    if (!address.isEmpty())
        sent = sent.sliced(4);
    const QByteArrayView shown = sent.trimmed();
    QString text = QString::fromLatin1(shown.first(std::min(shown.size(), longestCommand)));
    std::ranges::replace_if(
        text, [](QChar c) { return !c.isPrint(); }, u' ');
    return {QString::fromLatin1(address), text.simplified()};
}

std::vector<Value> values(QByteArrayView reply)
{
    QByteArrayView first = firstLine(reply);
    if (!addressIn(first, '<', ':').isEmpty())
        first = first.sliced(4);
    const QString line = QString::fromLatin1(first);
    if (line.contains(u','))
        return fieldValues(line);
    const auto number = numbers::split(line);
    if (!number)
        return {};
    const QStringView rest = number->rest.trimmed();
    return {{0, number->value, isUnit(rest) ? rest.toString() : QString()}};
}

bool isComplete(QByteArrayView reply)
{
    const QByteArrayView line = firstLine(reply);
    return !line.isEmpty() && line.end() != reply.end();
}

} // namespace corvane::replyValues
