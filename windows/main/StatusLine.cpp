#include "windows/main/StatusLine.h"

namespace corvane {

void StatusLine::setNote(About about, const QString &text)
{
    set(m_notes.at(static_cast<size_t>(about)), text);
}

void StatusLine::setFault(int channel, const QString &text)
{
    set(m_faults.at(static_cast<size_t>(channel)), text);
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
    for (const auto &each : {m_faults, m_replyNotes})
        shown.append(QStringList(each.begin(), each.end()));
    shown.append(QStringList(m_notes.begin() + 1, m_notes.end()));
    shown.removeAll(QString());
    showLong(shown.join(QStringLiteral("; ")));
}

} // namespace corvane
