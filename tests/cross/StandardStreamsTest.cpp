// SPDX-License-Identifier: GPL-3.0-or-later
#include "devices/StandardStreams.h"

#include "Check.h"

using namespace corvane;

int main()
{
    standardStreams::prepare();
    check::that(standardStreams::canPrint(), "what is redirected can be printed to");
    check::that(std::puts("printed") >= 0 && std::fflush(stdout) == 0, "printing arrives");
    return check::result();
}
