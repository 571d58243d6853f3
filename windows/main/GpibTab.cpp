// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/main/GpibTab.h"

#include "core/channels/GpibSession.h"
#include "devices/GpibControl.h"
#include "windows/widgets/BusyPointer.h"
#include "windows/widgets/Controls.h"
#include "windows/widgets/EditableBox.h"

#include <QApplication>
#include <QFocusEvent>
#include <QScopedValueRollback>

namespace corvane {

namespace {

/// The user has gone on to another control or window: no menu or message box is over this one.
bool hasLeft(Qt::FocusReason reason)
{
    return reason != Qt::PopupFocusReason && reason != Qt::MenuBarFocusReason &&
           QApplication::activeModalWidget() == nullptr;
}

} // namespace

GpibTab::GpibTab(GpibSession &session, QWidget *parent)
    : ChannelTab(session, parent)
    , m_gpib(session)
{
    buildFields();
    hideStatus();
    setHint(u"Not connected: choose the board and the instrument's address above, or have it found "
            u"with "
            "Search, and press Connect.  Adapter says through which GPIB adapter."_s);
    showEntries();

    for (const QComboBox *entry : {cboIEEEPort, cboIEEEAddress})
        connect(entry, &QComboBox::currentTextChanged, this, &GpibTab::cboIEEE_Change);
    txtTimeout488->installEventFilter(this);
    connect(txtTimeout488, &QLineEdit::returnPressed, this, &GpibTab::txtTimeout488_Apply);
    connect(txtTimeout488, &QLineEdit::textEdited, this, [this] { setTimeoutBold(true); });
    connect(&m_gpib, &ChannelSession::progressChanged, this,
            [this](const QString &progress) { showBusy(!progress.isEmpty()); });
}

GpibTab::~GpibTab() = default;

void GpibTab::buildFields()
{
    cboIEEEPort = new EditableBox(this);
    for (int board = 0; board < GpibAddress::boardCount; ++board)
        cboIEEEPort->addItem(GpibAddress::boardName(board));
    cboIEEEAddress = new EditableBox(this);
    cboIEEEAddress->setMinimumContentsLength(5); // with a secondary one: 30::96
    for (int address = 0; address <= GpibSession::lastPrimaryAddress; ++address)
        cboIEEEAddress->addItem(QString::number(address));
    lblConnectString = new QLabel(this);
    lblConnectString->setTextInteractionFlags(Qt::TextSelectableByMouse);
    txtTimeout488 = controls::entry(6, u"txtTimeout488"_s, QString());
    txtTimeout488->setText(QString::number(GpibControl::defaultTimeoutMs));
    txtTimeout488->setMaximumWidth(txtTimeout488->minimumWidth());
    cmdSearchGPIB = new QPushButton(u"Searc&h"_s, this);
    cmdAdapter = new QPushButton(u"Adap&ter..."_s, this);
    cmdSearchGPIB->setAccessibleName(u"Search for an instrument"_s);
    cmdAdapter->setAccessibleName(u"Choose the GPIB adapter"_s);

    addConnectionField(u"&Board:"_s, cboIEEEPort, u"cboIEEEPort"_s);
    addConnectionField(u"Add&ress:"_s, cboIEEEAddress, u"cboIEEEAddress"_s);
    addConnectionField(u"GPIB I/O:"_s, lblConnectString, u"lblConnectString"_s);
    addConnectionField(u"Timeout, &ms"_s, txtTimeout488, u"txtTimeout488"_s);
    addConnectionWidget(cmdSearchGPIB, u"cmdSearchGPIB"_s);
    addConnectionWidget(cmdAdapter, u"cmdAdapter"_s);
}

void GpibTab::cboIEEE_Change()
{
    if (!m_showing)
        m_gpib.setEntries(cboIEEEPort->currentText(), cboIEEEAddress->currentText());
}

void GpibTab::showEntries()
{
    const QScopedValueRollback showing(m_showing, true);
    if (cboIEEEAddress->currentText() != m_gpib.address())
        cboIEEEAddress->setCurrentText(m_gpib.address());
    if (cboIEEEPort->currentText() != m_gpib.board())
        cboIEEEPort->setCurrentText(m_gpib.board());
    lblConnectString->setText(m_gpib.connectString());
    if (!txtTimeout488->font().bold())
        txtTimeout488->setText(QString::number(m_gpib.control().timeout()));
}

bool GpibTab::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == txtTimeout488) {
        if (event->type() == QEvent::MouseButtonPress || event->type() == QEvent::KeyPress)
            setTimeoutBold(true);
        else if (event->type() == QEvent::FocusOut &&
                 hasLeft(static_cast<QFocusEvent *>(event)->reason()))
            txtTimeout488_Apply();
    }
    return ChannelTab::eventFilter(watched, event);
}

void GpibTab::txtTimeout488_Apply()
{
    m_gpib.enterTimeout(txtTimeout488->text());
    txtTimeout488->setText(QString::number(m_gpib.control().timeout()));
    setTimeoutBold(false);
}

void GpibTab::applyPendingEntries()
{
    ChannelTab::applyPendingEntries();
    if (txtTimeout488->font().bold())
        txtTimeout488_Apply();
}

void GpibTab::setTimeoutBold(bool bold)
{
    QFont font = txtTimeout488->font();
    font.setBold(bold);
    txtTimeout488->setFont(font);
}

void GpibTab::showBusy(bool busy)
{
    if (busy)
        m_busy = std::make_unique<BusyPointer>();
    else
        m_busy.reset();
}

} // namespace corvane
