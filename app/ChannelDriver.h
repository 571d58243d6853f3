// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <optional>

namespace corvane {
class ChannelSession;
class WaitGroup;
} // namespace corvane

/// Works a Channel from code and waits for what comes of it.
namespace corvane::channelDriver {

/// Opens the Channel and waits until it is open; false when it is not within the time. A message
/// box has told then why, unless the time is over.
bool open(ChannelSession &session, WaitGroup &waits, int patienceMs);

/// Sends the command and waits for the whole reply; nothing when none came within the time.
std::optional<QString> ask(ChannelSession &session, WaitGroup &waits, const QString &command,
                           int patienceMs);

} // namespace corvane::channelDriver
