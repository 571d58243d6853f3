// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/board/CalibrationTable.h"
#include "core/board/modSBC.h"
#include "windows/widgets/ClosableWindow.h"

#include <QPointer>

#include <array>

class QLabel;
class QLineEdit;
class QPushButton;
class QStatusBar;

namespace corvane {

class BoardLink;
class BoardSession;
class Dialogs;

/// What a report is about; all of it goes with the board window.
struct ReportedBoard
{
    BoardSession &session;
    BoardLink &link;
    /// The calibration grid as it is now.
    const CalibrationTable &table;
};

/// The report window: its twelve fields, filling them from the board, and saving the report of the
/// calibration grid. The layout of the text is CalibrationReport's. It is to be closed with the
/// board window.
class frmSBCPrint : public ClosableWindow
{
    Q_OBJECT

public:
    /// `version` is this program's, as major "." minor "." revision.
    frmSBCPrint(const ReportedBoard &board, modSBC &remembered, Dialogs &dialogs, QString version);
    ~frmSBCPrint() override;

    /// Fills the fields; call it once the window is shown. Waits for the board.
    void Form_Load();
    void cmdAutoFill_Click();
    void cmdGenFilename_Click();
    void cmdAccept_Click();
    void cmdCAncel_Click() { close(); }
    /// Says which channels of the report are not in the board's EEPROM yet.
    void showUnsaved(const QString &text);
    /// Asks for the file and writes the report.
    void PrintCals();

    QLineEdit *txtPartNum;
    QLineEdit *txtSerialNum;
    QLineEdit *txtPicFirmWare;
    QLineEdit *txtRabbitVersion;
    QLineEdit *txtFileName;
    QLineEdit *txtDate;
    QLineEdit *txtAppVer;
    QLineEdit *txtYourName;
    QLineEdit *txtMeterName;
    QLineEdit *txtMeterModel;
    QLineEdit *txtMeterCalDue;
    QLineEdit *txtMeterADINum;
    QPushButton *cmdAutoFill;
    QPushButton *cmdGenFilename;
    QPushButton *cmdAccept;
    QPushButton *cmdCAncel;
    QStatusBar *StatusBar1;
    QLabel *statusPanel;
    QLabel *lblUnsaved;

private:
    struct FieldRow
    {
        QString label;
        QLineEdit *frmSBCPrint::*box;
        QString ReportFields::*field;
        QString name;
    };

    static const std::array<FieldRow, 12> &fieldRows();
    QWidget *makeGroup(const QString &title, size_t first, size_t count);
    QWidget *makeButtons();
    void makeStatusBar();
    /// Its other actions are disabled.
    void showBusy(bool busy) override;
    void endProcedures() override;

    void fillFromBoard();
    void remember();
    /// True, after a word about why, when the report cannot be saved now.
    bool refusesToSave();
    void tell(const QString &text);
    void write(const QString &path, const QByteArray &report);

    QPointer<BoardSession> m_session;
    const ReportedBoard m_board;
    modSBC &m_remembered;
    Dialogs &m_dialogs;
    QString m_version;
    bool m_exchanging = false;
    int m_openBoxes = 0;
};

} // namespace corvane
