#include "windows/board/BinaryCalculator.h"

#include "core/text/Numbers.h"
#include "windows/widgets/Controls.h"

#include <QEvent>
#include <QGridLayout>
#include <QGroupBox>

namespace corvane {

using namespace controls;

BinaryCalculator::BinaryCalculator()
{
    auto *outer = new QVBoxLayout(this);
    outer->setContentsMargins({});
    auto *box = new QGroupBox(u"Binary Calculator"_s);
    outer->addWidget(box);
    auto *grid = new QGridLayout(box);
    grid->addWidget(new QLabel(u"Bit"_s), 0, 0);
    for (int bit = bits - 1; bit >= 0; --bit) {
        QLineEdit *edit = entry(1, indexed(u"txtBin"_s, bit), u"Bit %1"_s.arg(bit));
        edit->setText(u"0"_s);
        edit->setAlignment(Qt::AlignCenter);
        edit->installEventFilter(this);
        txtBin[static_cast<size_t>(bit)] = edit;
        auto *number = new QLabel(QString::number(bit));
        number->setAlignment(Qt::AlignCenter);
        grid->addWidget(number, 0, bits - bit);
        grid->addWidget(edit, 1, bits - bit);
    }
    lblBinVal = readOut(4, u"lblBinVal"_s, u"Decimal value"_s);
    lblHexVal = readOut(4, u"lblHexVal"_s, u"Hexadecimal value"_s);
    grid->addWidget(new QLabel(u"Decimal"_s), 0, bits + 1);
    grid->addWidget(lblBinVal, 1, bits + 1);
    grid->addWidget(new QLabel(u"Hexadecimal"_s), 0, bits + 2);
    grid->addWidget(lblHexVal, 1, bits + 2);
    grid->setColumnStretch(bits + 1, 1);
    grid->setColumnStretch(bits + 2, 1);
    txtBin_KeyUp();
}

void BinaryCalculator::txtBin_KeyUp()
{
    int value = 0;
    for (size_t bit = 0; bit < txtBin.size(); ++bit) {
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
