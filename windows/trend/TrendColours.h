// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QColor>
#include <QPalette>
#include <QPen>

namespace corvane {

/// The colours of a trend's picture: on the window's own ground, light or dark, or on paper.
struct TrendColours
{
    QColor ground;
    QColor ink;
    QColor grid;

    [[nodiscard]] bool isDark() const { return ground.lightness() < 128; }
    /// The line of a curve by its place. Of the first 32 no two have both the same colour and the
    /// same dashes, so that they can be told apart without colours too.
    [[nodiscard]] QPen line(qsizetype curve) const;

    static TrendColours of(const QPalette &palette);
    static TrendColours paper();
};

} // namespace corvane
