// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/widgets/Led.h"

#include "devices/Literals.h"

#include <QAccessible>
#include <QIcon>
#include <QPainter>

namespace corvane {

Led::Led(QWidget *parent)
    : QWidget(parent)
{
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    QSizePolicy policy = sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    setSizePolicy(policy);
}

QString Led::text() const
{
    return isBright() ? u"bright"_s : u"dark"_s;
}

void Led::setBright(bool bright)
{
    const QRgb colour = bright ? brightGreen : darkGreen;
    if (colour == m_colour)
        return;
    m_colour = colour;
    QAccessibleValueChangeEvent changed(this, text());
    QAccessible::updateAccessibility(&changed);
    update();
}

void Led::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF disc = QRectF(rect()).adjusted(1.5, 1.5, -1.5, -1.5);
    if (isBright()) {
        QColor halo(m_colour);
        halo.setAlpha(90);
        painter.setPen(Qt::NoPen);
        painter.setBrush(halo);
        painter.drawEllipse(QRectF(rect()));
    }
    painter.setPen(QPen(QColor(0, 90, 0), 1.2));
    painter.setBrush(QColor(m_colour));
    painter.drawEllipse(disc.adjusted(1, 1, -1, -1));
}

QIcon Led::tabMark(bool open)
{
    QPixmap pixmap(12, 12);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(open ? QColor(0, 110, 0) : QColor(140, 140, 140), 1.5));
    painter.setBrush(open ? QBrush(QColor(darkGreen)) : QBrush(Qt::NoBrush));
    painter.drawEllipse(QRectF(2, 2, 8, 8));
    return pixmap;
}

} // namespace corvane
