// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "devices/PlatformError.h"

namespace corvane {

/// No device takes what was written to a bus address. The adapter itself works: a search goes on.
class DeviceAbsent : public PlatformError
{
public:
    using PlatformError::PlatformError;
};

} // namespace corvane
