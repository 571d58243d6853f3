// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/board/IdentityPanel.h"

#include "core/board/BoardLink.h"
#include "core/board/BoardTexts.h"
#include "core/text/Numbers.h"
#include "windows/widgets/Controls.h"

#include <QFormLayout>
#include <QGroupBox>

namespace corvane {

using namespace controls;

namespace {

constexpr int enterKey = 13;
constexpr qint16 beforeReadMs = 25;

bool isWithin(const QString &text, double largest)
{
    const auto value = numbers::numericValue(text);
    return value && *value >= 0 && *value <= largest;
}

/// Each caption above its field: the panel stands beside others.
QFormLayout *narrowForm(QGroupBox &box)
{
    auto *form = new QFormLayout(&box);
    form->setRowWrapPolicy(QFormLayout::WrapAllRows);
    return form;
}

} // namespace

IdentityPanel::IdentityPanel(BoardLink &link, BoardSession &session)
    : BoardPanel(link, session)
{
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    layout->addWidget(makeSerialNumber());
    layout->addWidget(makeNetwork());
    layout->addStretch();
    connect(txtSnPassword, &QLineEdit::returnPressed, this,
            [this] { txtSnPassword_KeyDown(enterKey); });
    connect(this, &BoardPanel::idleChanged, this, &IdentityPanel::enableSetSN);
}

QWidget *IdentityPanel::makeSerialNumber()
{
    auto *box = new QGroupBox(u"Serial Number"_s);
    auto *form = narrowForm(*box);
    txtSnPassword = entry(16, u"txtSnPassword"_s, u"Unlock phrase"_s);
    txtSnPassword->setEchoMode(QLineEdit::Password);
    txtSnPassword->setPlaceholderText(u"then press Enter"_s);
    txtSN = entry(16, u"txtSN"_s, u"New serial number"_s);
    txtSN->setText(u"00/0000"_s);
    txtSN->setEnabled(false);
    cmdSetSN = button(u"Set Serial Nu&mber"_s, u"cmdSetSN"_s, u"Send the new serial number"_s, this,
                      &IdentityPanel::cmdSetSN_Click);
    cmdSetSN->setEnabled(false);
    form->addRow(u"&Unlock phrase"_s, txtSnPassword);
    form->addRow(u"Serial &number"_s, txtSN);
    form->addRow(cmdSetSN);
    return box;
}

QWidget *IdentityPanel::makeNetwork()
{
    auto *box = new QGroupBox(u"Network"_s);
    auto *form = narrowForm(*box);
    lblTcpip = readOut(16, u"lblTcpip"_s, u"Network setting of the board"_s);
    cmdGetTcpip = exchanging(button(u"Get TCP/IP Sett&ings"_s, u"cmdGetTcpip"_s,
                                    u"Query the board's network settings"_s, this,
                                    &IdentityPanel::cmdGetTcpip_Click));
    form->addRow(u"TCP/IP"_s, lblTcpip);
    form->addRow(cmdGetTcpip);
    return box;
}

void IdentityPanel::enableSetSN()
{
    cmdSetSN->setEnabled(m_unlocked && !m_session.isRunning());
}

void IdentityPanel::txtSnPassword_KeyDown(int keyCode)
{
    if (keyCode != enterKey ||
        !txtSnPassword->text().contains(boardTexts::unlockPhrase, Qt::CaseInsensitive))
        return;
    m_unlocked = true;
    txtSN->setEnabled(true);
    enableSetSN();
}

bool IdentityPanel::isSerialNumber(const QString &text)
{
    const QStringList pieces = text.split(u'/');
    return pieces.size() >= 2 && isWithin(pieces[0], 99) && isWithin(pieces[1], 9999);
}

void IdentityPanel::cmdSetSN_Click()
{
    const auto operation = m_session.begin();
    if (!operation)
        return;
    const QString serial = txtSN->text();
    if (!isSerialNumber(serial)) {
        m_session.say(boardTexts::serialNumberRefused);
        return;
    }
    QString command = u":CALibrate:PICSerialNumber "_s + serial.trimmed() + u'\r';
    if (!m_session.checkSendable(command))
        return;
    m_link.OutputToSbc(command);
    if (m_link.isSent())
        m_session.say(boardTexts::serialNumberSent);
}

void IdentityPanel::cmdGetTcpip_Click()
{
    operate([this] {
        const QString reply = m_link.ask(u"TCPIP?"_s, beforeReadMs);
        const qsizetype comma = reply.indexOf(u',');
        showText(*lblTcpip, comma < 0 ? boardTexts::tcpipError : reply.first(comma));
    });
}

} // namespace corvane
