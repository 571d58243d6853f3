// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/traffic/TrafficFilter.h"

#include "core/traffic/TrafficText.h"

#include <algorithm>

namespace corvane {

namespace {

/// The small letter of each character of Latin-1.
const std::array<char, 256> &smallLetters()
{
    static const auto table = [] {
        std::array<char, 256> letters{};
        for (std::size_t code = 0; code < letters.size(); ++code) {
            const QChar small = QChar(static_cast<char16_t>(code)).toLower();
            letters[code] = static_cast<char>(small.unicode());
        }
        return letters;
    }();
    return table;
}

char small(char c)
{
    return smallLetters()[static_cast<unsigned char>(c)];
}

} // namespace

TrafficSearch::TrafficSearch(const QString &text)
    : m_text(text)
    , m_bytes(trafficText::bytesOf(text))
{
    if (m_bytes)
        std::ranges::transform(*m_bytes, m_bytes->begin(), small);
}

bool TrafficSearch::isIn(const TrafficEvent &event) const
{
    if (m_text.isEmpty())
        return true;
    if (!event.isBytes())
        return trafficText::visible(event.text()).contains(m_text, Qt::CaseInsensitive);
    return m_bytes && !std::ranges::search(event.content, *m_bytes, {}, small).empty();
}

bool TrafficFilter::takes(const TrafficEvent &event) const
{
    const bool ofKind = event.kind == TrafficKind::Sent       ? sent
                        : event.kind == TrafficKind::Received ? received
                                                              : others;
    return ofKind && channels.at(static_cast<std::size_t>(event.channel)) && search.isIn(event);
}

} // namespace corvane
