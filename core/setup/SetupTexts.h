// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "devices/Literals.h"

#include <QString>

/// The texts of the GPIB search and of the port configuration.
namespace corvane::setupTexts {

inline const QString searching = u"Searching..."_s;
inline const QString status = u"Status: "_s;
inline const QString foundAt = u"Found device at: "_s;
inline const QString cancelled = u"User canceled search."_s;
inline const QString nothingFound = u"No Device Found"_s;
inline const QString notStarted = u"Search not started."_s;

/// The settings that each line is about follow.
inline const QString portUses = u"In use until Disconnect: "_s;
inline const QString portUsesApplied = u"Applied and in use: "_s;
inline const QString appliedForConnect = u"Applied, in effect from the next Connect: "_s;
inline const QString enteredOnly = u"Entered, not applied: "_s;

} // namespace corvane::setupTexts
