// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "bench/Recording.h"

#include <functional>

namespace corvane::bench {

/// Answers as a recorded device did: the same requests get the recorded replies in order, and after
/// the last one anew from the first. It keeps silent where the device did, and to requests that
/// were not recorded.
class ReplayDevice : public Responder
{
public:
    enum class Pace {
        Recorded,
        Fast, ///< each reply at once and whole; what came unasked after it in its time
    };
    /// Is told each request that was not recorded.
    using Listener = std::function<void(const QByteArray &request)>;

    ReplayDevice(RecordedDevice recorded, Pace pace, Listener unknown);

    Pieces respond(const QByteArray &line) override;
    /// What the device sent unasked after its first connection, its second and so on; then nothing.
    Pieces greet() override;
    /// Begins anew with the first replies.
    void rewind() { m_next.clear(); }
    [[nodiscard]] const RecordedDevice &recorded() const { return m_recorded; }

private:
    [[nodiscard]] Pieces paced(const Pieces &pieces) const;

    const RecordedDevice m_recorded;
    const Pace m_pace;
    const Listener m_unknown;
    /// By request, the number of its next reply.
    QHash<QByteArray, size_t> m_next;
    size_t m_greetings = 0;
};

} // namespace corvane::bench
