// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "devices/GpibAdapter.h"
#include "devices/GpibStream.h"
#include "devices/PlusPlusReply.h"

#include <memory>

namespace corvane {

/// A board that is a controller with the "++" command set. It connects at the first use and again
/// after a loss; the bytes travel through a stream. A controller that is not there, goes away or
/// falls silent is a fault that says so, at the latest a second after the time limit.
class PlusPlusAdapter : public GpibAdapter
{
public:
    /// `otherwise` ends the fault of a controller that cannot be reached: what else can be done.
    explicit PlusPlusAdapter(std::unique_ptr<GpibStream> stream, QString otherwise = {});
    ~PlusPlusAdapter() override;

    [[nodiscard]] QString description() const override;
    QString version(WaitGroup &waits) override;
    void open(const GpibAddress &address, WaitGroup &waits) override;
    void clear(const GpibAddress &address, WaitGroup &waits) override;
    void write(const GpibAddress &address, const QByteArray &bytes, int timeoutMs,
               WaitGroup &waits) override;
    QByteArray read(const GpibAddress &address, int timeoutMs, WaitGroup &waits) override;

private:
    bool ensureConnected(WaitGroup &waits);
    bool configure(WaitGroup &waits, int attempts);
    QByteArray askVersion(int attempts, int limitMs, WaitGroup &waits);
    QByteArray selecting(const GpibAddress &address);
    PlusPlusReply readSlice(int sliceMs, int leftMs, WaitGroup &waits,
                            PlusPlusReply::Verdict &verdict);
    void revive(WaitGroup &waits);
    void drop();
    [[noreturn]] void fail(const QString &what);

    std::unique_ptr<GpibStream> m_stream;
    QString m_otherwise;
    QByteArray m_version;  ///< the version text as it arrives; empty: not connected
    QByteArray m_selected; ///< the address command in force
    int m_readTimeoutMs = 0;
    bool m_marksWork = true;
};

} // namespace corvane
