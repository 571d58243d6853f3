// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/channels/ChannelTraits.h"
#include "windows/widgets/ElidedLabel.h"

#include <array>

namespace corvane {

/// The status bar's line of what is to know now: about the list run, each Channel's device and
/// reply, the list file, the log, the board, the bench and the recording. Each stands until its own
/// is set to an empty text.
class StatusLine : public ElidedLabel
{
public:
    enum class About { Run, ListFile, Log, Board, Bench, Recording };

    using ElidedLabel::ElidedLabel;

    void setNote(About about, const QString &text);
    /// What was last said of the Channel's device.
    void setFault(int channel, const QString &text);
    /// Where the Channel's reconnecting is.
    void setReconnect(int channel, const QString &text);
    /// What is to know about the reply in the Channel's box.
    void setReplyNote(int channel, const QString &text);

protected:
    [[nodiscard]] QString elided(int width) const override;

private:
    void set(QString &place, const QString &text);

    QStringList m_shown;
    std::array<QString, 6> m_notes;
    std::array<QString, channelCount> m_faults;
    std::array<QString, channelCount> m_reconnects;
    std::array<QString, channelCount> m_replyNotes;
};

} // namespace corvane
