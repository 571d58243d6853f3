// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "devices/Literals.h"

#include <QString>

namespace corvane {

/// Gives a control its name (what tests and style sheets find it by) and its accessible name (what
/// a screen reader says), and returns it.
template <class Control>
Control *named(Control *control, const QString &name, const QString &accessibleName)
{
    control->setObjectName(name);
    control->setAccessibleName(accessibleName);
    return control;
}

/// The same for a control that a screen reader calls by its caption.
template <class Control>
Control *named(Control *control, const QString &name)
{
    return named(control, name, control->text().remove(u'&'));
}

/// The name of an element of a control array: "name_index".
QString indexed(const QString &name, auto index)
{
    return u"%1_%2"_s.arg(name).arg(index);
}

/// The index of a control that there is once.
inline constexpr int single = -1;

/// The names of a control that may be an element of a control array: there the accessible name has
/// a "%1" for the index.
template <class Control>
Control *named(Control *control, const QString &name, const QString &accessibleName, int index)
{
    return index == single ? named(control, name, accessibleName)
                           : named(control, indexed(name, index), accessibleName.arg(index));
}

} // namespace corvane
