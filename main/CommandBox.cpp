#include "main/CommandBox.h"

#include <QFontDatabase>
#include <QLineEdit>

namespace corvane {

namespace {

constexpr int longestCommand = 1'000'000;

} // namespace

CommandBox::CommandBox(QWidget *parent)
    : QComboBox(parent)
{
    setEditable(true);
    setInsertPolicy(QComboBox::NoInsert);
    setCompleter(nullptr);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setMinimumContentsLength(20);
    setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    lineEdit()->setMaxLength(longestCommand);
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
