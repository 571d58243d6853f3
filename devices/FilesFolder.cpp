// SPDX-License-Identifier: GPL-3.0-or-later
#include "devices/FilesFolder.h"

#include "devices/PlatformError.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>
#include <QTemporaryFile>

namespace corvane {

namespace {

/// Why no file can be made in the folder; empty when one can. Tried, since the permissions alone
/// tell nothing of a disk that is mounted read-only or of another system's lists of access.
QString faultOf(const QString &folder)
{
    if (!QFileInfo::exists(folder))
        return u"there is no such folder"_s;
    if (!QFileInfo(folder).isDir())
        return u"it is no folder"_s;
    QTemporaryFile probe(folder + u"/.corvane-XXXXXX"_s);
    return probe.open() ? QString() : u"no file can be made there: "_s + probe.errorString();
}

} // namespace

filesFolder::UserFolders filesFolder::UserFolders::ofSystem()
{
    return {QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation), QDir::homePath()};
}

QString filesFolder::choose(const QString &asked, const QString &programFolder,
                            const UserFolders &user)
{
    if (!asked.isEmpty()) {
        const QString fault = faultOf(asked);
        if (!fault.isEmpty())
            throw PlatformError(u"--folder %1: %2"_s.arg(asked, fault));
        return QFileInfo(asked).absoluteFilePath();
    }
    if (faultOf(programFolder).isEmpty())
        return programFolder;
    QDir().mkdir(user.documents);
    for (const QString &folder : {user.documents, user.home}) {
        if (faultOf(folder).isEmpty())
            return folder;
    }
    return programFolder;
}

} // namespace corvane
