// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/channels/ChannelTraits.h"
#include "core/lists/RunRows.h"

#include <QString>

#include <array>

namespace corvane {

/// What is to be known about a list run beside its progress: that its Channel was closed, and until
/// the next run, what makes a reply of it doubtful. Replies carry no mark of what they answer.
class RunNotes
{
public:
    explicit RunNotes(const RunRows &rows)
        : m_rows(rows)
    {
    }

    /// The note that counts; empty: none.
    [[nodiscard]] const QString &text() const { return m_closed.isEmpty() ? m_doubt : m_closed; }

    /// A run begins on the Channel.
    void begin(int channel);
    /// The run ended while the row's reply was still out.
    void owe(int channel, int row);
    /// A command went out without a run.
    void owe(int channel, const QString &command);
    /// The reply came, or cannot come any more.
    void settle(int channel) { m_owed.at(static_cast<size_t>(channel)).clear(); }
    /// What makes a reply of the run doubtful; empty: nothing.
    [[nodiscard]] const QString &doubt() const { return m_doubt; }

    /// The run's Channel is closed: the row has been sent, or is not sent yet. Returns the reason
    /// without what can be done.
    QString setClosed(int channel, int row, bool isSent);
    /// It is open again, and the reply to the row is lost.
    void setReopened(int channel, int row);
    [[nodiscard]] bool isClosed() const { return !m_closed.isEmpty(); }
    void clearClosed() { m_closed.clear(); }

    void addSentByHand(int channel, int row, const QString &command);
    /// The reply is longer than its cell. Returns the note.
    const QString &addCut(int channel, int row);

private:
    const RunRows &m_rows;
    QString m_closed;
    QString m_doubt;
    /// By Channel: what is to be said of a reply that was still out.
    std::array<QString, channelCount> m_owed;
};

} // namespace corvane
