// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "windows/board/BoardPanel.h"

class QLabel;
class QLineEdit;
class QPushButton;

namespace corvane {

/// The page on which the board gets its serial number, behind an unlock phrase, and tells its
/// network settings.
class IdentityPanel : public BoardPanel
{
    Q_OBJECT

public:
    IdentityPanel(BoardLink &link, BoardSession &session);

    /// Enter (13) unlocks when the entry holds the phrase; other keys do nothing.
    void txtSnPassword_KeyDown(int keyCode);
    void cmdSetSN_Click();
    void cmdGetTcpip_Click();

    /// Two numbers around a "/", the first 0..99, the second 0..9999; more may follow.
    static bool isSerialNumber(const QString &text);

    QLineEdit *txtSnPassword;
    QLineEdit *txtSN;
    QPushButton *cmdSetSN;
    QPushButton *cmdGetTcpip;
    QLabel *lblTcpip;

private:
    QWidget *makeSerialNumber();
    QWidget *makeNetwork();
    /// cmdSetSN can be used when it is unlocked and no operation runs.
    void enableSetSN();

    bool m_unlocked = false;
};

} // namespace corvane
