// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/lists/RunRows.h"

#include "core/channels/Module1.h"
#include "core/lists/CheckRow.h"
#include "core/lists/CommandList.h"
#include "core/lists/ListKinds.h"
#include "core/lists/ListTexts.h"

namespace corvane {

int RunRows::last() const
{
    return m_list.table().rowCount() - 1;
}

QString RunRows::name(int row) const
{
    return u"row %1 of %2"_s.arg(row).arg(last());
}

int RunRows::replyColumn() const
{
    return m_module.GetMode ? listKinds::getColumn : listKinds::layout(m_list.kind()).replyColumn();
}

ListStep RunRows::step(int row) const
{
    const ListStep::Cells cells{m_list.text(row, 1), m_list.text(row, 2), m_list.text(row, 3)};
    return m_module.GetMode ? ListStep::toGet(cells.first)
                            : ListStep::toSend(m_list.kind(), cells, m_list.stripsOperator());
}

int RunRows::nextSend(int row) const
{
    for (int below = row + 1; below <= last(); ++below) {
        if (step(below).kind == ListStep::Kind::Send)
            return below;
    }
    return 0;
}

bool RunRows::isEmpty() const
{
    return m_list.text(1, listKinds::firstColumn).isEmpty();
}

bool RunRows::isIncomplete() const
{
    return m_list.textLength(1, 2) == 0 &&
           ListStep::needsSecondCell(m_list.kind(), m_list.text(1, listKinds::firstColumn));
}

bool RunRows::judge(int row)
{
    using Cell = CheckRow::Cell;
    using Shown = GridModel::Verdict;
    const int column = replyColumn();
    // The first row has no reply above, only the column's title.
    const auto verdict = CheckRow{row > 1 ? m_list.text(row - 1, column) : QString(),
                                  m_list.text(row, listKinds::valueColumnOfTests),
                                  m_list.text(row, listKinds::toleranceColumn)}
                             .judge();
    if (verdict.cell != Cell::Untouched)
        m_list.setText(row, column,
                       verdict.cell == Cell::Passed ? listTexts::passed : listTexts::failed);
    m_list.setVerdict(row, column, verdict.passed ? Shown::Passed : Shown::Failed);
    return verdict.passed;
}

void RunRows::clearReplies()
{
    const int column = replyColumn();
    for (int row = 1; row <= last(); ++row) {
        if (step(row).kind == ListStep::Kind::Send ||
            m_list.verdict(row, column) != GridModel::Verdict::None)
            m_list.setText(row, column, {});
    }
}

} // namespace corvane
