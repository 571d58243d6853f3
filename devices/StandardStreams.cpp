// SPDX-License-Identifier: GPL-3.0-or-later
#include "devices/StandardStreams.h"

#ifdef _WIN32
#include <cstdio>
#include <io.h>
#include <windows.h>
#else
#include <csignal>
#include <fcntl.h>
#include <unistd.h>
#endif

namespace corvane {

#ifdef _WIN32

namespace {

/// What is redirected to a file or a pipe stays there.
void printToConsole(std::FILE *stream)
{
    if (_fileno(stream) < 0) [[maybe_unused]]
        const auto *opened = std::freopen("CONOUT$", "w", stream);
}

} // namespace

void standardStreams::prepare()
{
    if (AttachConsole(ATTACH_PARENT_PROCESS) == 0)
        return;
    SetConsoleOutputCP(CP_UTF8);
    printToConsole(stdout);
    printToConsole(stderr);
}

bool standardStreams::canPrint()
{
    return _fileno(stdout) >= 0;
}

#else

namespace {

/// Opening takes the lowest number that is free, which is the closed stream's.
void holdIfClosed(int stream, int mode)
{
    if (::fcntl(stream, F_GETFD) < 0) [[maybe_unused]]
        const int held = ::open("/dev/null", mode);
}

} // namespace

void standardStreams::prepare()
{
    holdIfClosed(STDIN_FILENO, O_RDONLY);
    holdIfClosed(STDOUT_FILENO, O_RDONLY); // so that writing to it fails, as it would have
    holdIfClosed(STDERR_FILENO, O_WRONLY);
    // A write that cannot be made fails, with its reason, instead of ending the process.
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
}

bool standardStreams::canPrint()
{
    const int flags = ::fcntl(STDOUT_FILENO, F_GETFL);
    return flags >= 0 && (flags & O_ACCMODE) != O_RDONLY;
}

#endif

} // namespace corvane
