#include "windows/main/BoardWindows.h"

#include "core/board/BoardTexts.h"
#include "core/channels/ChannelTexts.h"
#include "core/text/ProductInfo.h"
#include "windows/board/CalibrationPanel.h"
#include "windows/board/frmSBC.h"
#include "windows/main/ChannelTab.h"
#include "windows/main/Main.h"
#include "windows/report/frmSBCPrint.h"

#include <QAction>
#include <QTabWidget>

#include <cstdio>

namespace corvane {

BoardWindows::BoardWindows(Main &window)
    : QObject(&window)
    , m_window(window)
{
}

/// The report reads the board window, so it goes first.
BoardWindows::~BoardWindows()
{
    const std::unique_ptr<frmSBC> board(m_board);
    const std::unique_ptr<frmSBCPrint> report(m_report);
}

void BoardWindows::mnuSBC_Click()
{
    if (m_board && !m_board->isVisible()) {
        m_reopen = !m_reopen; // it still closes
        return;
    }
    if (!m_window.mnuSBC->isChecked()) {
        if (m_board)
            m_board->close();
        return;
    }
    if (!m_board)
        openBoard();
    const int tab = m_window.tabChannels->currentIndex();
    if (tab >= channels::rs232 && tab <= channels::tcpIp1)
        m_board->CallOptSbcCommMeth(static_cast<qint16>(tab - channels::rs232));
}

void BoardWindows::openBoard()
{
    for (const int borrowed : {channels::rs232, channels::ieee488, channels::tcpIp1})
        m_window.channel(borrowed)->applyPendingEntries();
    m_board = new frmSBC(*this, m_window.parts().dialogs, m_window.parts().clock);
    connect(m_board, &frmSBC::reportRequested, this, &BoardWindows::openReport);
    ChannelSet &set = m_window.parts().channels;
    for (const int index : {channels::rs232, channels::ieee488, channels::tcpIp1}) {
        connect(&set.at(index), &ChannelSession::openChanged, m_board,
                [board = m_board, index](bool open) {
                    if (!open)
                        board->session().channelClosed(index);
                });
    }
    // Disconnect leaves the GPIB control configured, so its Channel never closes; it ends an
    // operation all the same.
    connect(&set.gpib(), &GpibSession::disconnected, m_board,
            [board = m_board] { board->session().channelClosed(channels::ieee488); });
    connect(m_board, &frmSBC::closed, this, [this] {
        m_board->deleteLater();
        m_board = nullptr;
        showUnsaved();
        if (std::exchange(m_reopen, false))
            m_window.mnuSBC->trigger();
    });
    showUnsaved();
    bringToFront(*m_board);
}

/// While the board window is open it says so itself.
void BoardWindows::showUnsaved()
{
    m_window.showNote(m_board || m_unsaved.isEmpty()
                          ? QString()
                          : boardTexts::closedUnsaved.arg(m_unsaved.text()));
}

void BoardWindows::openReport()
{
    if (!m_report) {
        const QString version = u"%1.%2.%3"_s.arg(productInfo::versionMajor)
                                    .arg(productInfo::versionMinor)
                                    .arg(productInfo::versionRevision);
        m_report =
            new frmSBCPrint({m_board->session(), m_board->link(), m_board->calibration->table()},
                            m_window.parts().remembered, m_window.parts().dialogs, version);
        m_report->showUnsaved(m_board->lblUnsaved->text());
        connect(m_board, &frmSBC::unsavedShown, m_report, &frmSBCPrint::showUnsaved);
        connect(m_board, &frmSBC::closing, m_report, &QWidget::close);
        connect(m_report, &frmSBCPrint::closed, this, [this] {
            m_report->deleteLater();
            m_report = nullptr;
        });
        bringToFront(*m_report);
        m_report->Form_Load();
        return;
    }
    bringToFront(*m_report);
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

SerialPort &BoardWindows::MSComm1()
{
    return m_window.parts().channels.serial(channels::rs232).port();
}

GpibControl &BoardWindows::QBXControl1()
{
    return m_window.parts().channels.gpib().control();
}

TcpClient &BoardWindows::tcpClient1()
{
    return m_window.parts().channels.tcp(channels::tcpIp1).client();
}

QByteArray BoardWindows::responseBytes(int channel) const
{
    return m_window.parts().channels.at(channel).response().bytes();
}

void BoardWindows::clearResponse(int channel)
{
    m_window.parts().channels.at(channel).clearResponse();
}

ChannelUsers &BoardWindows::users()
{
    return m_window.parts().channels.users();
}

QString BoardWindows::faultText(int channel, Exchange half, const QString &cause) const
{
    const ChannelSession &session = m_window.parts().channels.at(channel);
    if (session.isClosed())
        return session.traits().notConnected;
    return (half == Exchange::Send ? channelTexts::sendError : channelTexts::readError) +
           u"\r\n"_s + cause;
}

void BoardWindows::uncheckMnuSBC()
{
    m_window.mnuSBC->setChecked(false);
}

} // namespace corvane
