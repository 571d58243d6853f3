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
            ranges << QStringLiteral("%1 to %2").arg(from).arg(channels[last]);
        else if (last > first)
            ranges << from << QString::number(channels[last]);
        else
            ranges << from;
    }
    return (channels.size() == 1 ? QStringLiteral("channel ") : QStringLiteral("channels ")) +
           ranges.join(QStringLiteral(", "));
}

QString progress(const QString &place, std::optional<int> leftMs)
{
    constexpr int secondMs = 1000;
    QString text = place;
    if (leftMs)
        text += QStringLiteral(", about %1 s left").arg((*leftMs + secondMs - 1) / secondMs);
    text[0] = text[0].toUpper();
    return text;
}

} // namespace corvane::boardTexts
