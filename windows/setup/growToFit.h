#pragma once

#include <QLayout>
#include <QWidget>

#include <algorithm>

namespace corvane {

/// Makes a window tall enough for its wrapped texts at its present width; never shrinks it.
inline void growToFit(QWidget &window)
{
    QLayout &layout = *window.layout();
    layout.activate();
    window.resize(window.width(),
                  std::max(window.height(), layout.totalHeightForWidth(window.width())));
}

} // namespace corvane
