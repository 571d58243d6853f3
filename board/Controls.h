#pragma once

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

/// How the board window's pages make their controls: each with its name, which tests and style
/// sheets find it by, and what a screen reader says.
namespace corvane::controls {

/// An element of a control array: "name_index".
QString indexed(const QString &name, int index);

template <class Control>
Control *named(Control *control, const QString &name, const QString &accessibleName)
{
    control->setObjectName(name);
    control->setAccessibleName(accessibleName);
    return control;
}

QPushButton *button(const QString &caption, const QString &name, const QString &accessibleName);
/// A button no wider than its short caption needs, for rows of them.
QPushButton *smallButton(const QString &caption, const QString &name,
                         const QString &accessibleName);
/// An entry box about `characters` wide.
QLineEdit *entry(int characters, const QString &name, const QString &accessibleName);
/// A read-out: plain text in a sunken frame, selectable, about `characters` wide.
QLabel *readOut(int characters, const QString &name, const QString &accessibleName);

} // namespace corvane::controls
