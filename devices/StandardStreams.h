// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

/// The three standard streams, before anything is opened. Free of Qt, so that it compiles and runs
/// alone on every system.
namespace corvane::standardStreams {

/// Makes them safe to use; the first thing that a program does. A stream that was closed is held,
/// so that no port and no socket gets its number and with it what is printed. A reader of standard
/// output that goes away is a failed write, not the end of the program. On Windows a program that
/// opens no console of its own prints to the one it was started from.
void prepare();

/// False when nothing that is printed can arrive, as standard output was closed at the start.
bool canPrint();

} // namespace corvane::standardStreams
