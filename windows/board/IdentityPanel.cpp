#include "windows/board/IdentityPanel.h"

#include "core/board/BoardLink.h"
#include "core/board/BoardSession.h"
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

} // namespace

IdentityPanel::IdentityPanel(BoardLink &link, BoardSession &session)
    : BoardPanel(link, session)
{
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(makeSerialNumber());
    layout->addWidget(makeNetwork());
    layout->addStretch();
    connect(txtSnPassword, &QLineEdit::returnPressed, this,
            [this] { txtSnPassword_KeyDown(enterKey); });
    connect(cmdSetSN, &QPushButton::clicked, this, &IdentityPanel::cmdSetSN_Click);
    connect(cmdGetTcpip, &QPushButton::clicked, this, &IdentityPanel::cmdGetTcpip_Click);
    connect(this, &BoardPanel::idleChanged, this, &IdentityPanel::enableSetSN);
}

QWidget *IdentityPanel::makeSerialNumber()
{
    auto *box = new QGroupBox(tr("Serial Number"));
    auto *form = new QFormLayout(box);
    txtSnPassword = entry(20, QStringLiteral("txtSnPassword"), tr("Unlock phrase"));
    txtSnPassword->setEchoMode(QLineEdit::Password);
    txtSnPassword->setMaximumWidth(280);
    txtSnPassword->setPlaceholderText(tr("type it and press Enter"));
    txtSN = entry(20, QStringLiteral("txtSN"), tr("New serial number"));
    txtSN->setText(QStringLiteral("00/0000"));
    txtSN->setMaximumWidth(280);
    txtSN->setEnabled(false);
    cmdSetSN = button(tr("&Set Serial Number"), QStringLiteral("cmdSetSN"),
                      tr("Send the new serial number"));
    cmdSetSN->setEnabled(false);
    cmdSetSN->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    form->addRow(tr("&Unlock phrase"), txtSnPassword);
    form->addRow(tr("Serial &number"), txtSN);
    form->addRow(QString(), cmdSetSN);
    return box;
}

QWidget *IdentityPanel::makeNetwork()
{
    auto *box = new QGroupBox(tr("Network"));
    auto *form = new QFormLayout(box);
    lblTcpip = readOut(20, QStringLiteral("lblTcpip"), tr("Network setting of the board"));
    lblTcpip->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    lblTcpip->setMaximumWidth(280);
    cmdGetTcpip = exchanging(button(tr("Get TCP/IP Sett&ings"), QStringLiteral("cmdGetTcpip"),
                                    tr("Query the board's network settings")));
    cmdGetTcpip->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    auto *caption = new QLabel(tr("TCP/IP"));
    // The field stands below those of the serial number.
    caption->setMinimumWidth(QLabel(tr("Unlock phrase")).sizeHint().width());
    form->addRow(caption, lblTcpip);
    form->addRow(QString(), cmdGetTcpip);
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
    QString command = QStringLiteral(":CALibrate:PICSerialNumber ") + serial.trimmed() + u'\r';
    if (!m_session.checkSendable(command))
        return;
    m_link.OutputToSbc(command);
    if (m_link.isSent())
        m_session.say(boardTexts::serialNumberSent);
}

void IdentityPanel::cmdGetTcpip_Click()
{
    const auto operation = m_session.begin();
    if (!operation)
        return;
    const QString reply = m_link.ask(QStringLiteral("TCPIP?"), beforeReadMs);
    const qsizetype comma = reply.indexOf(u',');
    showText(*lblTcpip, comma < 0 ? boardTexts::tcpipError : reply.first(comma));
}

} // namespace corvane
