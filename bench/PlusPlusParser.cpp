// SPDX-License-Identifier: GPL-3.0-or-later
#include "bench/PlusPlusParser.h"

#include "bench/LineReader.h"

#include <utility>

namespace corvane::bench {

std::vector<PlusPlusLine> PlusPlusParser::feed(const QByteArray &bytes)
{
    constexpr char escape = '\x1b';
    std::vector<PlusPlusLine> lines;
    for (const char c : bytes) {
        if (std::exchange(m_escape, false)) {
            take(c, true);
        } else if (c == escape) {
            m_escape = true;
        } else if (c != '\r' && c != '\n') {
            take(c, false);
        } else {
            const bool command = std::exchange(m_leadingPluses, 0) == 2;
            const QByteArray text = std::exchange(m_text, {});
            if (!text.isEmpty() && text.size() <= LineReader::longest)
                lines.push_back({command, command ? text.sliced(2) : text});
        }
    }
    return lines;
}

void PlusPlusParser::take(char c, bool escaped)
{
    if (m_text.size() < 2 && c == '+' && !escaped && m_leadingPluses == m_text.size())
        ++m_leadingPluses;
    if (m_text.size() <= LineReader::longest)
        m_text.append(c);
}

} // namespace corvane::bench
