// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/main/TcpTab.h"

#include "core/channels/ChannelTexts.h"
#include "core/channels/TcpSession.h"

namespace corvane {

TcpTab::TcpTab(TcpSession &session, QWidget *parent)
    : ChannelTab(session, parent)
    , m_tcp(session)
{
    txtAddress = new QLineEdit(this);
    txtAddress->setMinimumWidth(120);
    txtPort = new QLineEdit(this);
    txtPort->setMaximumWidth(70);
    addConnectionField(u"&Host:"_s, txtAddress, nameOf("txtAddress"));
    addConnectionField(u"&Port:"_s, txtPort, nameOf("txtPort"));
    reserveStatus(channelTexts::socketStates.back());
    setHint(u"Not connected: enter the device's host and port above and press Connect."_s);
    showEntries();

    connect(txtPort, &QLineEdit::textChanged, this, &TcpTab::txtPort_Change);
    connect(txtAddress, &QLineEdit::textChanged, this, &TcpTab::txtAddress_Change);
    for (const QLineEdit *entry : {txtPort, txtAddress})
        connect(entry, &QLineEdit::returnPressed, this, &ChannelTab::cmdConnect_Click);
}

void TcpTab::showEntries()
{
    if (txtAddress->text() != m_tcp.host())
        txtAddress->setText(m_tcp.host());
    if (txtPort->text() != m_tcp.portEntry())
        txtPort->setText(m_tcp.portEntry());
}

void TcpTab::txtPort_Change()
{
    m_tcp.setPortEntry(txtPort->text());
}

void TcpTab::txtAddress_Change()
{
    m_tcp.setHost(txtAddress->text());
}

} // namespace corvane
