#include "app/UnattendedRun.h"

#include "app/ChannelDriver.h"
#include "app/JUnitReport.h"
#include "core/channels/ChannelSet.h"
#include "core/lists/ListKinds.h"
#include "core/text/PrintableText.h"
#include "core/text/ProductInfo.h"
#include "devices/GpibControl.h"
#include "devices/PlatformError.h"
#include "devices/StopSignal.h"
#include "windows/lists/CommandListArea.h"
#include "windows/main/Main.h"
#include "windows/widgets/TextGrid.h"

#include <QCheckBox>
#include <QSysInfo>
#include <QTextStream>
#include <QVersionNumber>

#include <utility>

namespace corvane {

namespace {

/// How often the patience is looked at.
constexpr int patienceStepMs = 200;

QString verdictText(TransferEngine::RowVerdict verdict)
{
    switch (verdict) {
    case TransferEngine::RowVerdict::Passed:
        return u"PASSED"_s;
    case TransferEngine::RowVerdict::Failed:
        return u"FAILED"_s;
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
        return u"a cell that is needed is empty"_s;
    case TransferEngine::Outcome::Empty:
        return u"the list is empty"_s;
    case TransferEngine::Outcome::Incomplete:
        return u"the list is incomplete"_s;
    case TransferEngine::Outcome::TimedOut:
        return u"no reply within the GPIB time-out"_s;
    case TransferEngine::Outcome::Stopped:
        return u"the run was stopped"_s;
    default:
        return {};
    }
}

double secondsOf(const QElapsedTimer &timer)
{
    return timer.isValid() ? static_cast<double>(timer.elapsed()) / 1000.0 : 0;
}

} // namespace

UnattendedRun::UnattendedRun(Main &window, CommandLine line, QTextStream &out,
                             QTextStream &messages)
    : m_window(window)
    , m_line(std::move(line))
    , m_channel(window.parts().channels.at(m_line.channel))
    , m_outputs(m_line, out)
    , m_out(out)
    , m_messages(messages)
    , m_rows(m_outputs.useStandardOutput() ? messages : out)
{
    const TransferEngine &engine = window.transferEngine();
    connect(&engine, &TransferEngine::rowStarted, this, [this](int row, const QString &command) {
        m_row = row;
        m_command = command;
        m_sinceSign.start();
    });
    connect(&m_channel, &ChannelSession::replied, this, [this] { m_sinceSign.start(); });
    connect(&engine, &TransferEngine::rowFinished, this, &UnattendedRun::printRow);
    connect(&engine, &TransferEngine::runEnded, this,
            [this](TransferEngine::Outcome outcome) { m_outcome = outcome; });
    connect(&window, &Main::faultReported, this, [this](const QString &fault) { m_fault = fault; });
    // Nobody is there to connect again or to judge a cut reply.
    connect(&engine, &TransferEngine::troubled, this, [this](const QString &reason) {
        if (!m_fault.isEmpty())
            m_faults.append(m_fault); // printed already: what closed the Channel, as a reset
        refuse(m_channel.isOpen() || !m_fault.isEmpty()
                   ? reason
                   : u"%1 (%2)"_s.arg(reason, m_channel.status()));
        m_window.transferEngine().cmdStopSend_Click();
    });
}

int UnattendedRun::execute()
{
    const StopSignal signal([this] { stop(); });
    m_began = QDateTime::currentDateTimeUtc();
    m_sinceStart.start();
    m_sinceCheck.start();
    if (const QString refusal = m_outputs.refusal(); !refusal.isEmpty()) {
        refuse(refusal);
        return anythingElse;
    }
    try {
        if (prepare())
            run();
    } catch (const PlatformError &error) {
        refuse(error.description());
    }
    judgeOutcome();
    writeResults();
    const bool failed = m_outcome == TransferEngine::Outcome::Failed;
    if (m_faults.isEmpty())
        return failed ? checkFailed : passed;
    if (failed)
        m_messages << u"corvane: row %1: the check failed all the same"_s.arg(m_row) << Qt::endl;
    return anythingElse;
}

bool UnattendedRun::refuse(const QString &reason)
{
    m_faults.append(reason);
    m_messages << "corvane: " << printableText::message(reason) << Qt::endl;
    return false;
}

bool UnattendedRun::refuseAtRow(const QString &reason)
{
    return refuse(m_row == 0 ? reason : u"row %1: %2"_s.arg(m_row).arg(reason));
}

bool UnattendedRun::prepare()
{
    QString note; // told already, and kept for the report
    const auto watch =
        connect(&m_window, &Main::noted, this, [&note](const QString &text) { note = text; });
    const bool loaded = m_window.loadList(m_line.list);
    disconnect(watch);
    if (!loaded) {
        if (!note.isEmpty())
            m_faults.append(note);
        return refuse(u"%1 cannot be loaded"_s.arg(m_line.list));
    }
    CommandListArea &list = *m_window.commandList;
    if (m_line.get && !list.cmdGetList->isEnabled())
        return refuse(u"Get list is for chamber settings only"_s);
    list.chkStripOpr->setChecked(m_line.stripOperator);

    m_window.showChannel(m_line.channel);
    m_channel.fillIn({m_line.port, m_line.host, m_line.address, m_line.settings});
    if (m_line.timeoutMs)
        m_window.parts().channels.gpib().control().setTimeout(*m_line.timeoutMs);
    if (m_line.loopMs)
        m_channel.setPeriod(*m_line.loopMs);
    return connectChannel();
}

bool UnattendedRun::connectChannel()
{
    QElapsedTimer waited;
    waited.start();
    const int patience = m_line.patienceSeconds * 1000;
    QString reason = u"no reason was given"_s;
    const auto watch = connect(&m_channel, &ChannelSession::connectFailed, this,
                               [&reason](const QString &given) { reason = given; });
    const bool isOpen = channelDriver::open(m_channel, m_window.waits(), patience);
    disconnect(watch);
    if (isOpen)
        return true;
    if (m_window.waits().isClosed())
        return refuse(outcomeFault(TransferEngine::Outcome::Stopped));
    const QString &caption = m_channel.caption();
    if (waited.elapsed() >= patience)
        return refuse(u"%1: no connection within %2 s"_s.arg(caption).arg(m_line.patienceSeconds));
    return refuse(u"%1 is not connected: %2"_s.arg(caption, reason));
}

void UnattendedRun::run()
{
    TransferEngine &engine = m_window.transferEngine();
    m_sinceSign.start();
    if (m_line.get)
        engine.cmdLoadFrmChmber_Click(m_line.channel);
    else
        engine.cmdLoadToChmber_Click(m_line.channel);
    while (!m_outcome) {
        if (m_window.waits().waitUntil([this] { return m_outcome.has_value(); }, patienceStepMs) ==
            WaitEnd::Cancelled)
            break;
        // A row that has its reply waits for the loop time, which may be longer.
        const bool waitsForReply = !m_channel.TimerTransfer->isActive();
        if (!m_outcome && waitsForReply && m_sinceSign.hasExpired(patienceMs())) {
            refuseAtRow(u"no reply within %1 s"_s.arg(m_line.patienceSeconds));
            engine.cmdStopSend_Click();
        }
    }
}

/// A GPIB reply is read one period after its command.
qint64 UnattendedRun::patienceMs() const
{
    const qint64 period = m_line.channel == channels::ieee488 ? m_channel.Timer1->interval() : 0;
    return m_line.patienceSeconds * 1000LL + period;
}

/// As Stop does; while the Channel is still connecting, closing the window ends the wait.
void UnattendedRun::stop()
{
    m_fault.clear();
    if (m_window.parts().channels.module().transferRunning())
        m_window.transferEngine().cmdStopSend_Click();
    else
        m_window.close();
}

void UnattendedRun::printRow(int row, const QString &reply, TransferEngine::RowVerdict verdict)
{
    if (verdict != TransferEngine::RowVerdict::None) {
        m_judged[row] = {verdict == TransferEngine::RowVerdict::Passed, secondsOf(m_sinceCheck)};
        m_sinceCheck.start();
    }
    if (m_line.get && reply.trimmed().isEmpty())
        m_emptyRows.append(QString::number(row));
    const QString command = m_command.isEmpty() ? m_window.listRowText(row) : m_command;
    m_rows << row << '\t' << printableText::field(command) << '\t' << printableText::field(reply)
           << '\t' << verdictText(verdict) << Qt::endl;
}

// The end

void UnattendedRun::judgeOutcome()
{
    if (!m_outcome) {
        if (m_faults.isEmpty())
            refuseAtRow(outcomeFault(TransferEngine::Outcome::Stopped));
        return;
    }
    const bool failed = *m_outcome == TransferEngine::Outcome::Stopped && !m_fault.isEmpty();
    if (const QString fault = failed ? m_fault : outcomeFault(*m_outcome);
        !fault.isEmpty() && m_faults.isEmpty())
        refuseAtRow(fault);
    if (!m_emptyRows.isEmpty())
        refuse(u"no value came for row %1"_s.arg(m_emptyRows.join(u", "_s)));
    if (*m_outcome == TransferEngine::Outcome::Passed && m_judged.empty())
        m_messages << "corvane: the list holds no check; nothing was judged" << Qt::endl;
}

/// Writes what was asked for, also of a run that ended early. The JUnit report comes last, as it
/// tells what became of the others.
void UnattendedRun::writeResults()
{
    if (&m_rows == &m_out && m_out.status() != QTextStream::Ok)
        refuse(u"standard output cannot be written"_s);
    if (m_outcome == TransferEngine::Outcome::Complete) {
        const CommandListArea &list = *m_window.commandList;
        write(m_line.saveFile,
              listFile::settingsText(list.flexgridVDL->table(), list.comments()).toLatin1());
    } else if (!m_line.saveFile.isEmpty()) {
        m_messages << "corvane: --save " << printableText::message(m_line.saveFile)
                   << " is not written, as the list is not filled" << Qt::endl;
    }
    write(m_line.csvFile, report().toCsv());
    write(m_line.junitFile, junitReport(report()));
}

void UnattendedRun::write(const QString &path, const QByteArray &bytes)
{
    if (const QString fault = m_outputs.write(path, bytes); !fault.isEmpty())
        refuse(fault);
}

bool UnattendedRun::isTestList() const
{
    return m_window.parts().channels.module().ListKind == listKinds::testList;
}

RunReport UnattendedRun::report() const
{
    const TextGrid &grid = *m_window.commandList->flexgridVDL;
    RunReport report;
    report.listName = listKinds::fileName(m_line.list);
    report.hostName = QSysInfo::machineHostName();
    report.began = m_began;
    const QVersionNumber version(productInfo::versionMajor, productInfo::versionMinor,
                                 productInfo::versionRevision);
    report.properties = {{u"channel"_s, m_channel.caption()},
                         {u"device"_s, m_channel.place()},
                         {u"loop-ms"_s, QString::number(m_channel.periodMs())},
                         {u"version"_s, version.toString()}};
    report.fault = m_faults.join(u"; "_s);
    report.seconds = secondsOf(m_sinceStart);
    for (int row = 0; row < grid.rowCount(); ++row) {
        QStringList cells;
        for (int column = 0; column < grid.colCount(); ++column)
            cells.append(grid.text(row, column));
        if (row > 0 && cells.first().isEmpty())
            continue; // held ready for a list that could not be read to its end
        if (row > 0 && isTestList() && cells.value(listKinds::firstColumn) == u"!")
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
    if (const auto judged = m_judged.find(row); judged != m_judged.end()) {
        check.result = judged->second.passed ? RunReport::Check::Result::Passed
                                             : RunReport::Check::Result::Failed;
        check.seconds = judged->second.seconds;
    }
    return check;
}

} // namespace corvane
