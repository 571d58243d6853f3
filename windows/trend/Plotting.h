// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtGlobal>

// The plotting library's header is written in the toolkit's keywords, which are switched off here.
#define signals Q_SIGNALS
#define slots Q_SLOTS
// NOLINTNEXTLINE(bugprone-macro-parentheses): a declaration stands in no parentheses
#define foreach(variable, container) for (variable : container)
#include <qcustomplot.h>
#undef signals
#undef slots
#undef foreach
