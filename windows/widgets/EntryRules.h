// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>

namespace corvane {

/// What holds for the entries of every window, so that no window sees to it itself:
/// - The mouse wheel turns a box only while the box has the focus, and never gives it the focus. A
///   scroll over any other box goes on to the page it is on.
/// - The entry inside an editable box has the box's name for screen readers.
/// - An entry is one line (see OneLine.h), unless it has a validator of its own.
class EntryRules : public QObject
{
    Q_OBJECT

public:
    /// From now on, for the whole program; once is enough.
    static void install();

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    using QObject::QObject;
};

} // namespace corvane
