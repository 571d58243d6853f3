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

void CommandBox::remember()
{
    const QString command = currentText();
    const auto place = [this, &command] {
        return findText(command, Qt::MatchExactly | Qt::MatchCaseSensitive);
    };
    const QSignalBlocker quiet(this);
    if (count() >= historyLimit)
        removeItem(0);
    if (place() < 0)
        addItem(command);
    setCurrentIndex(place()); // the arrow keys go on from here
}

} // namespace corvane
