// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringView>

namespace corvane {

/// What one row of a list asks for. Made from the row's cells, without a widget.
struct ListStep
{
    enum class Kind {
        Send,       ///< `command` goes out and a reply is awaited
        Nothing,    ///< uses one tick
        Check,      ///< judges the reply of the row above
        SyntaxError ///< a cell that is needed is empty
    };

    /// The cells in columns 1 to 3.
    struct Cells
    {
        QString first;
        QString second;
        QString third;
    };

    /// The query that Get list sends for a command.
    static ListStep toGet(const QString &command);
    /// A row of Send list; `stripOperator` drops a leading "=" or "?" from what goes out.
    static ListStep toSend(int listKind, const Cells &cells, bool stripOperator);
    /// True when the row needs its second cell: all do but a test list's pauses, whose operator
    /// begins like none of the three that act.
    static bool needsSecondCell(int listKind, QStringView first);

    bool operator==(const ListStep &) const = default;

    Kind kind = Kind::Nothing;
    QString command;
};

} // namespace corvane
