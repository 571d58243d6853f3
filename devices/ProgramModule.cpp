// SPDX-License-Identifier: GPL-3.0-or-later
#include "devices/ProgramModule.h"

#include "devices/Literals.h"
#include "devices/PlatformError.h"

#include <QDir>
#include <QLibrary>

namespace corvane {

QFunctionPointer programModule::load(const Function &function, const QString &folder,
                                     const QString &what)
{
    const QString file = u'/' + QString::fromLatin1(function.module);
    // The one that is there: what keeps it from loading is the reason to be told.
    const bool isBeside =
        !QDir(folder).entryList({file.sliced(1) + u".*"_s}, QDir::Files).isEmpty();
    QLibrary library(folder + (isBeside ? QString() : u"/" CORVANE_MODULE_FOLDER ""_s) + file);
    const QFunctionPointer found = library.resolve(function.name);
    if (!found)
        throw PlatformError(u"%1 cannot be loaded: %2"_s.arg(what, library.errorString()));
    return found;
}

} // namespace corvane
