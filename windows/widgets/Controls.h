#pragma once

#include "windows/widgets/Naming.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

/// How the board window's pages make their controls: each with its name, which tests and style
/// sheets find it by, and what a screen reader says.
namespace corvane::controls {

QPushButton *button(const QString &caption, const QString &name, const QString &accessibleName);
/// A button no wider than its short caption needs, for rows of them.
QPushButton *smallButton(const QString &caption, const QString &name,
                         const QString &accessibleName);
/// An entry box about `characters` wide.
QLineEdit *entry(int characters, const QString &name, const QString &accessibleName);
/// A read-out: plain text in a sunken frame, selectable, about `characters` wide.
QLabel *readOut(int characters, const QString &name, const QString &accessibleName);
/// Two lines for where an operation is and how it ended.
QLabel *progressLine(const QString &name, const QString &accessibleName);
/// Shows a text, of a long one its start, and more of it in the tool tip.
void showText(QLabel &label, const QString &text);

} // namespace corvane::controls
