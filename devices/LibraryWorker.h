// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>

#include <functional>
#include <future>
#include <memory>
#include <optional>

namespace corvane {

class WaitGroup;

/// A thread beside the user interface's for the blocking calls of a GPIB library, one
/// after the other, while their caller waits in the event loop. A call that does not come back in
/// time is left to itself; until it does nothing else is called.
class LibraryWorker
{
public:
    /// Runs on the worker's thread. May throw PlatformError.
    using Job = std::function<QByteArray()>;

    LibraryWorker();
    /// Waits for a running job for at most 2 s; one that is stuck is left behind, with all it uses.
    ~LibraryWorker();
    Q_DISABLE_COPY_MOVE(LibraryWorker)

    /// Gives what the job returned or throws what it threw; nothing when it has not ended after
    /// `limitMs`, or the waits were closed. Waits for a job left before, for at most as long;
    /// throws PlatformError when that one is still stuck then.
    std::optional<QByteArray> call(Job job, int limitMs, WaitGroup &waits);

    /// Runs the job when the ones before have ended. Nobody need wait for it.
    std::future<QByteArray> post(Job job);

    [[nodiscard]] bool isBusy() const;

private:
    struct State;

    std::shared_ptr<State> m_state;
};

} // namespace corvane
