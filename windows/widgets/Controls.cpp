// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/widgets/Controls.h"

#include "core/text/ShownText.h"
#include "windows/widgets/ToolTip.h"

#include <QGroupBox>

namespace corvane::controls {

namespace {

int widthOf(const QWidget &widget, int characters)
{
    const int margin = 16;
    return widget.fontMetrics().horizontalAdvance(QString(characters, u'0')) + margin;
}

} // namespace

QPushButton *button(const QString &caption, const QString &name, const QString &accessibleName,
                    int index)
{
    return named(new QPushButton(caption), name, accessibleName, index);
}

QPushButton *smallButton(const QString &caption, const QString &name, const QString &accessibleName,
                         int index)
{
    QPushButton *small = button(caption, name, accessibleName, index);
    const auto letters = static_cast<int>(QString(caption).remove(u'&').size());
    small->setFixedWidth(widthOf(*small, letters) + 8);
    return small;
}

QLineEdit *entry(int characters, const QString &name, const QString &accessibleName, int index)
{
    auto *edit = named(new QLineEdit, name, accessibleName, index);
    edit->setMinimumWidth(widthOf(*edit, characters));
    return edit;
}

QLabel *readOut(int characters, const QString &name, const QString &accessibleName, int index)
{
    auto *label = named(new QLabel, name, accessibleName, index);
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
    QLabel *label = note(name, accessibleName);
    label->setTextFormat(Qt::PlainText);
    label->setAlignment(Qt::AlignLeft | Qt::AlignTop);
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

QLabel *note(const QString &name, const QString &accessibleName)
{
    auto *label = named(new QLabel, name, accessibleName);
    label->setWordWrap(true);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    return label;
}

void addAll(QBoxLayout &layout, std::initializer_list<QWidget *> widgets)
{
    for (QWidget *widget : widgets) {
        if (widget)
            layout.addWidget(widget);
        else
            layout.addStretch();
    }
}

QHBoxLayout *row(std::initializer_list<QWidget *> widgets)
{
    auto *layout = new QHBoxLayout;
    addAll(*layout, widgets);
    return layout;
}

void orderTabs(QList<QWidget *> order)
{
    order.removeIf([](const QWidget *widget) {
        return widget == nullptr || (widget->focusPolicy() & Qt::TabFocus) == 0;
    });
    for (qsizetype place = 1; place < order.size(); ++place)
        QWidget::setTabOrder(order.at(place - 1), order.at(place));
}

void addRow(QGridLayout &grid, int row, std::initializer_list<QWidget *> widgets, int column)
{
    for (QWidget *widget : widgets)
        grid.addWidget(widget, row, column++);
}

void spread(QGridLayout &grid, int first, int last)
{
    for (int row = first; row <= last; ++row) {
        grid.setRowStretch(row, 1);
        for (int column = 0; column < grid.columnCount(); ++column) {
            // Without it a row is no taller than its controls.
            if (QLayoutItem *item = grid.itemAtPosition(row, column))
                item->setAlignment(item->alignment() | Qt::AlignVCenter);
        }
    }
}

QGridLayout *frame(QWidget &panel, const QString &title)
{
    auto *outer = new QVBoxLayout(&panel);
    outer->setContentsMargins({});
    auto *box = new QGroupBox(title);
    outer->addWidget(box);
    return new QGridLayout(box);
}

} // namespace corvane::controls
