// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "devices/BlockingBus.h"
#include "devices/GpibAdapter.h"
#include "devices/LibraryWorker.h"

namespace corvane {

/// A board that an installed library serves. The library's calls block, so they run on a worker,
/// and the caller waits in the event loop with a time limit of its own.
class LibraryAdapter : public GpibAdapter
{
public:
    explicit LibraryAdapter(std::shared_ptr<BlockingBus> bus);
    ~LibraryAdapter() override;

    [[nodiscard]] QString description() const override { return m_bus->description(); }
    QString version(WaitGroup &waits) override;
    void open(const GpibAddress &address, WaitGroup &waits) override;
    void clear(const GpibAddress &address, WaitGroup &waits) override;
    void write(const GpibAddress &address, const QByteArray &bytes, int timeoutMs,
               WaitGroup &waits) override;
    QByteArray read(const GpibAddress &address, int timeoutMs, WaitGroup &waits) override;

private:
    void require(const std::function<void()> &work, int limitMs, WaitGroup &waits);

    std::shared_ptr<BlockingBus> m_bus; ///< shared with a call that is stuck
    LibraryWorker m_worker;
};

} // namespace corvane
