#include "main/UnattendedRun.h"

#include "lists/CommandListArea.h"
#include "lists/ListKinds.h"
#include "main/Channel.h"
#include "main/ChannelDriver.h"
#include "main/ChannelTexts.h"
#include "main/Main.h"
#include "platform/GpibControl.h"
#include "platform/PlatformError.h"
#include "platform/StopSignal.h"
#include "platform/TextGrid.h"
#include "platform/WholeFile.h"

#include <QCheckBox>
#include <QTextStream>

#include <utility>

namespace corvane {

namespace {

/// How often the patience is looked at.
constexpr int patienceStepMs = 200;

QString verdictText(TransferEngine::RowVerdict verdict)
{
    switch (verdict) {
    case TransferEngine::RowVerdict::Passed:
        return QStringLiteral("PASSED");
    case TransferEngine::RowVerdict::Failed:
        return QStringLiteral("FAILED");
    case TransferEngine::RowVerdict::None:
        break;
    }
    return {};
}

/// Why an outcome is neither passed nor failed.
QString outcomeFault(TransferEngine::Outcome outcome)
{
    switch (outcome) {
    case TransferEngine::Outcome::SyntaxError:
        return QStringLiteral("a cell that is needed is empty");
    case TransferEngine::Outcome::Empty:
        return QStringLiteral("the list is empty");
    case TransferEngine::Outcome::Incomplete:
        return QStringLiteral("the list is incomplete");
    case TransferEngine::Outcome::TimedOut:
        return QStringLiteral("no reply within the GPIB time-out");
    case TransferEngine::Outcome::Stopped:
        return QStringLiteral("the run was stopped");
    default:
        return {};
    }
}

} // namespace

UnattendedRun::UnattendedRun(Main &window, CommandLine line, QTextStream &rows,
                             QTextStream &messages)
    : m_window(window)
    , m_line(std::move(line))
    , m_rows(rows)
    , m_messages(messages)
{
    const TransferEngine &engine = window.transferEngine();
    connect(&engine, &TransferEngine::rowStarted, this, [this](int row, const QString &command) {
        m_row = row;
        m_command = command;
        m_sinceStartOfRow.start();
    });
    connect(&engine, &TransferEngine::rowFinished, this, &UnattendedRun::printRow);
    connect(&engine, &TransferEngine::runEnded, this,
            [this](TransferEngine::Outcome outcome) { m_outcome = outcome; });
}

int UnattendedRun::execute()
{
    const StopSignal signal([this] { stop(); });
    try {
        if (prepare())
            run();
    } catch (const PlatformError &error) {
        refuse(error.description());
    }
    const bool written = conclude();
    return written ? exitCode() : anythingElse;
}

bool UnattendedRun::refuse(const QString &reason)
{
    m_fault = reason;
    m_messages << "corvane: " << reason << Qt::endl;
    return false;
}

bool UnattendedRun::prepare()
{
    if (!m_window.loadList(m_line.list))
        return refuse(QStringLiteral("%1 cannot be loaded").arg(m_line.list));
    CommandListArea &list = *m_window.commandList;
    if (m_line.get && !list.cmdGetList->isEnabled())
        return refuse(QStringLiteral("Get list is for chamber settings only"));
    list.chkStripOpr->setChecked(m_line.stripOperator);

    m_window.showChannel(m_line.channel);
    ChannelDriver driver(m_window);
    driver.fillIn(m_line.channel, {m_line.port, m_line.host, m_line.address, m_line.settings});
    if (m_line.timeoutMs)
        m_window.parts().gpib.setTimeout(*m_line.timeoutMs);
    if (m_line.loopMs) {
        Channel &channel = *m_window.channel(m_line.channel);
        channel.cboMs->setEditText(QString::number(*m_line.loopMs));
        channel.cboMs_Change();
    }
    if (driver.connect(m_line.channel, m_line.patienceSeconds * 1000))
        return true;
    if (m_window.waits().isClosed())
        return refuse(outcomeFault(TransferEngine::Outcome::Stopped));
    return refuse(QStringLiteral("%1 is not connected")
                      .arg(channelTexts::channelCaptions.at(static_cast<size_t>(m_line.channel))));
}

void UnattendedRun::run()
{
    TransferEngine &engine = m_window.transferEngine();
    const Module1 &module = m_window.parts().module;
    m_sinceStart.start();
    if (m_line.get)
        engine.cmdLoadFrmChmber_Click(m_line.channel);
    else
        engine.cmdLoadToChmber_Click(m_line.channel);
    const qint64 patienceMs = m_line.patienceSeconds * 1000LL;
    while (!m_outcome) {
        if (m_window.waits().waitUntil([this] { return m_outcome.has_value(); }, patienceStepMs) ==
            WaitEnd::Cancelled)
            break;
        // A row that has its reply waits for the loop time, which may be longer.
        if (!m_outcome && !module.ResponseReady && m_sinceStartOfRow.hasExpired(patienceMs)) {
            refuseAtRow(QStringLiteral("no reply within %1 s").arg(m_line.patienceSeconds));
            engine.cmdStopSend_Click();
        }
    }
}

/// As Stop does; while the Channel is still connecting, closing the window ends the wait.
void UnattendedRun::stop()
{
    if (m_window.parts().module.transferRunning())
        m_window.transferEngine().cmdStopSend_Click();
    else
        m_window.close();
}

bool UnattendedRun::refuseAtRow(const QString &reason)
{
    return refuse(m_row == 0 ? reason : QStringLiteral("row %1: %2").arg(m_row).arg(reason));
}

void UnattendedRun::printRow(int row, const QString &reply, TransferEngine::RowVerdict verdict)
{
    if (verdict != TransferEngine::RowVerdict::None)
        m_verdicts[row] = verdict;
    const QString command = m_command.isEmpty() ? m_window.listRowText(row) : m_command;
    m_rows << row << '\t' << command << '\t' << reply << '\t' << verdictText(verdict) << Qt::endl;
}

RunReport UnattendedRun::report() const
{
    const TextGrid &grid = *m_window.commandList->flexgridVDL;
    RunReport report;
    report.listName = m_window.commandList->ListFileName;
    report.channel = channelTexts::channelCaptions.at(static_cast<size_t>(m_line.channel));
    report.fault = m_fault;
    if (m_sinceStart.isValid())
        report.seconds = static_cast<double>(m_sinceStart.elapsed()) / 1000.0;
    const bool hasChecks = m_window.parts().module.ListKind == listKinds::testList;
    for (int row = 0; row < grid.rowCount(); ++row) {
        QStringList cells;
        for (int column = 0; column < grid.colCount(); ++column)
            cells.append(grid.text(row, column));
        if (row > 0 && cells.first().isEmpty())
            continue; // held ready for a list that could not be read to its end
        if (row > 0 && hasChecks && cells.value(listKinds::firstColumn) == u"!")
            report.checks.push_back(checkAt(row));
        report.rows.push_back(cells);
    }
    return report;
}

RunReport::Check UnattendedRun::checkAt(int row) const
{
    const TextGrid &grid = *m_window.commandList->flexgridVDL;
    RunReport::Check check;
    check.row = row;
    check.command = m_window.listRowText(row);
    check.expected = grid.text(row, listKinds::valueColumnOfTests);
    check.tolerance = grid.text(row, listKinds::toleranceColumn);
    check.reply = row > 1 ? grid.text(row - 1, grid.colCount() - 1) : QString();
    if (const auto verdict = m_verdicts.find(row); verdict != m_verdicts.end())
        check.result = verdict->second == TransferEngine::RowVerdict::Passed
                           ? RunReport::Check::Result::Passed
                           : RunReport::Check::Result::Failed;
    return check;
}

/// Writes what was asked for, also of a run that ended early.
bool UnattendedRun::conclude()
{
    if (m_outcome && m_fault.isEmpty()) {
        const QString fault = outcomeFault(*m_outcome);
        if (!fault.isEmpty())
            refuseAtRow(fault);
    }
    bool written = true;
    if (!m_line.saveFile.isEmpty() && m_outcome == TransferEngine::Outcome::Complete &&
        !m_window.commandList->saveSettings(m_line.saveFile))
        written = refuse(QStringLiteral("%1 cannot be written").arg(m_line.saveFile));
    const RunReport result = report();
    if (!m_line.csvFile.isEmpty() && !writeFile(m_line.csvFile, result.toCsv()))
        written = false;
    if (!m_line.junitFile.isEmpty() && !writeFile(m_line.junitFile, result.toJUnit()))
        written = false;
    return written;
}

bool UnattendedRun::writeFile(const QString &path, const QByteArray &bytes)
{
    const QString fault = wholeFile::write(path, bytes);
    return fault.isEmpty() || refuse(QStringLiteral("%1: %2").arg(path, fault));
}

int UnattendedRun::exitCode() const
{
    if (!m_fault.isEmpty() || !m_outcome)
        return anythingElse;
    return *m_outcome == TransferEngine::Outcome::Failed ? checkFailed : passed;
}

} // namespace corvane
