// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/UnattendedRun.h"

#include "app/ChannelDriver.h"
#include "app/Workbench.h"
#include "core/channels/ChannelSet.h"
#include "core/lists/JUnitReport.h"
#include "core/lists/ListKinds.h"
#include "core/lists/ListTexts.h"
#include "core/text/PrintableText.h"
#include "devices/GpibControl.h"
#include "devices/PlatformError.h"
#include "devices/StopSignal.h"

#include <QTextStream>

#include <utility>

namespace corvane {

namespace {

/// How often the patience is looked at.
constexpr int patienceStepMs = 200;
/// In patiences: a device that never stops talking holds nobody up for ever.
constexpr int longestReply = 10;

QString verdictText(GridModel::Verdict verdict)
{
    return QList{QString(), listTexts::passed, listTexts::failed}.at(static_cast<int>(verdict));
}

} // namespace

UnattendedRun::UnattendedRun(Workbench &workbench, CommandLine line, QTextStream &out,
                             QTextStream &messages)
    : m_line(std::move(line))
    , m_channels(workbench.channels())
    , m_list(workbench.list())
    , m_engine(workbench.engine())
    , m_channel(m_channels.at(m_line.channel))
    , m_outputs(m_line, out)
    , m_record(m_list, m_engine)
    , m_out(out)
    , m_messages(messages)
    , m_rows(m_outputs.useStandardOutput() ? messages : out)
{
    using Engine = TransferEngine;
    connect(&m_engine, &Engine::rowStarted, this, [this](int row, const QString &command) {
        m_row = row;
        m_command = command;
        m_fault.clear(); // what was said of a row before has ended nothing
        m_sinceSign.start();
        m_sinceRow.start();
    });
    connect(&m_channel, &ChannelSession::replied, this, [this] { m_sinceSign.start(); });
    connect(&m_engine, &Engine::rowFinished, this, &UnattendedRun::printRow);
    connect(&m_engine, &Engine::runEnded, this,
            [this](Engine::Outcome outcome) { m_outcome = outcome; });
    const auto keepFault = [this](const QString &fault) {
        if (!fault.isEmpty())
            m_fault = fault;
    };
    connect(&m_channel, &ChannelSession::faultChanged, this, keepFault);
    connect(&m_channel, &ChannelSession::noteChanged, this, keepFault);
    // Nobody is there to connect again or to judge a cut reply.
    connect(&m_engine, &Engine::troubled, this, [this](const QString &reason) {
        if (!m_fault.isEmpty())
            m_faults.append(m_fault); // printed already: what closed the Channel, as a reset
        refuse(m_channel.isOpen() || !m_fault.isEmpty()
                   ? reason
                   : u"%1 (%2)"_s.arg(reason, m_channel.status()));
        m_engine.ResetTransferData(m_line.channel);
    });
}

int UnattendedRun::execute(const std::function<void()> &begun)
{
    const StopSignal signal([this] { stop(); });
    m_record.restart(m_channel);
    if (const QString refusal = m_outputs.refusal(); !refusal.isEmpty()) {
        refuse(refusal);
        return anythingElse;
    }
    try {
        if (loadList()) {
            begun();
            if (prepare())
                run();
        }
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

bool UnattendedRun::loadList()
{
    QString note; // told already, and kept for the report
    const auto watch =
        connect(&m_list, &CommandList::noted, this, [&note](const QString &text) { note = text; });
    const bool loaded = m_list.OpenFile(m_line.list) == ListContents::End::Complete;
    disconnect(watch);
    if (loaded)
        return true;
    if (!note.isEmpty())
        m_faults.append(note);
    return refuse(u"%1 cannot be loaded"_s.arg(m_line.list));
}

bool UnattendedRun::prepare()
{
    if (m_line.get && m_list.kind() != listKinds::chamberSettings)
        return refuse(u"Get list is for chamber settings only"_s);
    m_list.setStripsOperator(m_line.stripOperator);

    m_channel.fillIn(m_line.setups.value(m_line.channel));
    if (m_line.timeoutMs)
        m_channels.gpib().control().setTimeout(*m_line.timeoutMs);
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
    const bool isOpen = channelDriver::open(m_channel, m_channels.waits(), patience);
    disconnect(watch);
    if (isOpen)
        return true;
    if (m_channels.waits().isClosed())
        return refuse(RunRecord::faultOf(TransferEngine::Outcome::Stopped));
    const QString &caption = m_channel.caption();
    if (waited.elapsed() >= patience)
        return refuse(u"%1: no connection within %2 s"_s.arg(caption).arg(m_line.patienceSeconds));
    return refuse(u"%1 is not connected: %2"_s.arg(caption, reason));
}

void UnattendedRun::run()
{
    m_sinceSign.start();
    m_sinceRow.start();
    if (m_line.get)
        m_engine.cmdLoadFrmChmber_Click(m_line.channel);
    else
        m_engine.cmdLoadToChmber_Click(m_line.channel);
    while (!m_outcome) {
        if (m_channels.waits().waitUntil([this] { return m_outcome.has_value(); },
                                         patienceStepMs) == WaitEnd::Cancelled)
            break;
        // A row that has its reply waits for the loop time, which may be longer.
        const bool waitsForReply = !m_channel.TimerTransfer->isActive();
        if (m_outcome)
            break;
        if (waitsForReply && m_sinceSign.hasExpired(patienceMs()))
            giveUp(u"no reply within %1 s"_s, 1);
        else if (m_sinceRow.hasExpired(patienceMs() * longestReply +
                                       m_channel.TimerTransfer->interval()))
            giveUp(u"the reply has not ended within %1 s"_s, longestReply);
    }
}

void UnattendedRun::giveUp(const QString &reason, int patiences)
{
    refuseAtRow(reason.arg(m_line.patienceSeconds * patiences));
    m_engine.ResetTransferData(m_line.channel);
}

/// A GPIB reply is read one period after its command.
qint64 UnattendedRun::patienceMs() const
{
    const qint64 period = m_line.channel == channels::ieee488 ? m_channel.Timer1->interval() : 0;
    return m_line.patienceSeconds * 1000LL + period;
}

/// As Stop does; while the Channel is still connecting, the wait ends.
void UnattendedRun::stop()
{
    m_fault.clear();
    if (m_channels.module().transferRunning())
        m_engine.ResetTransferData(m_line.channel);
    else
        m_channels.stop();
}

void UnattendedRun::printRow(int row, const QString &reply, GridModel::Verdict verdict)
{
    const QString command = m_command.isEmpty() ? m_list.rowText(row) : m_command;
    m_rows << row << '\t' << printableText::field(command) << '\t' << printableText::field(reply)
           << '\t' << verdictText(verdict) << Qt::endl;
}

// The end

void UnattendedRun::judgeOutcome()
{
    if (!m_outcome) {
        if (m_faults.isEmpty())
            refuseAtRow(RunRecord::faultOf(TransferEngine::Outcome::Stopped));
        return;
    }
    const bool failed = *m_outcome == TransferEngine::Outcome::Stopped && !m_fault.isEmpty();
    if (const QString fault = failed ? m_fault : RunRecord::faultOf(*m_outcome);
        !fault.isEmpty() && m_faults.isEmpty())
        refuseAtRow(fault);
    if (const QString missing = m_record.missingValues(); !missing.isEmpty())
        refuse(missing);
    if (*m_outcome == TransferEngine::Outcome::Passed && !m_record.hasVerdict())
        m_messages << "corvane: the list holds no check; nothing was judged" << Qt::endl;
}

/// Writes what was asked for, also of a run that ended early. The JUnit report comes last, as it
/// tells what became of the others.
void UnattendedRun::writeResults()
{
    if (m_rows.status() != QTextStream::Ok)
        refuse(&m_rows == &m_out ? u"standard output cannot be written"_s
                                 : u"standard error cannot be written"_s);
    const bool isFilled =
        m_outcome == TransferEngine::Outcome::Complete && m_record.missingValues().isEmpty();
    if (isFilled) {
        write(m_line.saveFile,
              listFile::settingsText(m_list.table(), m_list.comments()).toLatin1());
    } else if (!m_line.saveFile.isEmpty()) {
        m_messages << "corvane: --save " << printableText::message(m_line.saveFile)
                   << " is not written, as the list is not filled" << Qt::endl;
    }
    if (!m_line.csvFile.isEmpty())
        write(m_line.csvFile, report().toCsv());
    if (!m_line.junitFile.isEmpty())
        write(m_line.junitFile, junitReport(report()));
}

void UnattendedRun::write(const QString &path, const QByteArray &bytes)
{
    if (const QString fault = m_outputs.write(path, bytes); !fault.isEmpty())
        refuse(fault);
}

RunReport UnattendedRun::report() const
{
    RunReport report = m_record.report(m_faults.join(u"; "_s));
    report.listName = listKinds::fileName(m_line.list); // also of one that could not be loaded
    return report;
}

} // namespace corvane
