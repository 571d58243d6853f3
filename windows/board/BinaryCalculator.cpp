// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/board/BinaryCalculator.h"

#include "core/text/Numbers.h"
#include "windows/widgets/Controls.h"

#include <QEvent>

namespace corvane {

using namespace controls;

BinaryCalculator::BinaryCalculator()
{
    QGridLayout *grid = frame(*this, u"Binary Calculator"_s);
    grid->addWidget(new QLabel(u"Bit"_s), 0, 0);
    for (int bit = bits - 1; bit >= 0; --bit) {
        QLineEdit *edit = entry(1, u"txtBin"_s, u"Bit %1"_s, bit);
        edit->setText(u"0"_s);
        edit->setAlignment(Qt::AlignCenter);
        edit->installEventFilter(this);
        txtBin[bit] = edit;
        auto *number = new QLabel(QString::number(bit));
        number->setAlignment(Qt::AlignCenter);
        grid->addWidget(number, 0, bits - bit);
        grid->addWidget(edit, 1, bits - bit);
    }
    lblBinVal = readOut(4, u"lblBinVal"_s, u"Decimal value"_s);
    lblHexVal = readOut(4, u"lblHexVal"_s, u"Hexadecimal value"_s);
    addRow(*grid, 0, {new QLabel(u"Decimal"_s), new QLabel(u"Hexadecimal"_s)}, bits + 1);
    addRow(*grid, 1, {lblBinVal, lblHexVal}, bits + 1);
    grid->setColumnStretch(bits + 1, 1);
    grid->setColumnStretch(bits + 2, 1);
    txtBin_KeyUp();
}

void BinaryCalculator::txtBin_KeyUp()
{
    int value = 0;
    for (int bit = 0; bit < bits; ++bit) {
        const auto digit = numbers::numericValue(txtBin[bit]->text());
        if (!digit || (*digit != 0 && *digit != 1)) {
            lblBinVal->setText(u"X"_s);
            lblHexVal->setText(u"X"_s);
            return;
        }
        if (*digit == 1)
            value |= 1 << bit;
    }
    lblBinVal->setText(QString::number(value));
    lblHexVal->setText(numbers::toHex(value));
}

bool BinaryCalculator::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::KeyRelease)
        txtBin_KeyUp();
    return QWidget::eventFilter(watched, event);
}

} // namespace corvane
