#include "windows/widgets/Controls.h"

#include "core/text/ShownText.h"
#include "windows/widgets/ToolTip.h"

namespace corvane::controls {

namespace {

int widthOf(const QWidget &widget, int characters)
{
    const int margin = 16;
    return widget.fontMetrics().horizontalAdvance(QString(characters, u'0')) + margin;
}

} // namespace

QPushButton *button(const QString &caption, const QString &name, const QString &accessibleName)
{
    return named(new QPushButton(caption), name, accessibleName);
}

QPushButton *smallButton(const QString &caption, const QString &name, const QString &accessibleName)
{
    QPushButton *small = button(caption, name, accessibleName);
    const auto letters = static_cast<int>(QString(caption).remove(u'&').size());
    small->setFixedWidth(widthOf(*small, letters) + 8);
    return small;
}

QLineEdit *entry(int characters, const QString &name, const QString &accessibleName)
{
    auto *edit = named(new QLineEdit, name, accessibleName);
    edit->setMinimumWidth(widthOf(*edit, characters));
    return edit;
}

QLabel *readOut(int characters, const QString &name, const QString &accessibleName)
{
    auto *label = named(new QLabel, name, accessibleName);
    label->setTextFormat(Qt::PlainText);
    label->setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    label->setMinimumWidth(widthOf(*label, characters));
    label->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    label->setFixedHeight(QLineEdit().sizeHint().height());
    return label;
}

QLabel *progressLine(const QString &name, const QString &accessibleName)
{
    auto *label = named(new QLabel, name, accessibleName);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    label->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    label->setFixedHeight(2 * label->fontMetrics().lineSpacing());
    return label;
}

void showText(QLabel &label, const QString &text)
{
    constexpr qsizetype longest = 300; // two lines of a progress line
    label.setText(shownText(text, longest));
    label.setToolTip(label.text() == text ? QString() : plainToolTip(text));
}

} // namespace corvane::controls
