// SPDX-License-Identifier: GPL-3.0-or-later
#include "devices/PlusPlusReply.h"

#include <algorithm>
#include <utility>

namespace corvane {

namespace {

/// Without a mark, a pause longer than the controller's own time-out ends a reply.
constexpr int pauseMs = 100;
/// A shorter pause is no time-out, however short that is: lines and computers have their own.
constexpr int leastPauseMs = 30;

} // namespace

PlusPlusReply::PlusPlusReply(QByteArray endMark, bool marked, int timeoutMs, int limitMs)
    : m_mark(std::move(endMark))
    , m_marked(marked)
    , m_timeoutMs(timeoutMs)
    , m_lastVerdictMs(limitMs + lateMs)
{
}

void PlusPlusReply::append(const QByteArray &bytes, int nowMs)
{
    if (nowMs - m_lastByteMs >= std::max(m_timeoutMs - m_timeoutMs / 10, leastPauseMs))
        m_pausedAt = m_text.size();
    m_text += bytes;
    m_lastByteMs = nowMs;
}

PlusPlusReply::Verdict PlusPlusReply::judge(int nowMs)
{
    Verdict verdict = Verdict::Pending;
    if (takeMark(nowMs, verdict))
        return verdict;
    if (nowMs >= m_lastVerdictMs || m_text.size() > gpibReply::longest) {
        m_end =
            m_text.size() > gpibReply::longest ? gpibReply::End::TooLong : gpibReply::End::Endless;
        return m_text.isEmpty() ? Verdict::Silent : Verdict::Complete;
    }
    if (!m_marked)
        return judgeUnmarked(nowMs);
    if (nowMs < m_lastByteMs + m_timeoutMs + graceMs)
        return Verdict::Pending;
    m_markFailed = true;
    return m_text.isEmpty() ? Verdict::Silent : Verdict::Complete;
}

bool PlusPlusReply::takeMark(int nowMs, Verdict &verdict)
{
    for (;;) {
        const auto at = m_text.indexOf(m_mark, m_searched);
        if (at < 0) {
            m_searched = std::max<qsizetype>(0, m_text.size() - m_mark.size() + 1);
            return false;
        }
        if (at > 0) {
            m_text.truncate(at); // whatever follows belongs to no question
            m_end = m_pausedAt == at ? gpibReply::End::TimedOut : gpibReply::End::Marked;
            verdict = Verdict::Complete;
            return true;
        }
        m_text.remove(0, m_mark.size());
        m_searched = 0;
        m_pausedAt -= m_mark.size();
        if (m_marked && m_text.isEmpty() && nowMs >= m_timeoutMs - m_timeoutMs / 10) {
            verdict = Verdict::Nothing;
            return true;
        }
        // A mark before its time answers an earlier question, or has overtaken the reply.
        m_marked = false;
    }
}

PlusPlusReply::Verdict PlusPlusReply::judgeUnmarked(int nowMs) const
{
    if (m_text.isEmpty())
        return nowMs >= m_timeoutMs ? Verdict::Nothing : Verdict::Pending;
    const bool ended = m_text.endsWith('\n') || nowMs >= m_lastByteMs + m_timeoutMs + pauseMs;
    return ended ? Verdict::Complete : Verdict::Pending;
}

int PlusPlusReply::nextLookMs(int nowMs) const
{
    int next = m_timeoutMs;
    if (m_marked)
        next = m_lastByteMs + m_timeoutMs + graceMs;
    else if (!m_text.isEmpty())
        next = m_lastByteMs + m_timeoutMs + pauseMs;
    return std::max(1, std::min(next, m_lastVerdictMs) - nowMs);
}

} // namespace corvane
