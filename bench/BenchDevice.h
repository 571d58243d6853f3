#pragma once

#include <QByteArray>

#include <optional>

namespace corvane::bench {

/// A simulated instrument: takes one command line and returns its reply. It knows neither the
/// transport that carries the line nor the faults that spoil the reply.
class BenchDevice
{
public:
    virtual ~BenchDevice() = default;

    /// The reply to one command line, both without their line end. Nothing: the device is silent.
    virtual std::optional<QByteArray> answer(const QByteArray &line) = 0;

protected:
    BenchDevice() = default;
    Q_DISABLE_COPY_MOVE(BenchDevice)
};

} // namespace corvane::bench
