// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

/// The display that the environment names, before the toolkit is asked.
namespace corvane::display {

[[nodiscard]] bool isThere();
/// What is said when the toolkit cannot start on it.
[[nodiscard]] QString fault();

} // namespace corvane::display
