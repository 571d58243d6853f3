// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/lists/LineReader.h"

#include "core/lists/ListTexts.h"
#include "core/text/LineEnds.h"

#include <QIODevice>

#include <algorithm>
#include <utility>

namespace corvane {

namespace {

constexpr qsizetype chunk = 1 << 18;

qsizetype lineLength(QByteArrayView rest, qsizetype from)
{
    const auto end = std::find_if(rest.begin() + from, rest.end(), lineEnds::isOne);
    return end == rest.end() ? -1 : end - rest.begin();
}

} // namespace

LineReader::LineReader(QIODevice &device, qsizetype maximumLine)
    : m_device(device)
    , m_maximumLine(maximumLine)
{
}

bool LineReader::readMore()
{
    m_buffer.remove(0, std::exchange(m_at, 0));
    const qsizetype old = m_buffer.size();
    m_buffer.resize(old + chunk);
    const qint64 count = m_device.read(m_buffer.data() + old, chunk);
    m_buffer.resize(old + std::max<qint64>(count, 0));
    if (count < 0)
        m_fault = m_device.errorString();
    return count > 0;
}

void LineReader::take(qsizetype length)
{
    m_line = QByteArrayView(m_buffer).sliced(m_at, length);
    m_at += length;
}

bool LineReader::next()
{
    qsizetype searched = 0;
    ++m_number;
    for (;;) {
        QByteArrayView rest = QByteArrayView(m_buffer).sliced(m_at);
        if (m_skipLineFeed && !rest.isEmpty()) {
            m_skipLineFeed = false;
            if (rest.front() == '\n') {
                ++m_at;
                continue;
            }
        }
        const qsizetype length = lineLength(rest, searched);
        searched = rest.size();
        if (length > m_maximumLine || (length < 0 && rest.size() > m_maximumLine)) {
            m_fault = listTexts::lineTooLong.arg(m_maximumLine);
            return false;
        }
        if (length >= 0) {
            m_skipLineFeed = rest[length] == '\r';
            take(length);
            ++m_at;
            return true;
        }
        if (readMore())
            continue;
        if (!m_fault.isEmpty() || m_buffer.isEmpty())
            return false;
        take(m_buffer.size());
        return true;
    }
}

} // namespace corvane
