#pragma once

#include "core/lists/CheckRow.h"
#include "core/lists/ListStep.h"

namespace corvane {

struct Module1;
class TextTable;

/// The list as a run reads it: what each row asks for, where its reply goes and what a check says
/// of it. Reads the grid's table and the run's mode; changes neither.
class RunRows
{
public:
    RunRows(const Module1 &module, const TextTable &table)
        : m_module(module)
        , m_table(table)
    {
    }

    /// The number of the last row; 0: the list is empty.
    [[nodiscard]] int last() const;
    /// What messages call the row: "row 20 of 200".
    [[nodiscard]] QString name(int row) const;
    /// The column that the run's replies go into.
    [[nodiscard]] int replyColumn() const;
    [[nodiscard]] ListStep step(int row, bool stripOperator) const;
    /// True when a row below this one sends something.
    [[nodiscard]] bool isSendBelow(int row) const;
    /// Judges a check row by the reply of the row above.
    [[nodiscard]] CheckRow::Verdict judge(int row) const;

private:
    [[nodiscard]] QString cell(int row, int column) const;

    const Module1 &m_module;
    const TextTable &m_table;
};

} // namespace corvane
