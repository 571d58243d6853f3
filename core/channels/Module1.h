// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/channels/ChannelTraits.h"

#include <array>

namespace corvane {

/// The program's shared flags: one instance, made at start and handed on by reference.
struct Module1
{
    /// Wait count of the list engine, one a Channel. Set to 0, never read; kept so.
    std::array<qint16, channelCount> TransferWaitCount{};
    /// A reply has been delivered into a response box; the list engine clears and tests it.
    bool ResponseReady = false;
    /// Mirror of the GPIB Channel's loop box.
    bool GpibLoopEnabled = false;
    /// A list send, a list get is running.
    bool SendMode = false;
    bool GetMode = false;
    /// The run goes over the GPIB Channel.
    bool GpibTransfer = false;
    /// Grid row of the step last started; 0: none yet.
    int CurrentListRow = 0;
    /// The number of the list's kind: 0 chamber settings.
    int ListKind = 0;
    /// The GPIB search was asked to stop.
    bool SearchCancelled = false;

    /// A list send or get is running.
    [[nodiscard]] bool transferRunning() const { return SendMode || GetMode; }
};

} // namespace corvane
