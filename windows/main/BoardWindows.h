#pragma once

#include "core/board/BoardChannels.h"
#include "core/board/UnsavedCalibrations.h"

#include <QObject>

namespace corvane {

class Main;
class frmSBC;
class frmSBCPrint;

/// Opens and closes the board window and its report, and lends them the Channels: what the board
/// link needs of the main window is answered here.
class BoardWindows : public QObject, public BoardChannels
{
    Q_OBJECT

public:
    explicit BoardWindows(Main &window);
    ~BoardWindows() override;

    /// The menu entry's toggle: opens the board window, its method set from the showing tab, or
    /// closes it.
    void mnuSBC_Click();
    /// Opens the report window, or brings it to the front.
    void openReport();
    /// Closes both at once; the program is closing.
    void shutDown();
    /// Null while it is closed.
    [[nodiscard]] frmSBC *boardWindow() const { return m_board; }

    // What the board link borrows.
    SerialPort &MSComm1() override;
    GpibControl &QBXControl1() override;
    TcpClient &tcpClient1() override;
    [[nodiscard]] QByteArray responseBytes(int channel) const override;
    void clearResponse(int channel) override;
    ChannelUsers &users() override;
    [[nodiscard]] QString faultText(int channel, Exchange half,
                                    const QString &cause) const override;
    UnsavedCalibrations &unsavedCalibrations() override { return m_unsaved; }
    void uncheckMnuSBC() override;

private:
    void openBoard();
    void showUnsaved();

    Main &m_window;
    UnsavedCalibrations m_unsaved;
    frmSBC *m_board = nullptr;
    /// The menu entry was chosen again while the window was closing.
    bool m_reopen = false;
    frmSBCPrint *m_report = nullptr;
    bool m_toldUnsaved = false;
};

} // namespace corvane
