// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/main/ChannelTab.h"

#include "core/channels/ChannelSession.h"
#include "core/channels/ChannelTexts.h"
#include "core/channels/Reconnect.h"
#include "devices/WholeNumber.h"
#include "windows/widgets/ToolTip.h"

namespace corvane {

ChannelTab::ChannelTab(ChannelSession &session, QWidget *parent)
    : QWidget(parent)
    , m_session(session)
{
    makeControls();
    layOut();
    connectHandlers();
    showSession();
}

int ChannelTab::index() const
{
    return m_session.index();
}

void ChannelTab::connectHandlers()
{
    using Tab = ChannelTab;
    connect(cmdConnect, &QPushButton::clicked, this, &Tab::cmdConnect_Click);
    connect(cmdDisconnect, &QPushButton::clicked, this, &Tab::cmdDisconnect_Click);
    connect(cmdSend, &QPushButton::clicked, this, &Tab::cmdSend_Click);
    connect(cboOut->lineEdit(), &QLineEdit::returnPressed, this, &Tab::cmdSend_Click);
    connect(cboOut, &QComboBox::editTextChanged, &m_session, &ChannelSession::setCommand);
    connect(cmdIDN, &QPushButton::clicked, this, &Tab::cmdIDN_Click);
    connect(cmdSystErr, &QPushButton::clicked, this, &Tab::cmdSystErr_Click);
    connect(chkLoop, &QCheckBox::toggled, this, &Tab::chkLoop_Click);
    connect(chkLog, &QCheckBox::toggled, this, &Tab::chkLog_Click);
    connect(chkReconnect, &QCheckBox::toggled, &m_session.reconnect(), &Reconnect::setOn);
    connect(cboMs, &QComboBox::activated, this, &Tab::cboMs_Change);
    connect(cboMs, &QComboBox::currentIndexChanged, this, &Tab::cboMs_Change);
    connect(cboMs->lineEdit(), &QLineEdit::editingFinished, this, &Tab::applyPendingPeriod);
}

/// What the session says goes into its control.
void ChannelTab::showSession()
{
    using Session = ChannelSession;
    connect(&m_session, &Session::entriesChanged, this, &ChannelTab::showEntries);
    connect(&m_session, &Session::statusChanged, this, &ChannelTab::showStatus);
    connect(&m_session, &Session::lightChanged, this, &ChannelTab::showLight);
    connect(&m_session, &Session::commandChanged, cboOut, &CommandBox::showCommand);
    connect(&m_session, &Session::historyChanged, this,
            [this] { cboOut->showHistory(m_session.history(), m_session.command()); });
    connect(&m_session, &Session::loopingChanged, chkLoop, &QCheckBox::setChecked);
    connect(&m_session, &Session::periodChanged, cboMs,
            [this](int ms) { cboMs->setEditText(QString::number(ms)); });
    connect(&m_session, &Session::loggedChanged, chkLog, &QCheckBox::setChecked);
    connect(&m_session.reconnect(), &Reconnect::changed, chkReconnect, &QCheckBox::setChecked);
    connect(&m_session, &Session::responseReplaced, txtIn, &ResponseView::textReplaced);
    connect(&m_session, &Session::responseAppended, txtIn, &ResponseView::textAppended);
    cboOut->showCommand(m_session.command());
    cboMs->setEditText(QString::number(m_session.periodMs()));
    showStatus();
    showLight();
}

void ChannelTab::showStatus()
{
    lblStatus->setText(m_session.status());
    QFont font = lblStatus->font();
    if (font.bold() != m_session.isOpen()) {
        font.setBold(m_session.isOpen());
        lblStatus->setFont(font);
    }
    constexpr int widest = 640;
    const QString &place = m_session.connection();
    lblPlace->setMaximumWidth(place.isEmpty() ? 0 : QWIDGETSIZE_MAX);
    lblPlace->setText(lblPlace->fontMetrics().elidedText(place, Qt::ElideMiddle, widest));
    lblPlace->setAccessibleName(place);
    lblPlace->setToolTip(plainToolTip(place));
}

void ChannelTab::showLight()
{
    shpComm->setVisible(m_session.light() != ChannelSession::Light::Hidden);
    shpComm->setBright(m_session.light() == ChannelSession::Light::Bright);
}

void ChannelTab::cmdConnect_Click()
{
    applyPendingEntries();
    m_session.open();
}

void ChannelTab::cmdDisconnect_Click()
{
    m_session.close();
}

void ChannelTab::cmdSend_Click()
{
    applyPendingEntries();
    m_session.send();
}

void ChannelTab::cmdIDN_Click()
{
    m_session.setCommand(channelTexts::idnCommand);
    cmdSend_Click();
}

void ChannelTab::cmdSystErr_Click()
{
    m_session.setCommand(channelTexts::systErrCommand);
    cmdSend_Click();
}

void ChannelTab::chkLoop_Click()
{
    if (chkLoop->isChecked() == m_session.isLooping())
        return; // it follows the session
    if (chkLoop->isChecked())
        applyPendingEntries();
    m_session.setLooping(chkLoop->isChecked());
}

void ChannelTab::chkLog_Click()
{
    m_session.setLogged(chkLog->isChecked());
}

void ChannelTab::cboMs_Change()
{
    if (const auto ms = wholeNumber(cboMs->currentText()))
        m_session.setPeriod(*ms);
    cboMs->setEditText(QString::number(m_session.periodMs()));
}

void ChannelTab::applyPendingEntries()
{
    applyPendingPeriod();
}

void ChannelTab::applyPendingPeriod()
{
    if (cboMs->currentText() != QString::number(m_session.periodMs()))
        cboMs_Change();
}

} // namespace corvane
