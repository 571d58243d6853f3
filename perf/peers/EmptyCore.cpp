// SPDX-License-Identifier: GPL-3.0-or-later
// A QCoreApplication that does nothing: the least that an unattended run can start with. The
// measure of its start. Prints its memory.
#include "perf/Harness.h"

#include <QCoreApplication>

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    std::printf("memory=%f\n", corvane::perf::residentBytes());
    return 0;
}
