// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace corvane::socketTexts {

/// The message for a failed start of the sockets library.
QString startFailure(int code);

/// The message for any other failure of the sockets library.
QString failure(int code);

} // namespace corvane::socketTexts
