// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/lists/RunRecord.h"

#include "core/channels/ChannelSession.h"
#include "core/lists/CommandList.h"
#include "core/lists/ListKinds.h"
#include "core/text/ProductInfo.h"

#include <QSysInfo>

namespace corvane {

namespace {

double secondsOf(const QElapsedTimer &timer)
{
    return timer.isValid() ? static_cast<double>(timer.elapsed()) / 1000.0 : 0;
}

} // namespace

RunRecord::RunRecord(const CommandList &list, const TransferEngine &engine, QObject *parent)
    : QObject(parent)
    , m_list(list)
    , m_engine(engine)
{
    connect(&engine, &TransferEngine::rowStarted, this, &RunRecord::notePlace);
    connect(&engine, &TransferEngine::rowFinished, this, &RunRecord::finishRow);
}

void RunRecord::restart(const ChannelSession &channel)
{
    m_channel = &channel;
    m_places.clear();
    m_emptyRows.clear();
    m_judged.clear();
    m_secondsToLastRow = 0;
    m_began = QDateTime::currentDateTimeUtc();
    m_sinceStart.start();
    m_sinceCheck.start();
}

void RunRecord::notePlace()
{
    if (m_channel == nullptr || !m_channel->isOpen())
        return;
    if (const QString place = m_channel->place(); m_places.isEmpty() || m_places.last() != place)
        m_places.append(place);
}

void RunRecord::finishRow(int row, const QString &reply, GridModel::Verdict verdict)
{
    m_secondsToLastRow = secondsOf(m_sinceStart);
    if (m_engine.isGetting() && reply.trimmed().isEmpty())
        m_emptyRows.append(QString::number(row));
    if (verdict == GridModel::Verdict::None)
        return;
    m_judged[row] = {verdict, secondsOf(m_sinceCheck)};
    m_sinceCheck.start();
}

QString RunRecord::missingValues() const
{
    return m_emptyRows.isEmpty() ? QString()
                                 : u"no value came for row %1"_s.arg(m_emptyRows.join(u", "_s));
}

RunReport RunRecord::report(const QString &fault) const
{
    RunReport report;
    report.listName = m_list.ListFileName;
    report.hostName = QSysInfo::machineHostName();
    report.began = m_began;
    report.properties = {
        {u"channel"_s, m_channel->caption()},
        {u"device"_s, m_places.isEmpty() ? m_channel->place() : m_places.join(u", then "_s)},
        {u"loop-ms"_s, QString::number(m_channel->Timer1->interval())},
        {u"row-ms"_s, QString::number(m_channel->TimerTransfer->interval())},
        {u"version"_s, QString::fromUtf16(productInfo::version)}};
    report.fault = fault;
    report.seconds = secondsOf(m_sinceStart);
    const bool isTestList = m_list.kind() == listKinds::testList;
    for (int row = 0; row < m_list.table().rowCount(); ++row) {
        QStringList cells;
        for (int column = 0; column < m_list.columnCount(); ++column)
            cells.append(m_list.text(row, column));
        if (row > 0 && cells.first().isEmpty())
            continue; // held ready for a list that could not be read to its end
        const bool isCheck = cells.value(listKinds::firstColumn) == u"!" || m_judged.contains(row);
        if (row > 0 && isTestList && isCheck)
            report.checks.push_back(checkAt(row));
        report.rows.push_back(cells);
    }
    return report;
}

RunReport::Check RunRecord::checkAt(int row) const
{
    RunReport::Check check;
    check.row = row;
    check.command = m_list.rowText(row);
    check.expected = m_list.text(row, listKinds::valueColumnOfTests);
    check.tolerance = m_list.text(row, listKinds::toleranceColumn);
    check.reply = row > 1 ? m_list.text(row - 1, m_list.columnCount() - 1) : QString();
    const Judged judged = m_judged.value(row);
    check.verdict = judged.verdict;
    check.seconds = judged.seconds;
    return check;
}

QString RunRecord::faultOf(TransferEngine::Outcome outcome)
{
    using Outcome = TransferEngine::Outcome;
    static const QMap<Outcome, QString> faults = {
        {Outcome::SyntaxError, u"a cell that is needed is empty"_s},
        {Outcome::Empty, u"the list is empty"_s},
        {Outcome::Incomplete, u"the list is incomplete"_s},
        {Outcome::TimedOut, u"no reply within the GPIB time-out"_s},
        {Outcome::Stopped, u"the run was stopped"_s}};
    return faults.value(outcome);
}

} // namespace corvane
