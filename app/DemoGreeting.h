// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class QTextStream;

namespace corvane {

class ChannelSet;

/// What `corvane --demo` does without a display: connects the Channels, sends "*IDN?" and
/// "syst:err?" on each and prints what was sent and what came back. Returns the exit code: 0 only
/// when every Channel answered both.
int greetTheBench(ChannelSet &channels, QTextStream &out);

} // namespace corvane
