// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "windows/widgets/ReopenedDialog.h"

class QLabel;
class QProgressBar;
class QPushButton;
class QTimer;

namespace corvane {

class Dialogs;
class GpibSearch;
struct Module1;

/// The "GPIB Address Search" window: starts a search as soon as it is shown, displays its progress,
/// cancels and repeats it. The search itself is GpibSearch's.
class frmGPIB : public ReopenedDialog
{
    Q_OBJECT

public:
    frmGPIB(GpibSearch &search, Module1 &module, Dialogs &dialogs, QWidget *parent = nullptr);

    // Event handlers
    void Form_Load() override;
    void tmrStart_Timer();
    void cmdSearch_Click();
    void cmdCancel_Click();
    void cmdClose_Click() { close(); }

    QLabel *lblSearch = nullptr;
    QProgressBar *progress = nullptr; ///< addresses probed, of 124
    QLabel *lblFaults = nullptr;      ///< what was passed over, and why
    QPushButton *cmdSearch = nullptr;
    QPushButton *cmdCancel = nullptr;
    QPushButton *cmdClose = nullptr;
    QTimer *tmrStart = nullptr;

private:
    void createControls();
    void endProcedure() override;
    void connectControls();
    void startSearch();
    void showFaults(const QString &faults);
    void showButtons(bool searching);

    GpibSearch &m_search;
    Module1 &m_module;
    Dialogs &m_dialogs;
};

} // namespace corvane
