// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "devices/Literals.h"

#include <QString>

/// The fixed texts of the About window.
namespace corvane::aboutTexts {

inline const QString caption = u"About "_s;
inline const QString partNumber = u"Part Number: "_s;
inline const QString description =
    u"This application provides a simple, all-in-one test of the communications capabilities of "
    "Brennick products."_s;
inline const QString licence =
    u"Free software under the GNU General Public License, version 3 or later."_s;
inline const QString noSystemInfo = u"System Information Is Unavailable At This Time"_s;

} // namespace corvane::aboutTexts
