// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "windows/main/ChannelTab.h"

class QToolButton;

namespace corvane {

class PortMenu;
class SerialSession;

/// The tab of a serial Channel: the port, its settings and, on RS-485, the device's address.
class SerialTab final : public ChannelTab
{
    Q_OBJECT

public:
    explicit SerialTab(SerialSession &session, QWidget *parent = nullptr);

    /// The port entry was edited: an open port is closed.
    void txtPort_Change();
    void cboAddress485_Change();
    void cmdPorts_Click();

    bool eventFilter(QObject *watched, QEvent *event) override;

    QLineEdit *txtPort = nullptr;
    /// Opens the list of the computer's ports.
    QToolButton *cmdPorts = nullptr;
    PortMenu *mnuPorts = nullptr;
    QPushButton *cmdPortConfig = nullptr;
    /// RS-485 only.
    QComboBox *cboAddress485 = nullptr;
    QLabel *lblPrefix = nullptr;

private:
    void buildPorts();
    void buildAddress();
    void showEntries() override;

    SerialSession &m_serial;
};

} // namespace corvane
