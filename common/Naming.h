#pragma once

#include <QString>
#include <QWidget>

namespace corvane {

/// Gives a control its name (what tests and style sheets look up) and its accessible name (what a
/// screen reader says).
inline void nameControl(QWidget &control, const QString &name, const QString &accessibleName)
{
    control.setObjectName(name);
    control.setAccessibleName(accessibleName);
}

} // namespace corvane
