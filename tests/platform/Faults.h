#pragma once

#include "platform/PlatformError.h"

#include <gtest/gtest.h>

namespace corvane {

/// What the PlatformError of an action says; empty when there was none.
template <typename Action>
std::string faultOf(const Action &action)
{
    try {
        action();
    } catch (const PlatformError &fault) {
        return fault.what();
    }
    return {};
}

/// Passes when the action fails and its fault says the text; a null text: when it does not fail.
template <typename Action>
testing::AssertionResult failsSaying(const char *text, const Action &action)
{
    const std::string fault = faultOf(action);
    const bool asExpected =
        text ? !fault.empty() && fault.find(text) != std::string::npos : fault.empty();
    return asExpected ? testing::AssertionSuccess() : testing::AssertionFailure() << fault;
}

} // namespace corvane
