// SPDX-License-Identifier: GPL-3.0-or-later
#include "devices/LibraryNames.h"

#include "Check.h"

#include <string>
#include <windows.h>

using namespace corvane::libraryNames;

int main()
{
    check::that(thisSystem == System::Windows64, "the system is known");
    for (const auto &names : {ib(thisSystem), visa(thisSystem)}) {
        check::that(!names.empty(), "there are names to try");
        for (const LibraryName &library : names) {
            const std::string file = library.name;
            check::that(file.find('/') == std::string::npos && library.version == -1,
                        "a name has no path and no version here");
            check::that(LoadLibraryA(file.c_str()) || GetLastError() == ERROR_MOD_NOT_FOUND,
                        "a missing library is told as missing");
        }
    }
    check::that(std::string(ib(thisSystem)[0].name) == "ni4882", "the 64-bit library comes first");
    return check::result();
}
