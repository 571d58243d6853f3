// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/main/CommandBox.h"

#include <QLineEdit>
#include <QStyleOptionComboBox>

namespace corvane {

namespace {

constexpr int longestCommand = 1'000'000;
constexpr int shownCharacters = 20;

} // namespace

CommandBox::CommandBox(QWidget *parent)
    : EditableBox(parent)
{
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    lineEdit()->setMaxLength(longestCommand);
}

QSize CommandBox::sizeHint() const
{
    QStyleOptionComboBox option;
    initStyleOption(&option);
    const QSize text(shownCharacters * fontMetrics().horizontalAdvance(u'x'),
                     lineEdit()->sizeHint().height());
    return style()->sizeFromContents(QStyle::CT_ComboBox, &option, text, this);
}

void CommandBox::showCommand(const QString &command)
{
    if (currentText() != command)
        setEditText(command);
}

void CommandBox::showHistory(const QStringList &history, const QString &last)
{
    const QSignalBlocker quiet(this);
    if (count() > 0 && itemText(0) != history.value(0))
        removeItem(0);
    for (qsizetype place = count(); place < history.size(); ++place)
        addItem(history.at(place));
    setCurrentIndex(static_cast<int>(history.indexOf(last))); // the arrow keys go on from here
}

} // namespace corvane
