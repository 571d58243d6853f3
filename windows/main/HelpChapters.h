// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

class QWidget;

namespace corvane {

/// The heading of the guide's chapter or section that is about a window of the program, and about
/// its showing tab where that has one of its own; empty for a window that none is about.
QString helpChapterOf(const QWidget &window);

} // namespace corvane
