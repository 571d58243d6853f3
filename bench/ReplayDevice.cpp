// SPDX-License-Identifier: GPL-3.0-or-later
#include "bench/ReplayDevice.h"

#include <algorithm>
#include <utility>

namespace corvane::bench {

ReplayDevice::ReplayDevice(RecordedDevice recorded, Pace pace, Listener unknown)
    : m_recorded(std::move(recorded))
    , m_pace(pace)
    , m_unknown(std::move(unknown))
{
}

Pieces ReplayDevice::respond(const QByteArray &line)
{
    const auto found = m_recorded.replies.find(line);
    if (found == m_recorded.replies.end()) {
        m_unknown(line);
        return {};
    }
    size_t &next = m_next[line];
    const Pieces &reply = found->at(next);
    next = (next + 1) % found->size();
    return paced(reply);
}

Pieces ReplayDevice::greet()
{
    const size_t number = m_greetings++;
    return number < m_recorded.unasked.size() ? paced(m_recorded.unasked[number]) : Pieces{};
}

Pieces ReplayDevice::paced(const Pieces &pieces) const
{
    if (m_pace == Pace::Recorded || pieces.empty())
        return pieces;
    const auto follows =
        std::find_if(pieces.begin() + 1, pieces.end(), [](const TimedPiece &piece) {
            return piece.turn == TimedPiece::Turn::Unasked;
        });
    TimedPiece whole = pieces.front();
    int skippedMs = std::exchange(whole.afterMs, 0);
    for (auto piece = pieces.begin() + 1; piece != follows; ++piece) {
        whole.bytes += piece->bytes;
        whole.end = piece->end;
        skippedMs += piece->afterMs;
    }
    Pieces paced{whole};
    paced.insert(paced.end(), follows, pieces.end());
    if (paced.size() > 1)
        paced[1].afterMs += skippedMs; // from the request on, as before
    return paced;
}

} // namespace corvane::bench
