// SPDX-License-Identifier: GPL-3.0-or-later
#include "devices/IbLibrary.h"

#include "devices/Literals.h"

#include <algorithm>

namespace corvane {

namespace {

struct Timeout
{
    int ms;
    int code;
};

constexpr Timeout timeouts[] = {{1, 5},      {3, 6},      {10, 7},     {30, 8},
                                {100, 9},    {300, 10},   {1000, 11},  {3000, 12},
                                {10000, 13}, {30000, 14}, {100000, 15}};

} // namespace

IbLibrary::IbLibrary(const QString &path)
    : library(u"GPIB library"_s, libraryNames::ib(libraryNames::thisSystem), path)
    , file(library.file("ibdev"))
{
    library.require(ibdev, "ibdev");
    library.require(ibonl, "ibonl");
    library.require(ibclr, "ibclr");
    library.require(ibwrt, "ibwrt");
    library.require(ibrd, "ibrd");
    library.require(ibconfig, "ibconfig");
    library.require(ThreadIbsta, "ThreadIbsta");
    library.require(ThreadIberr, "ThreadIberr");
    if (!library.find(ThreadIbcntl, "ThreadIbcntl"))
        library.require(ThreadIbcnt, "ThreadIbcnt");
    const char *(*errorString)(int) = nullptr;
    hasDeviceFiles = library.find(errorString, "gpib_error_string");
}

int IbLibrary::timeoutCode(int ms)
{
    const auto found =
        std::ranges::find_if(timeouts, [ms](const Timeout &row) { return row.ms >= ms; });
    return found == std::end(timeouts) ? std::rbegin(timeouts)->code : found->code;
}

} // namespace corvane
