#pragma once

namespace corvane {

struct CommandLine;

/// The one function of the module with the windows, by its name in it. The program loads the module
/// when a window is wanted, so that a run without one loads no widget.
inline constexpr auto windowFunction = "corvaneWindow";

/// Shows the window and returns the exit code when it has closed; what makes the start fail is
/// thrown as PlatformError.
using WindowFunction = int (*)(const CommandLine &line, int &argc, char **argv);

} // namespace corvane
