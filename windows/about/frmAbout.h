// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "windows/widgets/ReopenedDialog.h"

class QLabel;
class QLayout;
class QPushButton;

namespace corvane {

class SystemInfo;

/// The About window: who made the program and which one it is. It starts the system-information
/// tool through SystemInfo and leaves the GPIB control's about box to others.
class frmAbout : public ReopenedDialog
{
    Q_OBJECT

public:
    /// `systemInfo` must outlive the window.
    explicit frmAbout(SystemInfo &systemInfo, QWidget *parent = nullptr);

    // Event handlers
    void Form_Load() override;
    void cmdOK_Click() { close(); }
    void cmdSysInfo_Click();
    void cmdQBXAbout_Click() { Q_EMIT gpibAboutRequested(); }

    QLabel *lblTitle = nullptr;
    QLabel *lblProductName = nullptr;
    QLabel *lblVersion = nullptr;
    QLabel *lblFileDescription = nullptr;
    QLabel *lblDescription = nullptr;
    QLabel *lblCopyRight = nullptr;
    QLabel *lblLicence = nullptr;
    QPushButton *cmdOK = nullptr;
    QPushButton *cmdSysInfo = nullptr;
    QPushButton *cmdQBXAbout = nullptr;

Q_SIGNALS:
    void gpibAboutRequested();

private:
    QLabel *createLabel(const QString &name);
    QLayout *createTexts();
    QLayout *createButtons();

    SystemInfo &m_systemInfo;
};

} // namespace corvane
