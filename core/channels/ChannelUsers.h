// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/channels/ChannelTraits.h"

#include <QString>

#include <array>

namespace corvane {

/// What a Channel is used for, one at a time or side by side. Several uses of the same kind do not
/// occur.
enum class ChannelUse {
    Send,   ///< a command, by hand, of the loop or of a list; not claimed, as it ends at once
    Loop,   ///< its command is repeated
    Reply,  ///< the reply to its last command is still to be read
    List,   ///< a command list runs over it
    Search, ///< the GPIB search runs over it
    Board   ///< an operation of the board window exchanges over it
};

/// Who uses a Channel now, and who has to wait for whom: the only home of these rules.
///
///     wants    has to wait while it is used for
///     Send     Board, Search
///     Search   List, Loop, Reply, Board
///     Board    List, Loop, Search, Reply
class ChannelUsers
{
public:
    /// Claims the Channel for a use, or releases it. A claim is never refused: ask refusal before.
    void claim(int channel, ChannelUse use, bool on = true);
    void release(int channel, ChannelUse use) { claim(channel, use, false); }
    [[nodiscard]] bool isUsed(int channel, ChannelUse use) const;

    /// What is said when the Channel is used so, and what to do.
    [[nodiscard]] static QString told(int channel, ChannelUse use);
    /// Why the Channel cannot be used for `wanted` now, and what to do; empty when it can.
    [[nodiscard]] QString refusal(int channel, ChannelUse wanted) const;

private:
    std::array<unsigned, channelCount> m_uses{};
};

} // namespace corvane
