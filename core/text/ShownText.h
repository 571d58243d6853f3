// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/text/LineEnds.h"
#include "devices/Literals.h"

#include <QString>

namespace corvane {

/// A device's text as a read-out, a cell or a message box shows it: on one line, and of a long one
/// its start. Laying out megabytes would stall the window.
inline QString shownText(const QString &text, qsizetype longest = 200)
{
    const bool isCut = text.size() > longest;
    const QString line = lineEnds::removed(text.left(longest));
    return isCut ? line + u"..."_s : line;
}

} // namespace corvane
