// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/text/TextTable.h"

#include <QString>

#include <vector>

namespace corvane {

/// A "# CONST" line. Constants are kept and written back but have no effect on a run.
struct ListConstant
{
    static constexpr int capacity = 21;

    QString name;
    float value = 0;

    bool operator==(const ListConstant &) const = default;
};

/// A command list as its file gives it.
struct ListContents
{
    /// How the reading ended.
    enum class End {
        Complete,
        NotOpened, ///< the file could not be opened; nothing was read
        BadLine,   ///< a line has too few words, or there is a constant too many
        Failed     ///< reading failed, or a line is longer than any list holds
    };

    /// Lines of which something is missing in the list.
    struct Lines
    {
        int count = 0;
        int first = 0; ///< number of the first of them in the file

        void add(int line)
        {
            if (++count == 1)
                first = line;
        }
    };

    End end = End::Complete;
    /// Why the reading ended early, and at which line of the file; 0: before the first.
    QString reason;
    int endLine = 0;
    /// Lines that have put nothing into the list, comments and empty ones aside.
    Lines ignored;
    /// Lines of which words have been left out.
    Lines shortened;
    /// 0 chamber settings, 1 chamber profile, 2 test list.
    int kind = 0;
    /// The grid: header row, then the rows; after a failure also the empty rows that were held
    /// ready.
    TextTable table;
    /// The comment lines without their markers, each ended by CR LF.
    QString comments;
    std::vector<ListConstant> constants;
};

/// Command list files: text of every kind to rows, comments and constants, and chamber
/// settings back to text. Knows no widget and shows no message.
namespace listFile {

/// A line longer than this, in bytes, is no line of a list.
inline constexpr qsizetype maximumLine = 65536;
/// The rows that the grid is given at first, and each time they are used up.
inline constexpr int rowStep = 100;

/// An empty list of the kind, with `rows` rows, the header among them, and at least as many
/// columns.
TextTable emptyTable(int kind, int rows, int columns = 0);

/// Reads the file. What was read before a failure is kept.
ListContents read(const QString &path);

/// A chamber settings list as cmdSave writes it: comments, then the rows down to the first without
/// a command.
QString settingsText(const TextTable &table, const QString &comments);

/// Writes the text, a byte a character, in place of the file. Returns why not, and the old file is
/// whole, when it cannot be written or a character does not fit; empty when it is written.
QString write(const QString &path, const QString &text);

} // namespace listFile

} // namespace corvane
