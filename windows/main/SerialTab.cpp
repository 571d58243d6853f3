// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/main/SerialTab.h"

#include "core/channels/ChannelTexts.h"
#include "core/channels/SerialSession.h"
#include "windows/main/PortMenu.h"

#include <QEvent>
#include <QKeyEvent>
#include <QToolButton>

namespace corvane {

SerialTab::SerialTab(SerialSession &session, QWidget *parent)
    : ChannelTab(session, parent)
    , m_serial(session)
{
    txtPort = new QLineEdit(this);
    txtPort->setMaximumWidth(110); // a device's name fits
    addConnectionField(u"COM &port:"_s, txtPort, nameOf("txtPort"));
    buildPorts();
    if (session.traits().isAddressed)
        buildAddress();
    cmdPortConfig = new QPushButton(u"Config&ure..."_s, this);
    cmdPortConfig->setAccessibleName(u"Configure the port"_s);
    addConnectionWidget(cmdPortConfig, nameOf("cmdPortConfig"));
    reserveStatus(channelTexts::portClosed);
    setHint(u"Not connected: enter the number or the name of the serial port above, look at its "
            "settings with Configure, and press Connect."_s);
    showEntries();

    txtPort->installEventFilter(this);
    connect(txtPort, &QLineEdit::textChanged, this, &SerialTab::txtPort_Change);
    connect(txtPort, &QLineEdit::returnPressed, this, &ChannelTab::cmdConnect_Click);
}

void SerialTab::buildPorts()
{
    cmdPorts = new QToolButton(this);
    cmdPorts->setArrowType(Qt::DownArrow);
    cmdPorts->setFocusPolicy(Qt::StrongFocus);
    mnuPorts = new PortMenu(m_serial, cmdPorts);
    connect(cmdPorts, &QToolButton::clicked, this, &SerialTab::cmdPorts_Click);
    cmdPorts->setAccessibleName(u"Serial ports of this computer"_s);
    cmdPorts->setToolTip(
        u"Choose from the serial ports of this computer (Alt+Down in the entry)"_s);
    addConnectionWidget(cmdPorts, nameOf("cmdPorts"));
}

void SerialTab::buildAddress()
{
    cboAddress485 = new QComboBox(this);
    addConnectionField(u"Add&ress:"_s, cboAddress485, u"cboAddress485"_s);
    lblPrefix = new QLabel(this);
    lblPrefix->setAccessibleName(u"Addressing prefix"_s);
    addConnectionWidget(lblPrefix, u"lblPrefix"_s);
    for (int address = 1; address <= SerialSession::lastAddress; ++address)
        cboAddress485->addItem(SerialSession::addressText(address));
    connect(cboAddress485, &QComboBox::currentTextChanged, this, &SerialTab::cboAddress485_Change);
}

void SerialTab::showEntries()
{
    if (txtPort->text() != m_serial.portEntry())
        txtPort->setText(m_serial.portEntry());
    if (!cboAddress485)
        return;
    cboAddress485->setCurrentText(m_serial.address());
    lblPrefix->setText(m_serial.prefix());
}

bool SerialTab::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == txtPort && event->type() == QEvent::ToolTip)
        txtPort->setToolTip(SerialPortList::describe(m_serial.ports()));
    if (watched == txtPort && event->type() == QEvent::KeyPress) {
        const auto &key = static_cast<QKeyEvent &>(*event);
        if (key.key() == Qt::Key_Down && key.modifiers().testFlag(Qt::AltModifier)) {
            cmdPorts_Click();
            return true;
        }
    }
    return ChannelTab::eventFilter(watched, event);
}

void SerialTab::cmdPorts_Click()
{
    mnuPorts->popup(cmdPorts->mapToGlobal(QPoint(0, cmdPorts->height())));
}

void SerialTab::txtPort_Change()
{
    m_serial.setPortEntry(txtPort->text());
}

void SerialTab::cboAddress485_Change()
{
    m_serial.setAddress(cboAddress485->currentText());
}

} // namespace corvane
