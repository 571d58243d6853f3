// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>

/// The kinds of command list, numbered as ListKind numbers them, and how each lays out the
/// grid. One table, used by everything that touches a column.
namespace corvane::listKinds {

inline constexpr int chamberSettings = 0;
inline constexpr int chamberProfile = 1;
inline constexpr int testList = 2;

/// Columns that mean the same in every kind they occur in.
inline constexpr int lineColumn = 0;
/// "Command" in chamber settings, "Operator" in the others.
inline constexpr int firstColumn = 1;
/// Where Get list puts its replies.
inline constexpr int getColumn = 2;

inline constexpr int valueColumnOfTests = 3;
inline constexpr int toleranceColumn = 4;

struct Layout
{
    QStringList titles;
    /// The file dialog's filter.
    QString filter;

    /// Where Send list puts its replies: the last column.
    [[nodiscard]] int replyColumn() const { return static_cast<int>(titles.size()) - 1; }
    /// The last three characters of its files' paths.
    [[nodiscard]] QString ending() const { return filter.right(3); }
};

/// The layout of a kind; another number is read as chamber settings.
const Layout &layout(int kind);
/// The file dialog's filters of all kinds.
QString openFilter();
/// The kind that a path's last three characters name; chamber settings for any other.
int ofPath(const QString &path);
/// The part of a path after its last "\" or "/".
QString fileName(const QString &path);

} // namespace corvane::listKinds
