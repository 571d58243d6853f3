// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/lists/ListFile.h"

namespace corvane::listText {

/// A list as the text of a file that reads back to the same comments, constants and rows, one line
/// a row, lines ended by CR LF. What the file syntax cannot hold comes as near as it can: a
/// chamber setting of one word with a value gets the "=" that it is sent with, a value with blanks
/// in a check gets quotes.
QString ofList(int listKind, const TextTable &table, const QString &comments,
               const std::vector<ListConstant> &constants);

} // namespace corvane::listText
