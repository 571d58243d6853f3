// SPDX-License-Identifier: GPL-3.0-or-later
#include "devices/GpibAddress.h"
#include "devices/PlatformError.h"
#include "fuzz/Input.h"

using namespace corvane;
using fuzz::require;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    try {
        const auto address = GpibAddress::parse(fuzz::textOf(data, size));
        require(address.board >= 0 && address.board < GpibAddress::boardCount);
        require(address.primary >= 0 && address.primary <= 30);
        require(GpibAddress::parse(address.toString()) == address);
    } catch (const PlatformError &error) {
        require(!error.description().isEmpty());
    }
    return 0;
}
