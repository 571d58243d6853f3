// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/text/Numbers.h"
#include "fuzz/Input.h"

#include <cmath>

using namespace corvane;
using fuzz::require;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QString text = fuzz::textOf(data, size);
    const double number = numbers::leadingNumber(text);
    require(std::isfinite(number));

    const auto whole = numbers::numericValue(text);
    require(whole.has_value() == numbers::isNumeric(text));
    require(!whole || *whole == number);

    const int integer = numbers::leadingInteger(text);
    require(numbers::leadingInteger(numbers::numberText(integer)) == integer);

    const QString fixed = numbers::fixed5(text);
    require(numbers::fixed5(fixed) == fixed);

    const auto hex = numbers::fromHex(text);
    require(!hex || (*hex >= 0 && *hex <= UINT32_MAX));
    require(numbers::fromHex(numbers::toHex(integer)) == static_cast<uint32_t>(integer));
    return 0;
}
