#include "core/channels/ChannelUsers.h"

#include <initializer_list>

namespace corvane {

namespace {

unsigned bit(ChannelUse use)
{
    return 1U << static_cast<unsigned>(use);
}

/// In the order in which they are told.
std::initializer_list<ChannelUse> inTheWayOf(ChannelUse wanted)
{
    using Use = ChannelUse;
    static constexpr std::initializer_list<Use> ofSend = {Use::Board, Use::Search};
    static constexpr std::initializer_list<Use> ofSearch = {Use::List, Use::Loop, Use::Reply,
                                                            Use::Board};
    static constexpr std::initializer_list<Use> ofBoard = {Use::List, Use::Loop, Use::Search,
                                                           Use::Reply};
    switch (wanted) {
    case Use::Search:
        return ofSearch;
    case Use::Board:
        return ofBoard;
    default:
        return ofSend;
    }
}

QString textOf(ChannelUse use)
{
    switch (use) {
    case ChannelUse::Loop:
        return u"its Loop box is checked.  Uncheck it and try again."_s;
    case ChannelUse::Reply:
        return u"the reply to its last command is still to be read.  Try again."_s;
    case ChannelUse::List:
        return u"a command list is running.  Stop it and try again."_s;
    case ChannelUse::Search:
        return u"the GPIB search is running.  Stop it and try again."_s;
    case ChannelUse::Board:
        return u"the VXM250E window is using it.  Wait until it has finished, or "
               "cancel it there, and try again."_s;
    case ChannelUse::Send:
        break;
    }
    return {};
}

} // namespace

void ChannelUsers::claim(int channel, ChannelUse use, bool on)
{
    unsigned &uses = m_uses.at(static_cast<std::size_t>(channel));
    uses = on ? uses | bit(use) : uses & ~bit(use);
}

bool ChannelUsers::isUsed(int channel, ChannelUse use) const
{
    return (m_uses.at(static_cast<std::size_t>(channel)) & bit(use)) != 0;
}

QString ChannelUsers::refusal(int channel, ChannelUse wanted) const
{
    for (const ChannelUse use : inTheWayOf(wanted)) {
        if (isUsed(channel, use))
            return told(channel, use);
    }
    return {};
}

QString ChannelUsers::told(int channel, ChannelUse use)
{
    return u"The %1 Channel is in use: %2"_s.arg(channelCaption(channel), textOf(use));
}

} // namespace corvane
