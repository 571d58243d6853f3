// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "windows/main/ChannelTab.h"

namespace corvane {

class TcpSession;

/// The tab of a TCP Channel: the host and the port.
class TcpTab final : public ChannelTab
{
    Q_OBJECT

public:
    explicit TcpTab(TcpSession &session, QWidget *parent = nullptr);

    /// The port entry was edited.
    void txtPort_Change();
    void txtAddress_Change();

    QLineEdit *txtAddress = nullptr;
    QLineEdit *txtPort = nullptr;

private:
    void showEntries() override;

    TcpSession &m_tcp;
};

} // namespace corvane
