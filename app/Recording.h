// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/traffic/TrafficWriter.h"

#include <memory>

class QTextStream;

namespace corvane {

struct CommandLine;

/// Begins the recording that --record asks for; null without it. Its end before its time is said in
/// the messages. Throws PlatformError when it, or another result of the run, cannot be written
/// where it is to go. All that is given must outlive it.
std::unique_ptr<TrafficWriter> startRecording(const CommandLine &line, TrafficRecorder &recorder,
                                              QTextStream &out, QTextStream &messages);
/// Ends it. False when not all of it was written.
bool finishRecording(TrafficWriter *recording);

} // namespace corvane
