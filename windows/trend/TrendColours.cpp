// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/trend/TrendColours.h"

#include <array>

namespace corvane {

namespace {

constexpr qreal lineWidth = 1.5;

/// Apart from each other for every kind of colour vision, and with contrast to the ground.
constexpr std::array<QRgb, 8> onLight{0xff0060a8, 0xffc44e00, 0xff007a5a, 0xffa8327f,
                                      0xff7a6a00, 0xff5b4fc9, 0xffb0101e, 0xff4a4a4a};
constexpr std::array<QRgb, 8> onDark{0xff56b4e9, 0xffff9e4a, 0xff4fd1a5, 0xfff29ac8,
                                     0xfff0e442, 0xffb3a8ff, 0xffff6b6b, 0xffd8d8d8};
constexpr std::array styles{Qt::SolidLine, Qt::DashLine, Qt::DotLine, Qt::DashDotLine};

QColor between(const QColor &a, const QColor &b, float share)
{
    const auto mixed = [share](float x, float y) { return x + (y - x) * share; };
    return QColor::fromRgbF(mixed(a.redF(), b.redF()), mixed(a.greenF(), b.greenF()),
                            mixed(a.blueF(), b.blueF()));
}

} // namespace

QPen TrendColours::line(qsizetype curve) const
{
    const auto place = static_cast<size_t>(curve);
    const auto &colours = isDark() ? onDark : onLight;
    return {QColor(colours[place % colours.size()]), lineWidth,
            styles[(place + place / colours.size()) % styles.size()]};
}

TrendColours TrendColours::of(const QPalette &palette)
{
    const QColor ground = palette.color(QPalette::Active, QPalette::Base);
    const QColor ink = palette.color(QPalette::Active, QPalette::Text);
    return {ground, ink, between(ground, ink, 0.16F)};
}

TrendColours TrendColours::paper()
{
    return {Qt::white, Qt::black, between(Qt::white, Qt::black, 0.16F)};
}

} // namespace corvane
