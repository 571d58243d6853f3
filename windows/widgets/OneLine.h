// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

class QLineEdit;

/// Entries are one line: what a paste, a drop, an input method or the program itself brings along
/// as a line end never stays in one. An entry shows it as a blank, and it would go out as it is.
namespace corvane::oneLine {

/// Takes the line ends (CR, LF and Unicode's two separators) out of the text: those at its ends and
/// before the cursor, where a paste has just ended, are dropped; a run of others becomes one blank.
/// The character 0x85 stays, as it is a byte like any other. The cursor keeps its place.
void clean(QString &text, int &cursor);

/// Keeps the entry clean from now on, however its text comes in. Takes the entry's validator.
void keepIn(QLineEdit &entry);

} // namespace corvane::oneLine
