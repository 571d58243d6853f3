// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/lists/RunNotes.h"

#include "core/lists/ListTexts.h"
#include "core/lists/ReplyMirror.h"

#include <utility>

namespace corvane {

namespace {

QString shown(const QString &command)
{
    constexpr qsizetype longest = 60;
    return command.left(longest);
}

} // namespace

void RunNotes::begin(int channel)
{
    m_doubt = std::exchange(m_owed.at(static_cast<size_t>(channel)), {});
}

void RunNotes::owe(int channel, int row)
{
    m_owed.at(static_cast<size_t>(channel)) =
        listTexts::owed.arg(channelCaption(channel), m_rows.name(row));
}

void RunNotes::owe(int channel, const QString &command)
{
    m_owed.at(static_cast<size_t>(channel)) =
        listTexts::owedByHand.arg(channelCaption(channel), shown(command));
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
    m_doubt = listTexts::sentByHand.arg(channelCaption(channel), shown(command), m_rows.name(row));
}

const QString &RunNotes::addCut(int channel, int row)
{
    m_doubt = listTexts::replyTooLong.arg(channelCaption(channel), m_rows.name(row))
                  .arg(ReplyMirror::longestCell);
    return m_doubt;
}

} // namespace corvane
