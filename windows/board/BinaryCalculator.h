// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "windows/widgets/ControlArray.h"

#include <QWidget>

class QLabel;
class QLineEdit;

namespace corvane {

/// Turns eight bits into a decimal and a hexadecimal number. Knows nothing of the board.
class BinaryCalculator : public QWidget
{
    Q_OBJECT

public:
    static constexpr int bits = 8;

    BinaryCalculator();

    void txtBin_KeyUp();

    /// Index is the bit's number.
    ControlArray<QLineEdit, bits> txtBin{};
    QLabel *lblBinVal;
    QLabel *lblHexVal;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
};

} // namespace corvane
