// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "devices/Literals.h"

/// The folder of what the program writes without being told where: the log. The file dialogs start
/// in it too.
namespace corvane::filesFolder {

/// The user's own folders; `documents` need not exist.
struct UserFolders
{
    QString documents;
    QString home;

    static UserFolders ofSystem();
};

/// Returns the folder `asked` for, as an absolute path, or, when that is empty, the first that lets
/// a file be made: the program's own, the documents (made when missing), the home. When none does,
/// the program's own: whoever writes there is told why not. Throws PlatformError that names
/// --folder when the folder asked for is none or lets no file be made.
QString choose(const QString &asked, const QString &programFolder, const UserFolders &user);

} // namespace corvane::filesFolder
