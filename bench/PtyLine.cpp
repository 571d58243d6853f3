// SPDX-License-Identifier: GPL-3.0-or-later
#include "bench/PtyLine.h"

#ifdef __linux__
// A file of its own: the kernel's header, which knows every rate, and the C library's exclude each
// other.
#include <asm/termbits.h>
#include <sys/ioctl.h>
#endif

namespace corvane::bench {

std::optional<PtyLine> lineOf([[maybe_unused]] int descriptor)
{
#ifdef __linux__
    termios2 settings{};
    if (::ioctl(descriptor, TCGETS2, &settings) == 0)
        return PtyLine{settings.c_ospeed, (settings.c_cflag & CSTOPB) != 0 ? 2 : 1};
#endif
    return std::nullopt;
}

} // namespace corvane::bench
