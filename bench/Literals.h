// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace corvane::bench {

/// u"text"_s is a QString, "text"_L1 a QLatin1StringView, both made when the program is built.
using namespace Qt::StringLiterals;

} // namespace corvane::bench
