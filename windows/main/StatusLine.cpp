// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/main/StatusLine.h"

namespace corvane {

namespace {

const QString separator = u"; "_s;

} // namespace

void StatusLine::setNote(About about, const QString &text)
{
    set(m_notes.at(static_cast<size_t>(about)), text);
}

void StatusLine::setFault(int channel, const QString &text)
{
    set(m_faults.at(static_cast<size_t>(channel)), text);
}

void StatusLine::setReconnect(int channel, const QString &text)
{
    set(m_reconnects.at(static_cast<size_t>(channel)), text);
}

void StatusLine::setReplyNote(int channel, const QString &text)
{
    set(m_replyNotes.at(static_cast<size_t>(channel)), text);
}

void StatusLine::set(QString &place, const QString &text)
{
    if (place == text)
        return;
    place = text;
    QStringList shown(m_notes.front());
    // Of a lost device, what becomes of it says more.
    for (size_t channel = 0; channel < m_faults.size(); ++channel)
        shown.append(m_reconnects[channel].isEmpty() ? m_faults[channel] : m_reconnects[channel]);
    shown.append(QStringList(m_replyNotes.begin(), m_replyNotes.end()));
    shown.append(QStringList(m_notes.begin() + 1, m_notes.end()));
    shown.removeAll(QString());
    m_shown = shown;
    showLong(shown.join(separator));
}

/// Each of several notes keeps its beginning, which says whom it is about, and its end.
QString StatusLine::elided(int width) const
{
    const QFontMetrics metrics = fontMetrics();
    const int gap = metrics.horizontalAdvance(separator);
    QStringList parts;
    int left = width;
    for (qsizetype each = 0; each < m_shown.size(); ++each) {
        const int share = left / static_cast<int>(m_shown.size() - each) - gap;
        parts.append(metrics.elidedText(m_shown[each].simplified(), Qt::ElideMiddle, share));
        left -= metrics.horizontalAdvance(parts.last()) + gap;
    }
    return parts.join(separator);
}

} // namespace corvane
