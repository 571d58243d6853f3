// SPDX-License-Identifier: GPL-3.0-or-later
#include "devices/LibraryNames.h"

namespace corvane::libraryNames {

namespace {

// The name without a version belongs to the development files, which users seldom have.
constexpr LibraryName ibLinux[] = {{"gpib", 0}, {"ni4882", -1}, {"gpib", -1}};
constexpr LibraryName ibWindows64[] = {{"ni4882", -1}, {"gpib-32", -1}};
constexpr LibraryName ibWindows32[] = {{"gpib-32", -1}, {"ni4882", -1}};

constexpr LibraryName visaLinux[] = {
    {"visa", -1},    {"visa", 0},    {"ivivisa", 0},
    {"ivivisa", -1}, {"rsvisa", -1}, {"/opt/keysight/iolibs/libktvisa32.so", -1},
};
constexpr LibraryName visaWindows64[] = {{"visa64", -1}, {"visa32", -1}};
constexpr LibraryName visaWindows32[] = {{"visa32", -1}};

// In the order of System.
constexpr std::span<const LibraryName> ibNames[] = {ibLinux, ibWindows64, ibWindows32};
constexpr std::span<const LibraryName> visaNames[] = {visaLinux, visaWindows64, visaWindows32};

} // namespace

std::span<const LibraryName> ib(System system)
{
    return ibNames[static_cast<int>(system)];
}

std::span<const LibraryName> visa(System system)
{
    return visaNames[static_cast<int>(system)];
}

} // namespace corvane::libraryNames
