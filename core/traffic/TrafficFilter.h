// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/channels/ChannelTraits.h"
#include "core/traffic/TrafficEvent.h"

#include <QByteArray>

#include <optional>

namespace corvane {

/// A text that is looked for in events, whether its letters are large or small. Control characters
/// can be written as they are shown: "<CR>".
class TrafficSearch
{
public:
    TrafficSearch() = default;
    explicit TrafficSearch(const QString &text);

    /// An empty text is in every event.
    [[nodiscard]] bool isIn(const TrafficEvent &event) const;

    bool operator==(const TrafficSearch &other) const { return m_text == other.m_text; }

private:
    QString m_text;                    ///< for what is no bytes, as it is shown
    std::optional<QByteArray> m_bytes; ///< in small letters; none: no bytes are this text
};

/// Which events are shown.
struct TrafficFilter
{
    std::array<bool, channelCount> channels{true, true, true, true, true};
    bool sent = true;
    bool received = true;
    bool others = true; ///< connections, faults, time-outs
    TrafficSearch search;

    [[nodiscard]] bool takes(const TrafficEvent &event) const;
    [[nodiscard]] bool takesAll() const { return *this == TrafficFilter(); }

    bool operator==(const TrafficFilter &) const = default;
};

} // namespace corvane
