// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/board/Calibration.h"
#include "core/board/CalibrationScan.h"
#include "core/board/CalibrationTable.h"
#include "windows/board/BoardPanel.h"

#include <functional>
#include <optional>

class QLabel;
class QLineEdit;
class QPushButton;
class QStackedLayout;

namespace corvane {

class TextGrid;
class UnsavedCalibrations;

/// The page that calibrates channels against the reference meter: the grid, calibrating and
/// scanning with their cancel buttons, and the two manual entries. The sequences are Calibration's
/// and CalibrationScan's.
class CalibrationPanel : public BoardPanel
{
    Q_OBJECT

public:
    CalibrationPanel(BoardLink &link, BoardSession &session, UnsavedCalibrations &unsaved,
                     QWidget *identity);

    void cmdCal_Click();
    void cmdCancelCal_Click();
    void cmdInc_Click();
    void cmdDec_Click();
    void cmdScan_Click();
    void cmdScanCals_Click();
    void cmdCancelScan_Click();
    void cmdWriteCal_Click();

    /// The meter's address as the window's box holds it.
    void setMeterAddress(const QString &text) { m_meterAddress = text; }
    [[nodiscard]] const CalibrationTable &table() const { return m_table; }

    QLineEdit *txtChannel;
    QPushButton *cmdDec;
    QPushButton *cmdInc;
    QPushButton *cmdCal;
    QPushButton *cmdCancelCal;
    QPushButton *cmdScan;
    QPushButton *cmdCancelScan;
    QPushButton *cmdScanCals;
    QPushButton *cmdWriteCal;
    QPushButton *cmdReport;
    QLabel *lblProgress;
    TextGrid *MSFlexGrid1;

Q_SIGNALS:
    /// The report of the grid is wanted.
    void reportRequested();

private:
    QWidget *makeActions();
    QWidget *makeGrid();
    void connectSequences();

    /// The meter's address, or nothing after the message that it is none.
    std::optional<int> checkMeterAddress();
    bool confirmMeter(int channel);
    void runCalibration(int channel, int meterAddress);
    void runScan(const std::function<CalibrationEnd()> &scan);
    /// The cancel button takes the place of the one that started the work, or goes again.
    void showCancel(QStackedLayout *place, bool running);
    void showEnd(const CalibrationEnd &end);

    UnsavedCalibrations &m_unsaved;
    std::optional<BoardLink::Method> m_calibratedBy; ///< the newest of them
    CalibrationTable m_table;
    Calibration m_calibration;
    CalibrationScan m_scan;
    QString m_meterAddress;
    QStackedLayout *m_calPlace = nullptr;
    QStackedLayout *m_scanPlace = nullptr;
};

} // namespace corvane
