#include "core/board/BoardTexts.h"

namespace corvane::boardTexts {

namespace {

QString channelName(int channel)
{
    switch (channel) {
    case channels::rs232:
        return QStringLiteral("RS-232");
    case channels::ieee488:
        return QStringLiteral("IEEE 488");
    default:
        return QStringLiteral("TCP/IP-1");
    }
}

QString useName(ChannelUse use)
{
    switch (use) {
    case ChannelUse::List:
        return QStringLiteral("a command list is running.  Stop it and try again.");
    case ChannelUse::Loop:
        return QStringLiteral("its Loop box is checked.  Uncheck it and try again.");
    case ChannelUse::Search:
        return QStringLiteral("the GPIB search is running.  Stop it and try again.");
    case ChannelUse::Reply:
        return QStringLiteral("the reply to its last command is still to be read.  Try again.");
    case ChannelUse::Free:
        break;
    }
    return {};
}

} // namespace

QString channelInUse(int channel, ChannelUse use)
{
    return QStringLiteral("The %1 Channel is in use: %2").arg(channelName(channel), useName(use));
}

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
