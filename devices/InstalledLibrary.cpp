// SPDX-License-Identifier: GPL-3.0-or-later
#include "devices/InstalledLibrary.h"

#include "devices/PlatformError.h"

#include <QFileInfo>
#include <QStringList>

#ifdef Q_OS_UNIX
#include <dlfcn.h>
#endif

namespace corvane {

namespace {

/// The file that a loaded function comes from; links to it are followed to the name with the full
/// version.
QString fileOf(QFunctionPointer function, const QString &loadedName)
{
#ifdef Q_OS_UNIX
    Dl_info info = {};
    if (function && dladdr(reinterpret_cast<void *>(function), &info) != 0 && info.dli_fname) {
        QString path = QFileInfo(QFile::decodeName(info.dli_fname)).canonicalFilePath();
        if (!path.isEmpty())
            return path;
    }
#else
    Q_UNUSED(function)
#endif
    return loadedName;
}

} // namespace

InstalledLibrary::InstalledLibrary(const QString &purpose,
                                   std::span<const libraryNames::LibraryName> names,
                                   const QString &path)
{
    const QByteArray givenPath = path.toUtf8();
    const libraryNames::LibraryName given{givenPath.constData(), -1};
    QStringList failures;
    for (const auto &candidate : path.isEmpty() ? names : std::span(&given, 1)) {
        m_library =
            std::make_unique<QLibrary>(QString::fromUtf8(candidate.name), candidate.version);
        m_library->setLoadHints(QLibrary::PreventUnloadHint);
        if (m_library->load())
            return;
        failures.append(m_library->errorString());
    }
    throw PlatformError(u"no %1 is installed (%2)"_s.arg(purpose, failures.join(u"; "_s)));
}

QString InstalledLibrary::file(const char *anyFunction) const
{
    return fileOf(m_library->resolve(anyFunction), m_library->fileName());
}

void InstalledLibrary::throwMissing(const char *name) const
{
    throw PlatformError(u"the library %1 has no function %2; another version is needed"_s.arg(
        m_library->fileName(), QLatin1String(name)));
}

} // namespace corvane
