#include "core/channels/ChannelTraits.h"

namespace corvane {

const std::array<ChannelTraits, channelCount> &channelTraits()
{
    static const std::array<ChannelTraits, channelCount> table = {
        ChannelTraits{
            .index = channels::rs485,
            .caption = QStringLiteral("RS-485"),
            .option = QStringLiteral("rs485"),
            .notConnected =
                QStringLiteral("The RS 485 port is not connected.  Please connect and try again."),
            .settings = QStringLiteral("9600,N,8,1"),
            .isAddressed = true,
        },
        ChannelTraits{
            .index = channels::rs232,
            .caption = QStringLiteral("RS-232"),
            .option = QStringLiteral("rs232"),
            .notConnected =
                QStringLiteral("The RS 232 port is not connected.  Please connect and try again."),
            .settings = QStringLiteral("19200,N,8,1"),
        },
        ChannelTraits{
            .index = channels::ieee488,
            .caption = QStringLiteral("IEEE 488"),
            .option = QStringLiteral("gpib"),
            .listFollowsLoop = false,
        },
        ChannelTraits{
            .index = channels::tcpIp1,
            .caption = QStringLiteral("TCP/IP-1"),
            .option = QStringLiteral("tcp1"),
            .notConnected =
                QStringLiteral("TCP/IP1 is not connected.  Please connect and try again."),
            .showsNewestAlone = true,
            .isLogged = true,
        },
        ChannelTraits{
            .index = channels::tcpIp2,
            .caption = QStringLiteral("TCP/IP-2"),
            .option = QStringLiteral("tcp2"),
            .notConnected =
                QStringLiteral("TCP/IP2 is not connected.  Please connect and try again."),
            .sendsPieces = true,
            .isLogged = true,
        },
    };
    return table;
}

} // namespace corvane
