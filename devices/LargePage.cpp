// SPDX-License-Identifier: GPL-3.0-or-later
#include "devices/LargePage.h"

#include <new>

#ifdef __linux__
#include <sys/mman.h>
#endif

namespace corvane {

namespace {

constexpr std::align_val_t alignment{largePageSize};

} // namespace

void LargePageDeleter::operator()(char *page) const
{
    ::operator delete[](page, alignment);
}

LargePage makeLargePage()
{
    LargePage page(static_cast<char *>(::operator new[](largePageSize, alignment)));
#ifdef __linux__
    // Where it is refused the pages are small ones.
    [[maybe_unused]] const int refused = madvise(page.get(), largePageSize, MADV_HUGEPAGE);
#endif
    return page;
}

} // namespace corvane
