// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/channels/ChannelUsers.h"

#include <QMap>

namespace corvane {

namespace {

unsigned bit(ChannelUse use)
{
    return 1U << static_cast<unsigned>(use);
}

using Use = ChannelUse;

/// Who is in the way of whom, in the order in which they are told.
const QMap<Use, QList<Use>> inTheWay = {
    {Use::Send, {Use::Board, Use::Search}},
    {Use::Search, {Use::List, Use::Loop, Use::Reply, Use::Board}},
    {Use::Board, {Use::List, Use::Loop, Use::Search, Use::Reply}},
};

const QMap<Use, QString> texts = {
    {Use::Loop, u"its Loop box is checked.  Uncheck it and try again."_s},
    {Use::Reply, u"the reply to its last command is still to be read.  Try again."_s},
    {Use::List, u"a command list is running.  Stop it and try again."_s},
    {Use::Search, u"the GPIB search is running.  Stop it and try again."_s},
    {Use::Board, u"the VXM250E window is using it.  Wait until it has finished, or "
                 "cancel it there, and try again."_s},
};

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
    for (const ChannelUse use : inTheWay.value(wanted)) {
        if (isUsed(channel, use))
            return told(channel, use);
    }
    return {};
}

QString ChannelUsers::told(int channel, ChannelUse use)
{
    return u"The %1 Channel is in use: %2"_s.arg(channelCaption(channel), texts.value(use));
}

} // namespace corvane
