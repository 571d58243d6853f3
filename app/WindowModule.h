// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "devices/ProgramModule.h"

namespace corvane {

struct CommandLine;

/// The one function of the module with the windows. The program loads the module
/// when a window is wanted, so that a run without one loads no widget.
inline constexpr programModule::Function windowFunction{"corvane-window", "corvaneWindow"};

/// Shows the window and returns the exit code when it has closed; what makes the start fail is
/// thrown as PlatformError.
using WindowFunction = int (*)(const CommandLine &line, int &argc, char **argv);

} // namespace corvane
