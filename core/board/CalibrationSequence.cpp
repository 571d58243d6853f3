// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/board/CalibrationSequence.h"

#include "core/board/BoardLink.h"
#include "core/board/BoardSession.h"
#include "core/board/BoardTexts.h"
#include "core/text/Numbers.h"
#include "core/text/ShownText.h"

#include <cmath>
#include <numeric>

namespace corvane {

CalibrationSequence::CalibrationSequence(BoardLink &link, BoardSession &session,
                                         CalibrationTable &table)
    : m_link(link)
    , m_session(session)
    , m_table(table)
{
}

void CalibrationSequence::start(std::vector<CalibrationStep> steps)
{
    m_cancelled = false;
    m_failure.clear();
    m_findings.clear();
    m_isDoubtful = false;
    m_steps = std::move(steps);
    m_step = 0;
    m_isSilent = false;
    m_method = m_link.method();
}

bool CalibrationSequence::isEnded() const
{
    return m_cancelled || !m_failure.isEmpty() || m_session.isStopped();
}

CalibrationEnd CalibrationSequence::end(const QString &left) const
{
    using Outcome = CalibrationEnd::Outcome;
    const QString cause = m_failure.isEmpty() ? m_session.fault() : m_failure;
    if (!cause.isEmpty())
        return {Outcome::Failed, m_failure,
                boardTexts::stoppedAt.arg(place() + left, cause.simplified())};
    if (isEnded())
        return {Outcome::Cancelled, {}, boardTexts::cancelledAt.arg(place() + left)};
    QStringList doubts{m_findings.text()};
    if (m_link.method() != m_method)
        doubts << boardTexts::methodChanged;
    doubts.removeAll(QString());
    return {Outcome::Done,
            {},
            doubts.isEmpty() ? boardTexts::done : boardTexts::doneBut.arg(doubts.join(u"; "_s))};
}

QString CalibrationSequence::place() const
{
    const CalibrationStep &step = m_steps[std::max<size_t>(m_step, 1) - 1];
    return u"channel %1: %2"_s.arg(step.channel).arg(step.what);
}

void CalibrationSequence::nextStep()
{
    m_step = std::min(m_step + 1, m_steps.size());
    const auto from = m_steps.begin() + static_cast<std::ptrdiff_t>(m_step) - 1;
    const int leftMs = std::accumulate(
        from, m_steps.end(), 0, [](int sum, const CalibrationStep &step) { return sum + step.ms; });
    Q_EMIT progressed(
        boardTexts::progress(place(), m_isSilent ? std::nullopt : std::optional(leftMs)));
}

bool CalibrationSequence::send(const QString &command, bool *wentOut)
{
    if (wentOut)
        *wentOut = false;
    if (isEnded())
        return false;
    QString sent = command;
    m_link.OutputToSbc(sent, [this] { return isEnded(); });
    if (wentOut)
        *wentOut = m_link.isSent();
    return !isEnded();
}

bool CalibrationSequence::pause(qint16 ms)
{
    m_link.PauseMS(ms, [this] { return isEnded(); });
    return !isEnded();
}

bool CalibrationSequence::query(const QString &command, qint16 ms, QString &reply)
{
    if (isEnded())
        return false;
    reply = m_link.ask(command, ms, [this] { return isEnded(); });
    noteAnswer(reply);
    return !isEnded();
}

bool CalibrationSequence::fail(const QString &reason)
{
    m_failure = reason;
    return false;
}

void CalibrationSequence::setCell(int row, int channel, const QString &text, const QString &remark)
{
    const int column = CalibrationTable::columnOf(channel);
    m_table.setText(row, column, text);
    Q_EMIT cellChanged(row, column, remark);
}

void CalibrationSequence::clearChannel(int channel)
{
    for (int row = 1; row < CalibrationTable::rows; ++row)
        setCell(row, channel, {});
}

void CalibrationSequence::fillRows(int firstRow, int channel, const QString &reply,
                                   const QList<double> &sent)
{
    constexpr double rounding = 0.001; // a board may keep fewer digits than it is sent
    constexpr int most = 3;            // more fields would run into the rows of another reply
    if (const QString remark = CalibrationFindings::remarkOnReply(reply); !remark.isEmpty())
        find(channel, remark.arg(firstRow == CalibrationTable::DacValue ? u"DAC"_s : u"ADC"_s));
    const QStringList fields = reply.split(u',');
    for (int row = firstRow; row < firstRow + most; ++row) {
        const QString field = fields.value(row - firstRow).simplified();
        QString remark = CalibrationFindings::remarkOn(row, field);
        const bool isCoefficient = row > firstRow && !sent.isEmpty();
        if (remark.isEmpty() && isCoefficient &&
            std::abs(numbers::leadingNumber(field) - sent[row - firstRow - 1]) > rounding)
            remark = boardTexts::notAsSent;
        if (!reply.isEmpty() && !remark.isEmpty())
            find(channel, title(row) + u' ' + remark);
        if (row - firstRow < fields.size())
            Q_EMIT cellSelected(row, CalibrationTable::columnOf(channel));
        if (remark.isEmpty() && isCoefficient && m_isDoubtful)
            remark = boardTexts::fromNoReading;
        setCell(row, channel, shownText(numbers::fixed5(field)), remark);
    }
}

/// A reading without a number counts as 0, and is shown so.
void CalibrationSequence::fillMeterRow(int channel, const QString &reply, double value,
                                       const QString &doubt)
{
    QString remark = doubt;
    if (remark.isEmpty() && !numbers::startsWithNumber(reply))
        remark = boardTexts::noNumberFrom.arg(u"meter"_s);
    if (!remark.isEmpty())
        find(channel, remark);
    setCell(CalibrationTable::Meter, channel, numbers::fixed5(value), remark);
}

} // namespace corvane
