// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/lists/ListStep.h"

namespace corvane {

class CommandList;
struct Module1;

/// The list as a run works through it: what each row asks for, where its reply goes and what a
/// check says of it. Reads the run's mode.
class RunRows
{
public:
    RunRows(const Module1 &module, CommandList &list)
        : m_module(module)
        , m_list(list)
    {
    }

    /// The number of the last row; 0: the list is empty.
    [[nodiscard]] int last() const;
    /// What messages call the row: "row 20 of 200".
    [[nodiscard]] QString name(int row) const;
    /// The column that the run's replies go into.
    [[nodiscard]] int replyColumn() const;
    [[nodiscard]] ListStep step(int row) const;
    /// True when a row below this one sends something.
    [[nodiscard]] bool isSendBelow(int row) const { return nextSend(row) > 0; }
    /// The next row below that sends something; 0: none.
    [[nodiscard]] int nextSend(int row) const;
    /// The list has nothing to run, or nothing to send in its first row.
    [[nodiscard]] bool isEmpty() const;
    [[nodiscard]] bool isIncomplete() const;
    /// Judges a check row by the reply of the row above and shows the verdict in its reply cell.
    /// Returns whether it has passed.
    bool judge(int row);
    /// Empties the reply cells of rows that send something, and the verdicts: in rows that this run
    /// does not reach, those of an earlier one would pass for its own.
    void clearReplies();

private:
    const Module1 &m_module;
    CommandList &m_list;
};

} // namespace corvane
