#pragma once

#include "platform/PlatformError.h"

#include <string>

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

} // namespace corvane
