// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/trend/TrendModule.h"

#include "windows/trend/TrendWindow.h"

extern "C" Q_DECL_EXPORT QWidget *corvaneTrend(const corvane::TrendParts &parts)
{
    return new corvane::TrendWindow(parts);
}
