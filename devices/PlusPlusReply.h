// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "devices/GpibReply.h"

#include <QByteArray>

namespace corvane {

/// Judges what a "++" controller sends during one read: a reply has no frame and a time-out is
/// silence, so the controller's version text, asked for behind the read, marks the end. No clock
/// and no connection of its own: times are handed in, in ms since the read began.
class PlusPlusReply
{
public:
    enum class Verdict {
        Pending,  ///< look again within nextLookMs()
        Complete, ///< text() is the reply
        Nothing,  ///< the device did not answer in time
        Silent    ///< the controller did not even mark the end
    };

    /// How long after its time the end mark may come, and in all how late the last verdict is.
    static constexpr int graceMs = 400;
    static constexpr int lateMs = 1000;

    /// `marked`: the mark is expected behind the reply; otherwise a line feed or a pause ends it.
    /// `timeoutMs` is the controller's, the longest pause between two bytes; a device that still
    /// talks `limitMs` and a second after the start is cut.
    PlusPlusReply(QByteArray endMark, bool marked, int timeoutMs, int limitMs);

    void append(const QByteArray &bytes, int nowMs);
    Verdict judge(int nowMs);
    [[nodiscard]] int nextLookMs(int nowMs) const;

    [[nodiscard]] const QByteArray &text() const { return m_text; }
    /// True when no mark came in time.
    [[nodiscard]] bool markFailed() const { return m_markFailed; }
    /// How a complete reply ended.
    [[nodiscard]] gpibReply::End end() const { return m_end; }
    /// True when the device was still talking.
    [[nodiscard]] bool isCut() const
    {
        return m_end == gpibReply::End::Endless || m_end == gpibReply::End::TooLong;
    }

private:
    bool takeMark(int nowMs, Verdict &verdict);
    [[nodiscard]] Verdict judgeUnmarked(int nowMs) const;

    QByteArray m_mark;
    bool m_marked;
    int m_timeoutMs;
    int m_lastVerdictMs;
    QByteArray m_text;
    qsizetype m_searched = 0; ///< no mark begins before this position
    int m_lastByteMs = 0;
    qsizetype m_pausedAt = -1; ///< where in the text the controller's time-out had passed
    bool m_markFailed = false;
    gpibReply::End m_end = gpibReply::End::Unmarked;
};

} // namespace corvane
