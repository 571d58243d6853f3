// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/channels/ChannelSession.h"

/// A Channel's entries as one text of the command line.
namespace corvane::channelSetup {

/// The option that sets the Channel up: "tcp1"; "gpib-address" for the GPIB, where "gpib" chooses
/// the adapters.
QString optionOf(int channel);
/// Reads the text. Throws PlatformError that says what is wrong with it.
ChannelEntries parse(int channel, const QString &text);

} // namespace corvane::channelSetup
