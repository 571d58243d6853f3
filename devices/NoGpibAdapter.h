#pragma once

#include "devices/GpibAdapter.h"
#include "devices/PlatformError.h"

namespace corvane {

/// A board that nothing serves: every call says why and what to do.
class NoGpibAdapter : public GpibAdapter
{
public:
    explicit NoGpibAdapter(QString reason)
        : m_reason(std::move(reason))
    {
    }

    [[nodiscard]] QString description() const override { return u"no adapter"_s; }
    QString version(WaitGroup &) override { refuse(); }
    void open(const GpibAddress &, WaitGroup &) override { refuse(); }
    void clear(const GpibAddress &, WaitGroup &) override { refuse(); }
    void write(const GpibAddress &, const QByteArray &, int, WaitGroup &) override { refuse(); }
    QByteArray read(const GpibAddress &, int, WaitGroup &) override { refuse(); }

private:
    [[noreturn]] void refuse() const { throw PlatformError(m_reason); }

    QString m_reason;
};

} // namespace corvane
