// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/main/BoardWindows.h"

#include "core/board/BoardTexts.h"
#include "core/channels/ChannelTraits.h"
#include "core/text/ProductInfo.h"
#include "windows/board/CalibrationPanel.h"
#include "windows/board/frmSBC.h"
#include "windows/report/frmSBCPrint.h"

#include <QAction>

#include <cstdio>

namespace corvane {

BoardWindows::BoardWindows(ChannelSet &channels, Dialogs &dialogs, Clock &clock, modSBC &remembered,
                           QAction &mnuSBC, QObject *parent)
    : QObject(parent)
    , m_channels(channels)
    , m_dialogs(dialogs)
    , m_clock(clock)
    , m_remembered(remembered)
    , m_mnuSBC(mnuSBC)
{
}

BoardWindows::~BoardWindows() = default;

void BoardWindows::mnuSBC_Click(int showingChannel)
{
    if (m_board && !m_board->isVisible()) {
        m_reopen = !m_reopen; // it still closes
        return;
    }
    if (!m_mnuSBC.isChecked()) {
        if (m_board)
            m_board->close();
        return;
    }
    if (!m_board)
        openBoard();
    if (showingChannel >= channels::rs232 && showingChannel <= channels::tcpIp1)
        m_board->CallOptSbcCommMeth(static_cast<qint16>(showingChannel - channels::rs232));
}

void BoardWindows::openBoard()
{
    Q_EMIT opening();
    m_board = std::make_unique<frmSBC>(m_channels, m_unsaved, m_dialogs, m_clock);
    connect(m_board.get(), &frmSBC::reportRequested, this, &BoardWindows::openReport);
    connect(m_board.get(), &frmSBC::closed, this, &BoardWindows::boardClosed);
    showUnsaved();
    bringToFront(*m_board);
}

void BoardWindows::boardClosed()
{
    m_mnuSBC.setChecked(false);
    m_board.release()->deleteLater();
    showUnsaved();
    if (std::exchange(m_reopen, false))
        m_mnuSBC.trigger();
}

/// While the board window is open it says so itself.
void BoardWindows::showUnsaved()
{
    Q_EMIT noted(m_board || m_unsaved.isEmpty() ? QString()
                                                : boardTexts::closedUnsaved.arg(m_unsaved.text()));
}

void BoardWindows::openReport()
{
    if (m_report) {
        bringToFront(*m_report);
        return;
    }
    m_report = std::make_unique<frmSBCPrint>(
        ReportedBoard{m_board->session(), m_board->link(), m_board->calibration->table()},
        m_remembered, m_dialogs, QString::fromUtf16(productInfo::version));
    m_report->showUnsaved(m_unsaved.text());
    connect(&m_unsaved, &UnsavedCalibrations::changed, m_report.get(), &frmSBCPrint::showUnsaved);
    connect(m_board.get(), &frmSBC::closing, m_report.get(), &QWidget::close);
    connect(m_report.get(), &frmSBCPrint::closed, this,
            [this] { m_report.release()->deleteLater(); });
    bringToFront(*m_report);
    m_report->Form_Load();
}

void BoardWindows::shutDown()
{
    m_reopen = false;
    if (m_report)
        m_report->close();
    if (m_board)
        m_board->shutDown();
    if (!std::exchange(m_toldUnsaved, true) && !m_unsaved.isEmpty())
        std::fprintf(stderr, "corvane: %s\n", qPrintable(m_unsaved.text()));
}

} // namespace corvane
