// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "devices/ProgramModule.h"

#include <QString>

class QWidget;

namespace corvane {

class Dialogs;
class TrafficEvents;

/// What the Trend window works on; all of it outlives the window.
struct TrendParts
{
    const TrafficEvents &events;
    Dialogs &dialogs;
    /// The folder that the file dialogs start in.
    QString folder;
};

/// The one function of the module with the Trend window, which is loaded when the window is first
/// opened: the start pays nothing for the library that draws.
inline constexpr programModule::Function trendFunction{"corvane-trend", "corvaneTrend"};

/// Makes the window, which the caller owns.
using TrendFunction = QWidget *(*)(const TrendParts &parts);

} // namespace corvane
