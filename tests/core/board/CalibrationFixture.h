// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "tests/core/board/BoardFixture.h"
#include "windows/board/CalibrationPanel.h"

namespace corvane {

/// A board whose channel 3 reads as scripted, and the panel that calibrates it.
class CalibrationTest : public BoardTest
{
protected:
    CalibrationTest()
    {
        channels.meter = {"0.52", "2.04", "1.9999"};
        channels.answer = [this](const QString &command) {
            if (command == u"ADC?  3\r"_s && !adcReplies.isEmpty())
                return adcReplies.takeFirst();
            if (command == u"DAC?  3\r"_s)
                return dacReadBack;
            return command == u"ADC? 3\r"_s ? adcReadBack : QString();
        };
        act(board, "txtChannel=3");
    }

    [[nodiscard]] QStringList column(int channel) const
    {
        QStringList cells;
        for (int row = 1; row < CalibrationTable::rows; ++row)
            cells << panel.table().text(row, CalibrationTable::columnOf(channel));
        return cells;
    }
    [[nodiscard]] bool isIdle() const
    {
        return !panel.cmdCal->isHidden() && panel.cmdCancelCal->isHidden() &&
               !panel.cmdScan->isHidden() && panel.cmdCancelScan->isHidden() &&
               panel.cmdCal->isEnabled() && board.cursor().shape() == Qt::ArrowCursor &&
               !board.session().isRunning();
    }

    CalibrationPanel &panel = *board.calibration;
    QStringList adcReplies = latin({"0.51,1.0,0.0\r\n", "2.01,1.0,0.0\r\n"});
    QString dacReadBack = u"2,.9901,-.02\r\n"_s;
    QString adcReadBack = u"1.99,1.0099,.01\r\n"_s;
};

} // namespace corvane
