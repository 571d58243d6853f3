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
    auto *box = new QGroupBox(tr("Binary Calculator"));
    outer->addWidget(box);
    auto *grid = new QGridLayout(box);
    grid->addWidget(new QLabel(tr("Bit")), 0, 0);
    for (int bit = bits - 1; bit >= 0; --bit) {
        QLineEdit *edit = entry(1, indexed(QStringLiteral("txtBin"), bit), tr("Bit %1").arg(bit));
        edit->setText(QStringLiteral("0"));
        edit->setAlignment(Qt::AlignCenter);
        edit->installEventFilter(this);
        txtBin[static_cast<size_t>(bit)] = edit;
        auto *number = new QLabel(QString::number(bit));
        number->setAlignment(Qt::AlignCenter);
        grid->addWidget(number, 0, bits - bit);
        grid->addWidget(edit, 1, bits - bit);
    }
    lblBinVal = readOut(4, QStringLiteral("lblBinVal"), tr("Decimal value"));
    lblHexVal = readOut(4, QStringLiteral("lblHexVal"), tr("Hexadecimal value"));
    grid->addWidget(new QLabel(tr("Decimal")), 0, bits + 1);
    grid->addWidget(lblBinVal, 1, bits + 1);
    grid->addWidget(new QLabel(tr("Hexadecimal")), 0, bits + 2);
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
            lblBinVal->setText(QStringLiteral("X"));
            lblHexVal->setText(QStringLiteral("X"));
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
