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

} // namespace

std::span<const LibraryName> ib(System system)
{
    switch (system) {
    case System::Windows64:
        return ibWindows64;
    case System::Windows32:
        return ibWindows32;
    case System::Linux:
        break;
    }
    return ibLinux;
}

std::span<const LibraryName> visa(System system)
{
    switch (system) {
    case System::Windows64:
        return visaWindows64;
    case System::Windows32:
        return visaWindows32;
    case System::Linux:
        break;
    }
    return visaLinux;
}

} // namespace corvane::libraryNames
