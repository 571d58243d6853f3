// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/board/BoardLink.h"
#include "core/board/BoardSession.h"
#include "devices/WaitGroup.h"
#include "windows/widgets/ClosableWindow.h"
#include "windows/widgets/ControlArray.h"

#include <QPointer>
#include <QTimer>

class QComboBox;
class QLabel;
class QStatusBar;
class QTabWidget;

namespace corvane {

class CalibrationPanel;
class DacAdcPanel;
class DigitalIoPanel;
class IdentityPanel;
class UnsavedCalibrations;

/// The board window: composes the pages, chooses the communication method and the meter's address,
/// shows the last exchange, and opens and closes. The exchanges are BoardLink's, who may exchange
/// is BoardSession's.
class frmSBC : public ClosableWindow
{
    Q_OBJECT

public:
    frmSBC(ChannelSet &channels, UnsavedCalibrations &unsaved, Dialogs &dialogs, Clock &clock);
    ~frmSBC() override;

    /// Selects the method's option and stores the method; others than 0..2 are ignored.
    void CallOptSbcCommMeth(qint16 index);
    void OptSbcCommMeth_Click(int index);
    void cboMeasInstAdrGpib_Change();

    /// Waits for one tick of caliTimer set to `ms`.
    void DelayMs(qint16 ms);
    void caliTimer_Timer() { m_caliTimerTag.clear(); }

    /// The pauses of closing.
    void Form_QueryUnload();
    /// Closes at once, without the pauses of closing: the program ends.
    void shutDown();

    [[nodiscard]] BoardLink &link() { return m_link; }
    [[nodiscard]] BoardSession &session() { return m_session; }
    [[nodiscard]] const BoardSession &session() const { return m_session; }

    ControlArray<QRadioButton, 3> OptSbcCommMeth{};
    QComboBox *cboMeasInstAdrGpib;
    /// Which channels' calibration is not in the EEPROM yet.
    QLabel *lblUnsaved;
    QStatusBar *StatusBar1;
    ControlArray<QLabel, 2> statusPanels{};
    QTimer caliTimer;

    DacAdcPanel *dacAdc;
    CalibrationPanel *calibration;
    DigitalIoPanel *digitalIo;
    IdentityPanel *identity;

Q_SIGNALS:
    void reportRequested();

private:
    QWidget *makeMethod();
    QWidget *makeMeter();
    QTabWidget *makePages(UnsavedCalibrations &unsaved);
    void makeStatusBar();
    void keepFocus(bool running);
    void endProcedures() override { m_session.shut(); }
    void unload() override { Form_QueryUnload(); }

    WaitGroup m_waits;
    WaitGroup m_unloadWaits;
    BoardLink m_link;
    BoardSession m_session;
    QString m_caliTimerTag;
    QPointer<QWidget> m_focusBefore;
};

} // namespace corvane
