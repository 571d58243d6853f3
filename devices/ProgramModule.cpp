#include "devices/ProgramModule.h"

#include "devices/Literals.h"
#include "devices/PlatformError.h"

#include <QLibrary>

namespace corvane {

QFunctionPointer programModule::load(const Function &function, const QString &folder,
                                     const QString &what)
{
    const QString file = u'/' + QString::fromLatin1(function.module);
    QLibrary library(folder + file);
    if (!library.load())
        library.setFileName(folder + u"/" CORVANE_MODULE_FOLDER ""_s + file);
    const QFunctionPointer found = library.resolve(function.name);
    if (!found)
        throw PlatformError(u"%1 cannot be loaded: %2"_s.arg(what, library.errorString()));
    return found;
}

} // namespace corvane
