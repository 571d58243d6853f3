// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/board/UnsavedCalibrations.h"

#include "core/board/BoardTexts.h"

#include <algorithm>

namespace corvane {

void UnsavedCalibrations::set(int channel, State state)
{
    m_states.at(static_cast<size_t>(channel)) = state;
    Q_EMIT changed(text());
}

void UnsavedCalibrations::setSaved()
{
    std::ranges::replace(m_states, State::Changed, State::Saved);
    Q_EMIT changed(text());
}

bool UnsavedCalibrations::isEmpty() const
{
    return std::all_of(m_states.begin(), m_states.end(),
                       [](State state) { return state == State::Saved; });
}

QString UnsavedCalibrations::listOf(State state) const
{
    QList<int> list;
    for (int channel = 0; channel < channels; ++channel) {
        if (m_states.at(static_cast<size_t>(channel)) == state)
            list.append(channel);
    }
    return list.isEmpty() ? QString() : boardTexts::channelList(list);
}

QString UnsavedCalibrations::unfinishedText() const
{
    const QString unfinished = listOf(State::Unfinished);
    return unfinished.isEmpty() ? QString() : boardTexts::unfinished.arg(unfinished);
}

QString UnsavedCalibrations::text() const
{
    QStringList parts;
    if (const QString changed = listOf(State::Changed); !changed.isEmpty())
        parts << boardTexts::unsaved.arg(changed);
    if (const QString unfinished = unfinishedText(); !unfinished.isEmpty())
        parts << unfinished;
    QString text = parts.join(u"; "_s);
    if (!text.isEmpty())
        text[0] = text[0].toUpper();
    return text;
}

} // namespace corvane
