#pragma once

#include "devices/Literals.h"

#include <QString>

namespace corvane {

/// A device's text as a read-out, a cell or a message box shows it: on one line, and of a long one
/// its start. Laying out megabytes would stall the window.
inline QString shownText(const QString &text, qsizetype longest = 200)
{
    const bool isCut = text.size() > longest;
    QString line = isCut ? text.left(longest) : text;
    line.remove(u'\r').remove(u'\n');
    return isCut ? line + u"..."_s : line;
}

} // namespace corvane
