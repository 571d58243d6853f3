// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/setup/frmGPIB.h"

#include "core/channels/Module1.h"
#include "core/setup/GpibSearch.h"
#include "core/setup/SetupTexts.h"
#include "core/text/Dialogs.h"
#include "windows/widgets/Controls.h"

#include <QProgressBar>
#include <QTimer>

namespace corvane {

using namespace controls;

namespace {

/// Long enough for the window to be painted before the first probe.
constexpr int startDelayMs = 50;

} // namespace

frmGPIB::frmGPIB(GpibSearch &search, Module1 &module, Dialogs &dialogs, QWidget *parent)
    : ReopenedDialog(u"frmGPIB"_s, u"GPIB Address Search"_s, parent)
    , m_search(search)
    , m_module(module)
    , m_dialogs(dialogs)
{
    createControls();
    connectControls();
}

void frmGPIB::createControls()
{
    lblSearch = note(u"lblSearch"_s);
    lblFaults = note(u"lblFaults"_s);
    progress = named(new QProgressBar, u"progress"_s, u"Addresses probed"_s);
    progress->setRange(0, GpibSearch::probeCount);
    cmdSearch = button(u"&Search Again"_s, u"cmdSearch"_s, this, &frmGPIB::cmdSearch_Click);
    cmdCancel = button(u"&Cancel"_s, u"cmdCancel"_s, this, &frmGPIB::cmdCancel_Click);
    cmdClose = button(u"&Close"_s, u"cmdClose"_s, this, &frmGPIB::cmdClose_Click);
    tmrStart = new QTimer(this);
    tmrStart->setObjectName(u"tmrStart"_s);
    tmrStart->setTimerType(Qt::PreciseTimer);
    tmrStart->setInterval(startDelayMs);

    auto *rows = new QVBoxLayout(this);
    addAll(*rows, {lblSearch, progress, lblFaults, nullptr});
    rows->addLayout(row({nullptr, cmdSearch, cmdCancel, cmdClose}));
    finishLayout(72);
}

void frmGPIB::connectControls()
{
    connect(tmrStart, &QTimer::timeout, this, &frmGPIB::tmrStart_Timer);
    connect(&m_search, &GpibSearch::statusChanged, lblSearch, &QLabel::setText);
    connect(&m_search, &GpibSearch::faultsChanged, this, &frmGPIB::showFaults);
    connect(&m_search, &GpibSearch::positionChanged, this, [this](int number) {
        progress->setFormat(u"Address %v of %m"_s);
        progress->setValue(number);
    });
}

void frmGPIB::Form_Load()
{
    m_module.SearchCancelled = false;
    lblSearch->clear();
    showFaults({});
    progress->setFormat(QString());
    progress->setValue(0);
    showButtons(false);
    tmrStart->start();
}

void frmGPIB::tmrStart_Timer()
{
    if (m_search.isRunning())
        return; // the search of the window's last opening is about to end
    tmrStart->stop();
    startSearch();
}

void frmGPIB::cmdSearch_Click()
{
    if (m_search.isRunning())
        return;
    tmrStart->stop();
    m_module.SearchCancelled = false;
    startSearch();
}

void frmGPIB::startSearch()
{
    const QString refusal = m_search.refusal();
    if (!refusal.isEmpty()) {
        lblSearch->setText(setupTexts::status + setupTexts::notStarted);
        m_dialogs.showMessage(this, refusal);
        return;
    }
    lblSearch->setText(setupTexts::searching);
    showButtons(true);
    m_search.SearchGPIBLoop();
    showButtons(false);
}

void frmGPIB::cmdCancel_Click()
{
    showButtons(false);
    m_search.cancel();
}

void frmGPIB::endProcedure()
{
    tmrStart->stop();
    m_search.cancel();
}

/// The window grows when the texts need it, and never shrinks under the user's hand.
void frmGPIB::showFaults(const QString &faults)
{
    lblFaults->setText(faults);
    lblFaults->setVisible(!faults.isEmpty());
    if (!faults.isEmpty())
        growToFit();
}

void frmGPIB::showButtons(bool searching)
{
    cmdSearch->setEnabled(!searching);
    cmdCancel->setVisible(searching);
    cmdClose->setVisible(!searching);
    QPushButton &next = searching ? *cmdCancel : *cmdClose;
    next.setDefault(true);
    next.setFocus();
}

} // namespace corvane
