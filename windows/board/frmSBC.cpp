// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/board/frmSBC.h"

#include "core/board/BoardTexts.h"
#include "core/board/UnsavedCalibrations.h"
#include "core/text/ShownText.h"
#include "windows/board/CalibrationPanel.h"
#include "windows/board/DacAdcPanel.h"
#include "windows/board/DigitalIoPanel.h"
#include "windows/board/IdentityPanel.h"
#include "windows/widgets/Controls.h"
#include "windows/widgets/EditableBox.h"
#include "windows/widgets/ScrollPage.h"
#include "windows/widgets/ToolTip.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QCoreApplication>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QShortcut>
#include <QStatusBar>
#include <QTabWidget>

namespace corvane {

using namespace controls;

namespace {

constexpr int unloadPauseMs = 250;
const QString runningTag = u"runnning"_s;

} // namespace

frmSBC::frmSBC(ChannelSet &channels, UnsavedCalibrations &unsaved, Dialogs &dialogs, Clock &clock)
    : m_waits(clock)
    , m_unloadWaits(clock)
    , m_link(channels, m_waits)
    , m_session(m_link, channels, dialogs, this)
{
    setObjectName(u"frmSBC"_s);
    setWindowTitle(boardTexts::boardCaption);
    caliTimer.setTimerType(Qt::PreciseTimer);
    connect(&caliTimer, &QTimer::timeout, this, &frmSBC::caliTimer_Timer);
    // Before the pages disable their buttons, and again after they have enabled them.
    connect(&m_session, &BoardSession::runningChanged, this, &frmSBC::keepFocus);

    auto *layout = new QVBoxLayout(this);
    auto *top = new QHBoxLayout;
    top->addWidget(makeMethod());
    top->addWidget(makeMeter());
    lblUnsaved = named(new QLabel, u"lblUnsaved"_s, u"Not saved to EEPROM"_s);
    lblUnsaved->setWordWrap(true);
    top->addWidget(lblUnsaved, 1);
    layout->addLayout(top);
    layout->addWidget(makePages(unsaved), 1);
    ScrollPage::wrap(*this);
    makeStatusBar();
    this->layout()->addWidget(StatusBar1);

    connect(calibration, &CalibrationPanel::reportRequested, this, &frmSBC::reportRequested);
    connect(&m_session, &BoardSession::runningChanged, this, &frmSBC::setProcedure);
    lblUnsaved->setText(unsaved.text());
    connect(&unsaved, &UnsavedCalibrations::changed, lblUnsaved, &QLabel::setText);
    cboMeasInstAdrGpib_Change();
    resize(1010, 674);
}

frmSBC::~frmSBC() = default;

QWidget *frmSBC::makeMethod()
{
    auto *box = new QGroupBox(u"Communications Method"_s);
    auto *row = new QHBoxLayout(box);
    const QStringList captions = {u"RS-&232"_s, u"IEE&E"_s, u"TC&P/IP"_s};
    for (int method = BoardLink::Rs232; method <= BoardLink::TcpIp; ++method) {
        auto *option = new QRadioButton(captions[method]);
        OptSbcCommMeth[method] =
            named(option, indexed(u"OptSbcCommMeth"_s, method),
                  u"Communications method %1"_s.arg(QString(captions[method]).remove(u'&')));
        option->setChecked(method == m_link.method());
        row->addWidget(option);
    }
    OptSbcCommMeth.connectTo(this, &frmSBC::OptSbcCommMeth_Click);
    return box;
}

QWidget *frmSBC::makeMeter()
{
    auto *box = new QGroupBox(u"Measurement Instrument Address"_s);
    auto *row = new QHBoxLayout(box);
    cboMeasInstAdrGpib = named(new EditableBox, u"cboMeasInstAdrGpib"_s,
                               u"GPIB address of the measurement instrument"_s);
    for (int address = 0; address <= 30; ++address)
        cboMeasInstAdrGpib->addItem(QString::number(address));
    cboMeasInstAdrGpib->setCurrentText(u"16"_s);
    auto *label = new QLabel(u"&GPIB"_s);
    label->setBuddy(cboMeasInstAdrGpib);
    addAll(*row, {label, cboMeasInstAdrGpib, nullptr});
    cboMeasInstAdrGpib->setMinimumContentsLength(4);
    box->setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Preferred);
    connect(cboMeasInstAdrGpib, &QComboBox::currentTextChanged, this,
            &frmSBC::cboMeasInstAdrGpib_Change);
    return box;
}

QTabWidget *frmSBC::makePages(UnsavedCalibrations &unsaved)
{
    auto *pages = named(new QTabWidget, u"tabBoard"_s, u"Board"_s);
    pages->addTab(dacAdc = new DacAdcPanel(m_link, m_session), u"DAC and ADC"_s);
    identity = new IdentityPanel(m_link, m_session);
    pages->addTab(calibration = new CalibrationPanel(m_link, m_session, unsaved, identity),
                  u"Calibration"_s);
    pages->addTab(digitalIo = new DigitalIoPanel(m_link, m_session), u"Digital I/O"_s);
    for (int page = 0; page < pages->count(); ++page) {
        ScrollPage::wrap(*pages->widget(page));
        auto *shortcut = new QShortcut(QKeySequence(Qt::CTRL | Qt::Key(Qt::Key_1 + page)), this);
        connect(shortcut, &QShortcut::activated, pages,
                [pages, page] { pages->setCurrentIndex(page); });
    }
    return pages;
}

void frmSBC::makeStatusBar()
{
    StatusBar1 = named(new QStatusBar, u"StatusBar1"_s, u"Last exchange"_s);
    StatusBar1->setSizeGripEnabled(false);
    statusPanels = {readOut(10, u"StatusBar1_1"_s, u"Last command"_s),
                    readOut(10, u"StatusBar1_2"_s, u"Last answer"_s)};
    for (QLabel *panel : statusPanels)
        StatusBar1->addWidget(panel, 1);
    connect(&m_link, &BoardLink::commandShown, this,
            [this](const QString &text) { showText(*statusPanels[0], text); });
    connect(&m_link, &BoardLink::replyShown, this,
            [this](const QString &text, const QString &note) {
                statusPanels[1]->setText(shownText(text));
                statusPanels[1]->setToolTip(plainToolTip(note.isEmpty() ? text : note));
            });
}

void frmSBC::CallOptSbcCommMeth(qint16 index)
{
    if (index < BoardLink::Rs232 || index > BoardLink::TcpIp)
        return;
    OptSbcCommMeth[index]->setChecked(true);
    OptSbcCommMeth_Click(index);
}

void frmSBC::OptSbcCommMeth_Click(int index)
{
    m_link.setMethod(index);
}

void frmSBC::cboMeasInstAdrGpib_Change()
{
    calibration->setMeterAddress(cboMeasInstAdrGpib->currentText());
}

void frmSBC::DelayMs(qint16 ms)
{
    const auto stays = procedure();
    caliTimer.stop();
    m_caliTimerTag = runningTag;
    caliTimer.start(std::max<int>(ms, 0));
    m_waits.waitUntil([this] { return m_caliTimerTag != runningTag; }, Clock::forever);
}

/// Disabled buttons lose the focus: it waits on the window and comes back, unless the user has
/// moved it meanwhile.
void frmSBC::keepFocus(bool running)
{
    QWidget *focus = focusWidget();
    if (running) {
        m_focusBefore = qobject_cast<QAbstractButton *>(focus);
        if (m_focusBefore)
            setFocus();
        return;
    }
    const auto giveBack = [this] {
        QWidget *now = focusWidget();
        if (m_focusBefore && m_focusBefore->isVisible() &&
            (!now || now->focusPolicy() == Qt::NoFocus))
            m_focusBefore->setFocus();
        m_focusBefore.clear();
    };
    QMetaObject::invokeMethod(this, giveBack, Qt::QueuedConnection);
}

void frmSBC::shutDown()
{
    m_unloadWaits.close();
    close();
}

void frmSBC::Form_QueryUnload()
{
    caliTimer.stop();
    QCoreApplication::processEvents();
    for (int pause = 0; pause < 2; ++pause) {
        m_unloadWaits.wait(unloadPauseMs);
        QCoreApplication::processEvents();
    }
}

} // namespace corvane
