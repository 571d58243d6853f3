#include "board/CalibrationSequence.h"

#include "board/BoardLink.h"
#include "board/BoardSession.h"
#include "common/Numbers.h"

namespace corvane {

CalibrationSequence::CalibrationSequence(BoardLink &link, BoardSession &session,
                                         CalibrationTable &table)
    : m_link(link)
    , m_session(session)
    , m_table(table)
{
}

void CalibrationSequence::start(int steps)
{
    m_cancelled = false;
    m_failure.clear();
    m_step = 0;
    m_steps = steps;
}

bool CalibrationSequence::isEnded() const
{
    return m_cancelled || !m_failure.isEmpty() || m_session.isStopped();
}

CalibrationEnd CalibrationSequence::end() const
{
    using Outcome = CalibrationEnd::Outcome;
    if (!m_failure.isEmpty())
        return {Outcome::Failed, m_failure};
    return {isEnded() ? Outcome::Cancelled : Outcome::Done, {}};
}

void CalibrationSequence::showStep(int channel, const QString &what)
{
    ++m_step;
    Q_EMIT progressed(QStringLiteral("Channel %1, step %2 of %3: %4")
                          .arg(channel)
                          .arg(m_step)
                          .arg(m_steps)
                          .arg(what));
}

bool CalibrationSequence::send(const QString &command)
{
    if (isEnded())
        return false;
    QString sent = command;
    m_link.OutputToSbc(sent);
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
    reply = m_link.ask(command, ms);
    return !isEnded();
}

bool CalibrationSequence::fail(const QString &reason)
{
    m_failure = reason;
    return false;
}

void CalibrationSequence::setCell(int row, int channel, const QString &text)
{
    const int column = CalibrationTable::columnOf(channel);
    m_table.setText(row, column, text);
    Q_EMIT cellChanged(row, column);
}

void CalibrationSequence::clearChannel(int channel)
{
    for (int row = 1; row < CalibrationTable::rows; ++row)
        setCell(row, channel, {});
}

void CalibrationSequence::fillRows(int firstRow, int channel, const QString &reply)
{
    constexpr int most = 3; // more fields would run into the rows of another reply
    const QStringList fields = reply.split(u',');
    for (int i = 0; i < most && i < fields.size(); ++i) {
        Q_EMIT cellSelected(firstRow + i, CalibrationTable::columnOf(channel));
        setCell(firstRow + i, channel, numbers::fixed5(fields[i].simplified()));
    }
}

} // namespace corvane
