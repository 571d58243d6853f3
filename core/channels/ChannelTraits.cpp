// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/channels/ChannelTraits.h"

namespace corvane {

const std::array<ChannelTraits, channelCount> &channelTraits()
{
    static const std::array<ChannelTraits, channelCount> table = {
        ChannelTraits{
            .index = channels::rs485,
            .caption = u"RS-485"_s,
            .option = u"rs485"_s,
            .notConnected = u"The RS 485 port is not connected.  Please connect and try again."_s,
            .settings = u"9600,N,8,1"_s,
            .isAddressed = true,
        },
        ChannelTraits{
            .index = channels::rs232,
            .caption = u"RS-232"_s,
            .option = u"rs232"_s,
            .notConnected = u"The RS 232 port is not connected.  Please connect and try again."_s,
            .settings = u"19200,N,8,1"_s,
        },
        ChannelTraits{
            .index = channels::ieee488,
            .caption = u"IEEE 488"_s,
            .option = u"gpib"_s,
            .listFollowsLoop = false,
        },
        ChannelTraits{
            .index = channels::tcpIp1,
            .caption = u"TCP/IP-1"_s,
            .option = u"tcp1"_s,
            .notConnected = u"TCP/IP1 is not connected.  Please connect and try again."_s,
            .showsNewestAlone = true,
            .isLogged = true,
        },
        ChannelTraits{
            .index = channels::tcpIp2,
            .caption = u"TCP/IP-2"_s,
            .option = u"tcp2"_s,
            .notConnected = u"TCP/IP2 is not connected.  Please connect and try again."_s,
            .sendsPieces = true,
            .isLogged = true,
        },
    };
    return table;
}

} // namespace corvane
