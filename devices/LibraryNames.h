// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <span>

/// The file names under which GPIB libraries are installed, in the order they are tried. Plain
/// C++, so that another compiler can check the names of its own system.
namespace corvane::libraryNames {

enum class System { Linux, Windows64, Windows32 };

#if defined(_WIN64)
inline constexpr System thisSystem = System::Windows64;
#elif defined(_WIN32)
inline constexpr System thisSystem = System::Windows32;
#else
inline constexpr System thisSystem = System::Linux;
#endif

struct LibraryName
{
    /// Without prefix, suffix and version; or a whole path.
    const char *name;
    /// The number behind the file name's suffix; -1: none.
    int version;
};

/// Libraries with the ib* functions.
std::span<const LibraryName> ib(System system);
/// Libraries with the vi* functions.
std::span<const LibraryName> visa(System system);

} // namespace corvane::libraryNames
