#include "board/BoardTexts.h"

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

} // namespace corvane::boardTexts
