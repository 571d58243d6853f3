// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <memory>

namespace corvane {

/// Turns a request to end the process (SIGINT, SIGTERM, SIGHUP; console events on Windows) into a
/// call in the event loop, for as long as the object lives. Objects nest: the newest one is called.
/// A hang-up that the program was started to ignore stays ignored.
class StopSignal
{
public:
    explicit StopSignal(std::function<void()> stop);
    ~StopSignal();
    /// Until the first object stands, such a request prints the words (a literal) on standard error
    /// and ends the process with exit code 2.
    static void endBeforeLoop(const char *words);
    StopSignal(const StopSignal &) = delete;
    StopSignal &operator=(const StopSignal &) = delete;

private:
    class Private;
    std::unique_ptr<Private> d;
};

} // namespace corvane
