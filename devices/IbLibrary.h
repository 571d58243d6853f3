// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "devices/InstalledLibrary.h"

#include <cstddef>

namespace corvane {

/// The ib* functions of an installed library, as plain pointers. They block; ThreadIb* tell about
/// the last call of the thread that asks. Lengths are declared as size_t: a library that has
/// `long` there finds the same value in the same register.
struct IbLibrary
{
    /// Loads the library that the path, or else the system's table of names, gives. Throws
    /// PlatformError.
    explicit IbLibrary(const QString &path = {});

    /// Code for a time-out of at least `ms` (1 up): never shorter, never the endless 0.
    static int timeoutCode(int ms);

    InstalledLibrary library;
    QString file;
    /// The library needs the kernel's device files /dev/gpibN, and tells errno in its count.
    bool hasDeviceFiles = false;

    /// Board, primary and secondary address, time-out code, END with the last byte, end character.
    LibraryFunction<int, int, int, int, int, int, int> ibdev;
    LibraryFunction<int, int, int> ibonl;
    LibraryFunction<int, int> ibclr;
    LibraryFunction<int, int, const void *, std::size_t> ibwrt;
    LibraryFunction<int, int, void *, std::size_t> ibrd;
    LibraryFunction<int, int, int, int> ibconfig;
    LibraryFunction<int> ThreadIbsta;
    LibraryFunction<int> ThreadIberr;
    LibraryFunction<long> ThreadIbcntl = nullptr; ///< null in some libraries:
    LibraryFunction<int> ThreadIbcnt = nullptr;   ///< then this one is there

    /// Bytes moved by the last call, or errno after a system error.
    [[nodiscard]] long count() const { return ThreadIbcntl ? ThreadIbcntl() : ThreadIbcnt(); }
};

} // namespace corvane
