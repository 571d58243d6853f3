// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "windows/widgets/Naming.h"

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

/// How windows make and lay out their controls: each with its name, which tests and style sheets
/// find it by, and what a screen reader says. With an index it is an element of a control array,
/// which the accessible name tells as "%1".
namespace corvane::controls {

QPushButton *button(const QString &caption, const QString &name, const QString &accessibleName,
                    int index = single);
/// A button whose click calls its owner's handler.
template <class Owner>
QPushButton *button(const QString &caption, const QString &name, const QString &accessibleName,
                    Owner *owner, void (Owner::*handler)())
{
    QPushButton *made = button(caption, name, accessibleName);
    QObject::connect(made, &QPushButton::clicked, owner, handler);
    return made;
}
/// The same of a button that a screen reader calls by its caption.
template <class Owner>
QPushButton *button(const QString &caption, const QString &name, Owner *owner,
                    void (Owner::*handler)())
{
    return button(caption, name, QString(caption).remove(u'&'), owner, handler);
}
/// A button no wider than its short caption needs, for rows of them.
QPushButton *smallButton(const QString &caption, const QString &name, const QString &accessibleName,
                         int index = single);
/// An entry box about `characters` wide.
QLineEdit *entry(int characters, const QString &name, const QString &accessibleName,
                 int index = single);
/// A read-out: plain text in a sunken frame, selectable, about `characters` wide.
QLabel *readOut(int characters, const QString &name, const QString &accessibleName,
                int index = single);
/// Two lines for where an operation is and how it ended.
QLabel *progressLine(const QString &name, const QString &accessibleName);
/// Shows a text, of a long one its start, and more of it in the tool tip.
void showText(QLabel &label, const QString &text);
/// A text that can be selected and is broken into lines.
QLabel *note(const QString &name, const QString &accessibleName = {});

/// Adds the widgets to the layout, one after the other; a null is a stretch.
void addAll(QBoxLayout &layout, std::initializer_list<QWidget *> widgets);
/// A row of them.
QHBoxLayout *row(std::initializer_list<QWidget *> widgets);
/// The Tab key goes through the widgets in this order, past those that it does not reach.
void orderTabs(QList<QWidget *> order);
/// Puts the widgets into a row of the grid, one a column from `column` on.
void addRow(QGridLayout &grid, int row, std::initializer_list<QWidget *> widgets, int column = 0);
/// The rows from one to another, which share what room the grid has to spare.
void spread(QGridLayout &grid, int first, int last);
/// The grid of a titled frame that fills the panel.
QGridLayout *frame(QWidget &panel, const QString &title);

} // namespace corvane::controls
