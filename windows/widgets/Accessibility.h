// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace corvane {

/// Lets screen readers and UI tests see the controls of our own, the response view and the LED,
/// with their role and value. May be called more than once.
void installAccessibility();

} // namespace corvane
