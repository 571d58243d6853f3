#include "core/lists/RunRows.h"

#include "core/channels/Module1.h"
#include "core/lists/ListKinds.h"
#include "core/text/TextTable.h"

namespace corvane {

int RunRows::last() const
{
    return m_table.rowCount() - 1;
}

QString RunRows::name(int row) const
{
    return u"row %1 of %2"_s.arg(row).arg(last());
}

int RunRows::replyColumn() const
{
    return m_module.GetMode ? listKinds::getColumn
                            : listKinds::layout(m_module.ListKind).replyColumn;
}

ListStep RunRows::step(int row, bool stripOperator) const
{
    const ListStep::Cells cells{cell(row, 1), cell(row, 2), cell(row, 3)};
    return m_module.GetMode ? ListStep::toGet(cells.first)
                            : ListStep::toSend(m_module.ListKind, cells, stripOperator);
}

bool RunRows::isSendBelow(int row) const
{
    for (int below = row + 1; below <= last(); ++below) {
        if (step(below, false).kind == ListStep::Kind::Send)
            return true;
    }
    return false;
}

CheckRow::Verdict RunRows::judge(int row) const
{
    return CheckRow{cell(row - 1, replyColumn()), cell(row, listKinds::valueColumnOfTests),
                    cell(row, listKinds::toleranceColumn)}
        .judge();
}

QString RunRows::cell(int row, int column) const
{
    return m_table.text(row, column).toString();
}

} // namespace corvane
