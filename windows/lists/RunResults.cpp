// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/lists/RunResults.h"

#include "core/channels/ChannelSet.h"
#include "core/lists/JUnitReport.h"
#include "core/text/Dialogs.h"
#include "devices/FileQuestions.h"
#include "devices/WholeFile.h"

#include <QFileInfo>

namespace corvane {

RunResults::RunResults(const ChannelSet &channels, const CommandList &list,
                       const TransferEngine &engine, Dialogs &dialogs, QObject *parent)
    : QObject(parent)
    , m_channels(channels)
    , m_engine(engine)
    , m_dialogs(dialogs)
    , m_record(list, engine)
{
    using Engine = TransferEngine;
    connect(&engine, &Engine::runStarted, this, &RunResults::begin);
    connect(&engine, &Engine::troubled, this,
            [this](const QString &reason) { m_faults.append(reason); });
    connect(&engine, &Engine::rowFinished, this, [this] { m_faults.clear(); }); // it went on
    connect(&engine, &Engine::runEnded, this, &RunResults::end);
}

void RunResults::begin(int channel)
{
    m_record.restart(m_channels.at(channel));
    m_isRunning = true;
    m_faults.clear();
    m_report.reset();
    Q_EMIT changed(false);
}

void RunResults::end(TransferEngine::Outcome outcome)
{
    if (!std::exchange(m_isRunning, false))
        return; // it has not started
    using Outcome = TransferEngine::Outcome;
    const QString missing = m_record.missingValues();
    m_faults += {m_engine.doubt(), missing, RunRecord::faultOf(outcome)};
    m_faults.removeAll(QString());
    m_faults.removeDuplicates();
    m_report = m_record.report(m_faults.join(u"; "_s));
    // A message box has been open since the last row: that is no time of the run.
    if (outcome == Outcome::Passed || outcome == Outcome::Failed || outcome == Outcome::SyntaxError)
        m_report->seconds = m_record.secondsToLastRow();
    if (!missing.isEmpty())
        Q_EMIT noted(u"Get List: "_s + missing);
    Q_EMIT changed(true);
}

void RunResults::save(QObject *asker)
{
    if (!m_report)
        return;
    const RunReport report = *m_report; // another run may start while the dialog is open
    const Dialogs::FileChoice choice = m_dialogs.saveFile(
        asker, {u"Comma-separated values (*.csv)|*.csv|JUnit report (*.xml)|*.xml"_s, QString(),
                QFileInfo(report.listName).completeBaseName() + u"-results"_s});
    using Outcome = Dialogs::FileChoice::Outcome;
    if (choice.outcome == Outcome::Cancelled)
        return;
    const bool isJUnit = choice.path.endsWith(u".xml"_s, Qt::CaseInsensitive);
    const QString fault =
        choice.outcome == Outcome::InvalidName
            ? fileQuestions::refusalOf(choice.path)
            : wholeFile::write(choice.path, isJUnit ? junitReport(report) : report.toCsv());
    Q_EMIT noted(fault.isEmpty() ? u"Results saved in %1"_s.arg(choice.path)
                                 : u"Results not saved"_s);
    if (!fault.isEmpty())
        m_dialogs.showMessage(asker, u"%1: %2"_s.arg(choice.path, fault));
}

} // namespace corvane
