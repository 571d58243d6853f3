// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/board/UnsavedCalibrations.h"

#include <QObject>

#include <memory>

class QAction;

namespace corvane {

class ChannelSet;
class Clock;
class Dialogs;
class frmSBC;
class frmSBCPrint;
struct modSBC;

/// Opens and closes the board window and its report, and remembers what the board has not stored
/// yet.
class BoardWindows : public QObject
{
    Q_OBJECT

public:
    /// The check mark of `mnuSBC` says whether the board window is open.
    BoardWindows(ChannelSet &channels, Dialogs &dialogs, Clock &clock, modSBC &remembered,
                 QAction &mnuSBC, QObject *parent);
    ~BoardWindows() override;

    /// The menu entry's toggle: opens the board window, its method set from the Channel that shows,
    /// or closes it.
    void mnuSBC_Click(int showingChannel);
    /// Opens the report window, or brings it to the front.
    void openReport();
    /// Closes both at once; the program is closing.
    void shutDown();
    /// Null while it is closed.
    [[nodiscard]] frmSBC *boardWindow() const { return m_board.get(); }
    [[nodiscard]] UnsavedCalibrations &unsavedCalibrations() { return m_unsaved; }

Q_SIGNALS:
    /// The board window is about to borrow the Channels.
    void opening();
    /// What is to be known of a board whose window is closed; empty: nothing.
    void noted(const QString &note);

private:
    void openBoard();
    void boardClosed();
    void showUnsaved();

    ChannelSet &m_channels;
    Dialogs &m_dialogs;
    Clock &m_clock;
    modSBC &m_remembered;
    QAction &m_mnuSBC;
    UnsavedCalibrations m_unsaved;
    std::unique_ptr<frmSBC> m_board;
    std::unique_ptr<frmSBCPrint> m_report; ///< reads the board window, so it goes first
    /// The menu entry was chosen again while the window was closing.
    bool m_reopen = false;
    bool m_toldUnsaved = false;
};

} // namespace corvane
