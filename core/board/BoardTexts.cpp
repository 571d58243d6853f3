// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/board/BoardTexts.h"

namespace corvane::boardTexts {

QString channelList(const QList<int> &channels)
{
    QStringList ranges;
    for (qsizetype first = 0, last = 0; first < channels.size(); first = ++last) {
        while (last + 1 < channels.size() && channels[last + 1] == channels[last] + 1)
            ++last;
        const QString from = QString::number(channels[first]);
        if (last > first + 1)
            ranges << u"%1 to %2"_s.arg(from).arg(channels[last]);
        else if (last > first)
            ranges << from << QString::number(channels[last]);
        else
            ranges << from;
    }
    return (channels.size() == 1 ? u"channel "_s : u"channels "_s) + ranges.join(u", "_s);
}

QString progress(const QString &place, std::optional<int> leftMs)
{
    constexpr int secondMs = 1000;
    QString text = place;
    if (leftMs)
        text += u", about %1 s left"_s.arg((*leftMs + secondMs - 1) / secondMs);
    text[0] = text[0].toUpper();
    return text;
}

} // namespace corvane::boardTexts
