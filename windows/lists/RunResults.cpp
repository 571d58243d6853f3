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
    , m_dialogs(dialogs)
    , m_record(list, engine)
{
    using Engine = TransferEngine;
    connect(&engine, &Engine::runStarted, this, &RunResults::begin);
    connect(&engine, &Engine::troubled, this,
            [this](const QString &reason) { m_faults.append(reason); });
    connect(&engine, &Engine::runEnded, this, &RunResults::end);
}

void RunResults::begin(int channel)
{
    m_record.restart();
    m_channel = channel;
    m_faults.clear();
    m_report.reset();
    Q_EMIT changed(false);
}

/// A message box may have been open since the last row: that is no time of the run.
void RunResults::end(TransferEngine::Outcome outcome)
{
    if (m_channel < 0)
        return; // it has not started
    m_faults.append(RunRecord::faultOf(outcome));
    m_faults.removeAll(QString());
    m_report = m_record.report(m_channels.at(std::exchange(m_channel, -1)), m_faults.join(u"; "_s));
    m_report->seconds = m_record.secondsToLastRow();
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
