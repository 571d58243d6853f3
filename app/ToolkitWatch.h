// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace corvane {

/// Stands between the toolkit and standard error, from before the application object is made until
/// the program ends by itself. What the toolkit says is kept back unless CORVANE_DEBUG is set.
/// Where the toolkit would end the program, as no display can be opened or the display has gone
/// away, it is said in plain words and the program ends with `exitCode`.
class ToolkitWatch
{
public:
    /// `cannotStart` is what is said when the application object cannot be made; without one it can
    /// always.
    ToolkitWatch(const QString &cannotStart, int exitCode);
    ToolkitWatch();
    ~ToolkitWatch();
    ToolkitWatch(const ToolkitWatch &) = delete;
    ToolkitWatch &operator=(const ToolkitWatch &) = delete;

    /// The application object is made.
    static void started();
};

} // namespace corvane
