// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "windows/main/ChannelTab.h"

#include <memory>

namespace corvane {

class BusyPointer;
class GpibSession;

/// The tab of the IEEE 488 Channel: the board, the address and the time-out.
class GpibTab final : public ChannelTab
{
    Q_OBJECT

public:
    explicit GpibTab(GpibSession &session, QWidget *parent = nullptr);
    ~GpibTab() override;

    /// The board or the address was edited: addresses the control.
    void cboIEEE_Change();
    /// Applies the time-out entry, or brings the control's own back.
    void txtTimeout488_Apply();
    void applyPendingEntries() override;
    bool eventFilter(QObject *watched, QEvent *event) override;

    QComboBox *cboIEEEPort = nullptr;
    QComboBox *cboIEEEAddress = nullptr;
    QLabel *lblConnectString = nullptr;
    QLineEdit *txtTimeout488 = nullptr;
    QPushButton *cmdSearchGPIB = nullptr;
    QPushButton *cmdAdapter = nullptr;

private:
    void buildFields();
    void showEntries() override;
    void showBusy(bool busy);
    void setTimeoutBold(bool bold);

    GpibSession &m_gpib;
    bool m_showing = false; // the entries follow the session
    std::unique_ptr<BusyPointer> m_busy;
};

} // namespace corvane
