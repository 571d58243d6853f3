// SPDX-License-Identifier: GPL-3.0-or-later
#include "devices/DetachedCall.h"

#include "devices/PlatformError.h"

#include <mutex>
#include <system_error>
#include <thread>

namespace corvane {

/// What the two threads share; whichever ends last destroys it.
struct DetachedCall::Link
{
    std::mutex mutex;
    QObject *receiver; ///< null: nobody wants to know any more

    bool isWanted()
    {
        const std::lock_guard lock(mutex);
        return receiver != nullptr;
    }
};

void DetachedCall::start(Work work)
{
    forget();
    m_link = std::make_shared<Link>();
    m_link->receiver = &m_receiver;
    const auto run = [link = m_link, work = std::move(work)] {
        const Conclusion conclude = work();
        const std::lock_guard lock(link->mutex);
        if (!link->receiver)
            return;
        QMetaObject::invokeMethod(
            link->receiver,
            [link, conclude] {
                if (link->isWanted()) // forgotten after the work had ended
                    conclude();
            },
            Qt::QueuedConnection);
    };
    try {
        std::thread(run).detach();
    } catch (const std::system_error &fault) {
        throw PlatformError(
            u"no thread can be started: %1"_s.arg(QString::fromLocal8Bit(fault.what())));
    }
}

void DetachedCall::forget()
{
    if (!m_link)
        return;
    const std::lock_guard lock(m_link->mutex);
    m_link->receiver = nullptr;
}

} // namespace corvane
