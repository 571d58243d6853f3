// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/DemoGreeting.h"

#include "app/ChannelDriver.h"
#include "core/channels/ChannelSet.h"
#include "core/channels/ChannelTexts.h"
#include "core/text/PrintableText.h"

#include <QTextStream>

namespace corvane {

namespace {

constexpr int patienceMs = 10'000;
constexpr int notAll = 2;

} // namespace

int greetTheBench(ChannelSet &channels, QTextStream &out)
{
    bool allAnswered = true;
    for (ChannelSession *each : channels.all()) {
        const QString caption = each->caption().leftJustified(10);
        const bool connected = channelDriver::open(*each, channels.waits(), patienceMs);
        if (channels.waits().isClosed())
            return notAll; // stopped: nothing can be said of the rest
        if (!connected) {
            out << caption << "not connected" << Qt::endl;
            allAnswered = false;
            continue;
        }
        for (const QString &command : {channelTexts::idnCommand, channelTexts::systErrCommand}) {
            const auto reply = channelDriver::ask(*each, channels.waits(), command, patienceMs);
            if (channels.waits().isClosed())
                return notAll;
            allAnswered = allAnswered && reply;
            out << caption << command.leftJustified(12)
                << (reply ? printableText::field(*reply) : u"no answer"_s) << Qt::endl;
        }
    }
    return allAnswered ? 0 : notAll;
}

} // namespace corvane
