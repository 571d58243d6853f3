// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "devices/LibraryNames.h"

#include <QLibrary>
#include <QString>

#include <memory>
#include <span>

namespace corvane {

#ifdef Q_OS_WIN
template <typename Result, typename... Arguments>
using LibraryFunction = Result(__stdcall *)(Arguments...);
#else
template <typename Result, typename... Arguments>
using LibraryFunction = Result (*)(Arguments...);
#endif

/// A library that is loaded at run time and stays loaded to the program's end: such libraries
/// hold descriptors and handlers of their own, so none is ever unloaded.
class InstalledLibrary
{
public:
    /// Loads the first of the names that is installed; a path that is not empty is loaded instead.
    /// `purpose` names the library in messages. Throws PlatformError that tells what was tried.
    InstalledLibrary(const QString &purpose, std::span<const libraryNames::LibraryName> names,
                     const QString &path);

    /// The file, with the version in its name where it has one ("libgpib.so.0.1.4"), found by way
    /// of one of its functions.
    [[nodiscard]] QString file(const char *anyFunction) const;

    /// The function of the name as a pointer of the given type. Throws PlatformError when the
    /// library does not have it.
    template <typename Function>
    void require(Function &function, const char *name) const
    {
        function = reinterpret_cast<Function>(m_library->resolve(name));
        if (!function)
            throwMissing(name);
    }
    /// The same, null when the library does not have it.
    template <typename Function>
    bool find(Function &function, const char *name) const
    {
        function = reinterpret_cast<Function>(m_library->resolve(name));
        return function != nullptr;
    }

private:
    [[noreturn]] void throwMissing(const char *name) const;

    std::unique_ptr<QLibrary> m_library;
};

} // namespace corvane
