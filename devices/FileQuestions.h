// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>

/// The rules behind the file dialogs that need no window.
namespace corvane::fileQuestions {

/// The name filters of "Text(*.txt)|*.txt|All|*.*" for the toolkit: "Text(*.txt)", "All (*.*)".
/// A description that ends in its patterns stands as it is. Several patterns of one part are
/// separated by ";".
QStringList nameFilters(const QString &filter);

/// The extension, without its point, that a name filter appends to a bare name; empty for "*" and
/// "*.*".
QString extensionOf(const QString &nameFilter);

/// The path with the extension, unless its name has one: this one, or another that was typed on
/// purpose, which is a letter and up to three more letters or digits behind the last point. The
/// point of a part number, as in "1234.5_0123-07", begins none.
QString withExtension(const QString &path, const QString &extension);

/// True for a name that means a device on Windows, whatever follows its first point: CON, PRN, AUX,
/// NUL, COM1 to COM9, LPT1 to LPT9 and the console's CONIN$ and CONOUT$, in any case.
bool isReservedOnWindows(const QString &name);

/// True when no file of this path can be made: no name, a name or path too long, a character that
/// the system refuses or a name that it keeps for a device, a folder that does not exist, something
/// there that is no file.
bool isRefusedName(const QString &path);

/// What is wrong with a path that is refused: its folder, or its name.
QString refusalOf(const QString &path);

} // namespace corvane::fileQuestions
