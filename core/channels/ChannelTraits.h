// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "devices/Literals.h"

#include <QString>

#include <array>

namespace corvane {

/// The number of Channels; an index outside 0..channelCount-1 is ignored everywhere.
inline constexpr int channelCount = 5;

/// The Channels by their index.
namespace channels {
inline constexpr int rs485 = 0;
inline constexpr int rs232 = 1;
inline constexpr int ieee488 = 2;
inline constexpr int tcpIp1 = 3;
inline constexpr int tcpIp2 = 4;
} // namespace channels

[[nodiscard]] constexpr bool isChannel(int index)
{
    return index >= 0 && index < channelCount;
}

/// What distinguishes the Channels. Everything else is the same for all, or their transport's.
struct ChannelTraits
{
    int index;
    /// The title of its tab, by which messages call it.
    QString caption;
    /// Its name on the command line.
    QString option;
    /// What a send on the closed Channel is answered with; empty: it has no closed state.
    QString notConnected = {};
    /// Serial: the settings at start.
    QString settings = {};
    /// Serial: the device's address goes in front of every command.
    bool isAddressed = false;
    /// TCP: the newest piece of a reply stands alone in the box.
    bool showsNewestAlone = false;
    /// TCP: the pieces of a command between ";" go out one reply apart.
    bool sendsPieces = false;
    /// The traffic log takes its replies.
    bool isLogged = false;
    /// Its list runs step at the loop period; else at the interval they start with.
    bool listFollowsLoop = true;

    [[nodiscard]] bool hasClosedState() const { return !notConnected.isEmpty(); }
};

/// The table of the Channels. A Channel more is a row here.
[[nodiscard]] const std::array<ChannelTraits, channelCount> &channelTraits();

/// What messages call the Channel; its index is 0..channelCount-1.
[[nodiscard]] inline const QString &channelCaption(int index)
{
    return channelTraits().at(static_cast<std::size_t>(index)).caption;
}

} // namespace corvane
