// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/lists/ListFile.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QLatin1StringView>

#include <array>

namespace corvane {

/// One line of a list file, taken apart by the rules of its kind. Words are cut at every single
/// blank, so two blanks in a row have an empty word between them.
struct ListLine
{
    enum class Kind {
        Row,      ///< fills a row
        Ignored,  ///< takes no row
        Constant, ///< takes no row, defines a constant
        Bad       ///< has no word where one is taken
    };

    /// How much of the line's text is in neither a cell nor a constant.
    enum class Loss { None, Part, All };

    static constexpr int columns = 6;

    /// Takes the line apart. Comments and empty lines are the caller's.
    static ListLine parse(int listKind, QByteArrayView line);

    Kind kind = Kind::Ignored;
    Loss loss = Loss::None;
    /// The cells by column; they are views of the line that was parsed, or of `built`. Column 0,
    /// the row's number, is the caller's.
    std::array<QLatin1StringView, columns> cells;
    QByteArray built;
    ListConstant constant;
};

/// The marker that makes the line a comment, two slashes or two backslashes; empty for other lines.
QByteArrayView commentMarker(QByteArrayView line);

} // namespace corvane
