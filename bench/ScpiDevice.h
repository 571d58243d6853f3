// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "bench/BenchDevice.h"

#include <deque>

namespace corvane::bench {

/// What all instruments of the bench have in common: several commands in a line, "*IDN?", "*CLS"
/// and the error queue behind "SYST:ERR?". The commands of its own are the subclass's.
class ScpiDevice : public BenchDevice
{
public:
    /// Runs the commands of the line, which semicolons outside double quotes separate; their
    /// replies are joined by semicolons.
    std::optional<QByteArray> answer(const QByteArray &line) override;

protected:
    using Reply = std::optional<QByteArray>;

    /// Whether a command that asks nothing, or that is refused, is answered all the same.
    enum class Acknowledge { No, Yes };

    explicit ScpiDevice(Acknowledge acknowledge)
        : m_acknowledge(acknowledge)
    {
    }

    /// The reply to "*IDN?".
    [[nodiscard]] virtual QByteArray identity() const = 0;
    /// One command of the device's own: its header and what follows the first blank, trimmed.
    virtual Reply execute(const QByteArray &header, const QByteArray &arguments) = 0;

    /// The reply to a command that was done.
    [[nodiscard]] Reply done() const;
    /// The reply to a command that was refused; the error joins the queue.
    Reply refuse(int code, const QByteArray &text);
    Reply refuseHeader() { return refuse(-113, "Undefined header"); }
    Reply refuseParameter() { return refuse(-108, "Parameter error"); }
    Reply refuseRange() { return refuse(-222, "Data out of range"); }
    void clearErrors() { m_errors.clear(); }

private:
    Reply run(const QByteArray &command);

    Acknowledge m_acknowledge;
    std::deque<QByteArray> m_errors;
};

} // namespace corvane::bench
