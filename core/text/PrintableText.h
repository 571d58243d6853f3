// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

/// Text for a terminal or a report that comes from a device, a file or a file's name: whatever
/// could steer the terminal, reorder the line or not be held is written as its number, "\x1b" or
/// "\u202e".
namespace corvane::printableText {

/// A field of a line with tabs between its fields: tabs ("\t"), line ends ("\r", "\n") and the
/// backslash itself ("\\") are escaped as well, so that the field can be read back.
QString field(const QString &text);

/// A message of one or more lines: line ends and tabs stay, backslashes stand for themselves.
QString message(const QString &text);

} // namespace corvane::printableText
