#pragma once

#include <QString>
#include <QStringList>

/// The rules behind the file dialogs that need no window.
namespace corvane::fileQuestions {

/// The name filters of "Text (*.txt)|*.txt|All|*.*" as the toolkit writes them:
/// "Text (*.txt)", "All (*.*)". Several patterns of one part are separated by ";".
QStringList nameFilters(const QString &filter);

/// The extension, without its point, that a name filter appends to a bare name; empty for "*" and
/// "*.*".
QString extensionOf(const QString &nameFilter);

/// True when no file of this path can be made: no name, a name or path too long, a character that
/// the system refuses, a folder that does not exist.
bool isRefusedName(const QString &path);

} // namespace corvane::fileQuestions
