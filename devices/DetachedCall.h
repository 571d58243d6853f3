// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>

#include <functional>
#include <memory>

namespace corvane {

/// One blocking call to the system at a time that nobody can cancel (asking a name server), on a
/// thread of its own. Nobody waits for the thread: a call that was forgotten, and one that is still
/// out when the program ends, is left to itself.
class DetachedCall
{
public:
    /// What runs in the caller's event loop when the work is done.
    using Conclusion = std::function<void()>;
    /// Runs on the thread. It must own all it uses, and throw nothing.
    using Work = std::function<Conclusion()>;

    DetachedCall() = default;
    ~DetachedCall() { forget(); }
    Q_DISABLE_COPY_MOVE(DetachedCall)

    /// Starts the work; an earlier one is forgotten. Throws PlatformError when there are no more
    /// threads.
    void start(Work work);
    /// The running work's conclusion will not run.
    void forget();

private:
    struct Link;

    QObject m_receiver;
    std::shared_ptr<Link> m_link;
};

} // namespace corvane
