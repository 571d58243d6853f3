// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/lists/RunNotes.h"

#include "core/lists/ListTexts.h"
#include "core/lists/ReplyMirror.h"

#include <utility>

namespace corvane {

void RunNotes::begin(int channel)
{
    const QString owed = std::exchange(m_owed.at(static_cast<size_t>(channel)), {});
    m_doubt = owed.isEmpty() ? QString() : listTexts::owed.arg(channelCaption(channel), owed);
}

QString RunNotes::setClosed(int channel, int row, bool isSent)
{
    const QString text = isSent ? listTexts::closedAtRow : listTexts::closedBetweenRows;
    QString reason = text.arg(channelCaption(channel), m_rows.name(row));
    m_closed = reason + (isSent ? listTexts::connectAndSend : listTexts::connectBefore);
    return reason;
}

void RunNotes::setReopened(int channel, int row)
{
    m_closed = listTexts::reopenedAtRow.arg(channelCaption(channel), m_rows.name(row));
}

void RunNotes::addSentByHand(int channel, int row, const QString &command)
{
    constexpr qsizetype longestShown = 60;
    m_doubt = listTexts::sentByHand.arg(channelCaption(channel), command.left(longestShown),
                                        m_rows.name(row));
}

const QString &RunNotes::addCut(int channel, int row)
{
    m_doubt = listTexts::replyTooLong.arg(channelCaption(channel), m_rows.name(row))
                  .arg(ReplyMirror::longestCell);
    return m_doubt;
}

} // namespace corvane
