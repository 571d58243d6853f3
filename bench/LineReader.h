// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QList>

#include <utility>

namespace corvane::bench {

/// Cuts what arrives into command lines: each ends with CR or LF, empty ones are nothing, and one
/// that grows past a megabyte is dropped.
class LineReader
{
public:
    static constexpr qsizetype longest = 1 << 20;

    /// The lines that these bytes complete, without their line ends.
    QList<QByteArray> feed(const QByteArray &bytes)
    {
        QList<QByteArray> lines;
        for (const char c : bytes) {
            if (c == '\r' || c == '\n')
                lines.append(take());
            else if (m_line.size() <= longest)
                m_line.append(c);
        }
        lines.removeAll(QByteArray());
        return lines;
    }
    /// The line begun so far; the next one begins empty.
    QByteArray take()
    {
        const QByteArray line = std::exchange(m_line, {});
        return line.size() > longest ? QByteArray() : line;
    }

private:
    QByteArray m_line;
};

} // namespace corvane::bench
