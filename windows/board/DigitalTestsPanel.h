// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/board/DigitalTests.h"
#include "windows/board/BoardPanel.h"

class QLabel;
class QPushButton;

namespace corvane {

/// Starts and cancels the automatic port tests and shows where they are. The tests themselves are
/// DigitalTests'.
class DigitalTestsPanel : public BoardPanel
{
    Q_OBJECT

public:
    DigitalTestsPanel(BoardLink &link, BoardSession &session);

    void cmdDigTestFull_Click();
    void cmdDigTestWrite_Click();
    void cmdDigTestRead_Click();
    void cmdDigTestAbort_Click();

    [[nodiscard]] DigitalTests &sequences() { return m_tests; }

    QPushButton *cmdDigTestFull;
    QPushButton *cmdDigTestWrite;
    QPushButton *cmdDigTestRead;
    QPushButton *cmdDigTestAbort;
    QLabel *lblChannel;
    QLabel *lblPData;
    QLabel *lblPortValue;
    QLabel *lblProgress;

private:
    void run(void (DigitalTests::*test)());
    void showBusy(bool busy);

    DigitalTests m_tests;
};

} // namespace corvane
