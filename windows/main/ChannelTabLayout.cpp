// SPDX-License-Identifier: GPL-3.0-or-later
// How a Channel's page looks: its controls, their names and places.
#include "core/channels/ChannelSession.h"
#include "windows/main/ChannelTab.h"
#include "windows/main/ConnectHint.h"
#include "windows/widgets/Controls.h"
#include "windows/widgets/EditableBox.h"
#include "windows/widgets/ScrollPage.h"

#include <QEvent>
#include <QFrame>

namespace corvane {

using namespace controls;

namespace {

struct ButtonRow
{
    QPushButton *ChannelTab::*member;
    const char *name;
    const char *caption;
    const char *accessibleName;
};

constexpr ButtonRow buttonRows[] = {
    {&ChannelTab::cmdConnect, "cmdConnect", "&Connect", "Connect"},
    {&ChannelTab::cmdDisconnect, "cmdDisconnect", "&Disconnect", "Disconnect"},
    {&ChannelTab::cmdSend, "cmdSend", "&Send", "Send"},
    {&ChannelTab::cmdIDN, "cmdIDN", "*&IDN?", "Identify"},
    {&ChannelTab::cmdSystErr, "cmdSystErr", "Syst:&Err?", "System error"},
    {&ChannelTab::cmdLoadFrmChmber, "cmdLoadFrmChmber", "Get from Chamber",
     "Get list from the chamber"},
    {&ChannelTab::cmdLoadToChmber, "cmdLoadToChmber", "Send to Chamber",
     "Send list to the chamber"},
    {&ChannelTab::cmdStop, "cmdStop", "Stop", "Stop the list"},
};

constexpr int gapBeforeLog = 12;
constexpr int gapBeforePlace = 8;

} // namespace

QString ChannelTab::nameOf(const char *control) const
{
    return indexed(QLatin1String(control), index());
}

void ChannelTab::makeControls()
{
    const auto name = [this](const char *control) { return nameOf(control); };
    for (const ButtonRow &button : buttonRows)
        this->*button.member = named(new QPushButton(QLatin1String(button.caption), this),
                                     name(button.name), QLatin1String(button.accessibleName));
    cmdLoadFrmChmber->setToolTip(u"Download the chamber's current settings into the list (F6)"_s);
    cmdLoadToChmber->setToolTip(u"Send the list to the chamber (F5)"_s);
    cmdStop->setToolTip(u"Stop the list (Shift+F5)"_s);
    m_statusCaption = named(new QLabel(u"Status:"_s, this), name("lblStatusCaption"));
    lblStatus = named(new QLabel(this), name("lblStatus"), u"Status"_s);
    lblStatus->setTextInteractionFlags(Qt::TextSelectableByMouse);
    lblPlace = named(new QLabel(this), name("lblPlace"));
    lblPlace->setTextFormat(Qt::PlainText);
    lblPlace->setTextInteractionFlags(Qt::TextSelectableByMouse);
    lblPlace->setIndent(gapBeforePlace);
    lblPlace->setMaximumWidth(0); // while it is empty
    shpComm = named(new Led(this), name("shpComm"), u"Activity"_s);
    shpComm->setToolTip(u"Blinks with each command of a loop"_s);
    cboOut = named(new CommandBox(this), name("cboOut"), u"Command"_s);
    chkLoop = named(new QCheckBox(u"&Loop"_s, this), name("chkLoop"), u"Loop"_s);
    cboMs = named(new EditableBox(this), name("cboMs"), u"Loop period in milliseconds"_s);
    for (const char *ms : {"1000", "2000", "5000", "10000", "30000", "60000"})
        cboMs->addItem(QString::fromLatin1(ms));
    chkLog = named(new QCheckBox(u"Lo&g"_s, this), name("chkLog"), u"Log replies to file"_s);
    if (!m_session.traits().isLogged) {
        chkLog->setEnabled(false);
        chkLog->setToolTip(u"The log records the TCP/IP Channels only"_s);
    }
    chkReconnect = named(new QCheckBox(u"Reconnec&t"_s, this), name("chkReconnect"));
    chkReconnect->setToolTip(u"Connect again, once a second, when the device went away"_s);
    chkReconnect->setVisible(m_session.traits().hasClosedState());
    txtIn = named(new ResponseView(m_session.response(), this), name("txtIn"), u"Response"_s);
}

void ChannelTab::layOut()
{
    m_connectionRow =
        row({nullptr, cmdConnect, cmdDisconnect, m_statusCaption, lblStatus, shpComm});
    auto *line = new QFrame(this);
    line->setFrameStyle(QFrame::HLine | QFrame::Sunken);
    auto *placeRow = new QHBoxLayout;
    placeRow->setSpacing(0); // the line ends with the rows below while no place is shown
    placeRow->addWidget(line, 1);
    placeRow->addWidget(lblPlace); // keeps its height while it is empty

    auto *entryRow = row({cboOut, cmdSend, cmdIDN, cmdSystErr});
    entryRow->setStretchFactor(cboOut, 1);

    auto *every = new QLabel(u"ever&y"_s, this);
    every->setBuddy(cboMs);
    auto *optionRow = row({chkLoop, every, cboMs, new QLabel(u"ms"_s, this)});
    optionRow->addSpacing(gapBeforeLog);
    addAll(*optionRow, {chkLog, chkReconnect, nullptr, new QLabel(u"Settings list:"_s, this),
                        cmdLoadFrmChmber, cmdLoadToChmber, cmdStop});

    auto *page = new QVBoxLayout(this);
    page->addLayout(m_connectionRow);
    page->addLayout(placeRow);
    page->addLayout(entryRow);
    page->addLayout(optionRow);
    page->addWidget(txtIn, 1);
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Ignored); // while it is hidden
    cboOut->installEventFilter(this);
}

void ChannelTab::reserveStatus(const QString &longest)
{
    constexpr int boldPercent = 115; // an open Channel's text is bold, hence wider
    lblStatus->setMinimumWidth(fontMetrics().horizontalAdvance(longest) * boldPercent / 100);
}

/// What costs time at the start waits until the tab is shown for the first time, or was painted.
void ChannelTab::finishLayout()
{
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Preferred);
    ScrollPage::wrap(*this);
    Q_EMIT laidOut();
}

void ChannelTab::addHint()
{
    hint = new ConnectHint(m_hint, m_session, *txtIn);
    connect(hint, &ConnectHint::benchWanted, this, &ChannelTab::benchWanted);
    if (!m_hasBench)
        hint->withdrawBench();
}

void ChannelTab::withdrawBench()
{
    m_hasBench = false;
    if (hint)
        hint->withdrawBench();
}

void ChannelTab::showEvent(QShowEvent *event)
{
    if (!std::exchange(m_isFinished, true))
        finishLayout();
    QWidget::showEvent(event);
}

bool ChannelTab::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == cboOut && event->type() == QEvent::Paint && !std::exchange(m_isPainted, true))
        QMetaObject::invokeMethod(this, &ChannelTab::addHint, Qt::QueuedConnection);
    return QWidget::eventFilter(watched, event);
}

void ChannelTab::hideStatus()
{
    m_statusCaption->hide();
    lblStatus->hide();
}

void ChannelTab::addConnectionField(const QString &caption, QWidget *field, const QString &name)
{
    auto *label = new QLabel(caption, this);
    label->setBuddy(field);
    m_connectionRow->insertWidget(m_connectionRow->indexOf(cmdConnect) - 1, label);
    addConnectionWidget(field, name);
    field->setAccessibleName(QString(caption).remove(u'&').remove(u':'));
}

void ChannelTab::addConnectionWidget(QWidget *widget, const QString &name)
{
    widget->setObjectName(name);
    m_connectionRow->insertWidget(m_connectionRow->indexOf(cmdConnect) - 1, widget);
    orderTabs();
}

/// The Tab key goes from left to right and down, though the fields are made last.
void ChannelTab::orderTabs()
{
    QList<QWidget *> order;
    for (int place = 0; place < m_connectionRow->count(); ++place)
        order.append(m_connectionRow->itemAt(place)->widget());
    order += {cboOut, cmdSend,      cmdIDN,           cmdSystErr,      chkLoop, cboMs,
              chkLog, chkReconnect, cmdLoadFrmChmber, cmdLoadToChmber, cmdStop, txtIn};
    controls::orderTabs(order);
}

} // namespace corvane
