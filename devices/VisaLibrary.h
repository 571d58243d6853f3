// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "devices/InstalledLibrary.h"

#include <cstdint>

namespace corvane {

/// The vi* functions of an installed library, as plain pointers. They block.
struct VisaLibrary
{
    using Status = std::int32_t;
    using Session = std::uint32_t;

    /// Loads the library that the path, or else the system's table of names, gives. Throws
    /// PlatformError.
    explicit VisaLibrary(const QString &path = {});

    InstalledLibrary library;
    QString file;

    LibraryFunction<Status, Session *> viOpenDefaultRM;
    /// Resource manager, resource name, access mode, time limit in ms, the new session.
    LibraryFunction<Status, Session, const char *, std::uint32_t, std::uint32_t, Session *> viOpen;
    /// The value is as wide as the system's word.
    LibraryFunction<Status, Session, std::uint32_t, std::uintptr_t> viSetAttribute;
    LibraryFunction<Status, Session, const unsigned char *, std::uint32_t, std::uint32_t *> viWrite;
    LibraryFunction<Status, Session, unsigned char *, std::uint32_t, std::uint32_t *> viRead;
    LibraryFunction<Status, Session> viClear;
    LibraryFunction<Status, Session> viClose;
    /// The text buffer must hold 256 bytes.
    LibraryFunction<Status, Session, Status, char *> viStatusDesc;
};

} // namespace corvane
