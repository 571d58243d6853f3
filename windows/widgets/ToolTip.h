// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "devices/Literals.h"

#include <QString>

namespace corvane {

/// A tool tip that shows any text as it stands, broken into lines; of a long one, its start.
inline QString plainToolTip(const QString &text)
{
    constexpr qsizetype longest = 1000;
    return text.isEmpty() ? QString() : u"<qt>%1</qt>"_s.arg(text.left(longest).toHtmlEscaped());
}

} // namespace corvane
