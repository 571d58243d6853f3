// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "bench/Responder.h"

#include <optional>

namespace corvane::bench {

/// A simulated instrument: takes one command line and returns its reply, which goes out at once.
class BenchDevice : public Responder
{
public:
    /// The reply to one command line, both without their line end. Nothing: the device is silent.
    virtual std::optional<QByteArray> answer(const QByteArray &line) = 0;

    /// The reply, ended by CR LF.
    Pieces respond(const QByteArray &line) final
    {
        const auto reply = answer(line);
        return reply ? Pieces{{0, *reply + "\r\n", true}} : Pieces{};
    }
};

} // namespace corvane::bench
