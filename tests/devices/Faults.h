// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "devices/PlatformError.h"
#include "tests/support/Testing.h"

namespace corvane {

/// Passes when the action fails and its fault says the text; a null text: when it does not fail.
template <typename Action>
testing::AssertionResult failsSaying(const char *text, const Action &action)
{
    std::string fault;
    try {
        action();
    } catch (const PlatformError &error) {
        fault = error.what();
    }
    const bool asExpected = fault.empty() ? !text : text && fault.find(text) != std::string::npos;
    return asExpected ? testing::AssertionSuccess() : testing::AssertionFailure() << fault;
}

} // namespace corvane
