#pragma once

#include "core/board/CalibrationTable.h"
#include "core/board/modSBC.h"

#include <QPointer>
#include <QWidget>

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
///
/// Closing hides the window; `closed` follows when nothing of it is left on the stack, and from
/// then on it may be destroyed, with deleteLater.
class frmSBCPrint : public QWidget
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
    void cmdCAncel_Click();
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

Q_SIGNALS:
    void closed();

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    /// One procedure of the window that waits or asks: while it is in scope the window stays and
    /// its other actions are disabled.
    class Procedure;
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
    void showBusy(bool busy);
    void finishClosing();

    void fillFromBoard();
    void remember();
    /// True, after a word about why, when the report cannot be saved now.
    bool refusesToSave();
    [[nodiscard]] bool isClosing() const { return m_closing; }
    void tell(const QString &text);
    void write(const QString &path, const QByteArray &report);

    QPointer<BoardSession> m_session;
    const ReportedBoard m_board;
    modSBC &m_remembered;
    Dialogs &m_dialogs;
    QString m_version;
    bool m_closing = false;
    bool m_closed = false;
    int m_procedures = 0;
    bool m_exchanging = false;
    int m_openBoxes = 0;
};

} // namespace corvane
