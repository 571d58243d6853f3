// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/widgets/ElidedLabel.h"

#include "windows/widgets/ToolTip.h"

#include <QPainter>
#include <QStyle>

namespace corvane {

ElidedLabel::ElidedLabel(QWidget *parent)
    : QLabel(parent)
{
    setTextFormat(Qt::PlainText);
    setTextInteractionFlags(Qt::TextSelectableByMouse);
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
}

void ElidedLabel::showLong(const QString &text)
{
    setText(text);
    setToolTip(plainToolTip(text));
    setAccessibleName(text);
}

/// In the middle: the beginning says what, the end why.
QString ElidedLabel::elided(int width) const
{
    return fontMetrics().elidedText(text().simplified(), Qt::ElideMiddle, width);
}

QSize ElidedLabel::minimumSizeHint() const
{
    return {0, fontMetrics().height()};
}

void ElidedLabel::paintEvent(QPaintEvent *event)
{
    if (hasSelectedText()) { // shows what is being selected
        QLabel::paintEvent(event);
        return;
    }
    QPainter painter(this);
    style()->drawItemText(&painter, rect(), Qt::AlignLeft | Qt::AlignVCenter, palette(),
                          isEnabled(), elided(width()), foregroundRole());
}

} // namespace corvane
