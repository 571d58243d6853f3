// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QComboBox>

namespace corvane {

/// A combo box that takes any text of one line: nothing is completed or corrected, and what is
/// typed stays out of its list.
///
/// QComboBox::setEditable() would build the pop-up list and a completer at once. A dozen boxes in
/// the main window spend a tenth of its start on them, so here the list waits until it is opened.
class EditableBox : public QComboBox
{
public:
    explicit EditableBox(QWidget *parent = nullptr);
};

} // namespace corvane
