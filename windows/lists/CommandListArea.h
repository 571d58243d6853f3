#pragma once

#include "core/channels/Module1.h"
#include "core/lists/ListFile.h"
#include "core/lists/UnreadRest.h"

#include <QWidget>

#include <vector>

class QCheckBox;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;

namespace corvane {

class Dialogs;
class ElidedLabel;
class ListHost;
class TextGrid;
class frmList;

/// The command-list area below the Channels: the grid, its comments and file name, loading and
/// saving, editing. It owns the list; running it is the engine's, whose buttons are only laid out
/// here.
class CommandListArea : public QWidget
{
    Q_OBJECT

public:
    CommandListArea(Module1 &module, ListHost &host, Dialogs &dialogs, QWidget *parent = nullptr);
    ~CommandListArea() override;

    ElidedLabel *lblFileName;
    QPlainTextEdit *txtVDL;
    TextGrid *flexgridVDL;
    QLineEdit *txtFlexText;
    QPushButton *cmdLoad;
    QPushButton *cmdSave;
    QPushButton *cmdEditList;
    QPushButton *cmdSaveList;
    QPushButton *cmdAddRow;
    QPushButton *cmdDeleteRow;
    QPushButton *cmdClearCol;
    QPushButton *cmdClear;
    QPushButton *cmdMaxGrid;
    QPushButton *cmdMinGrid;
    QPushButton *cmdGetList;
    QPushButton *cmdSendList;
    QPushButton *cmdStopSend;
    QCheckBox *chkStripOpr;
    QLabel *lblProgress;

    /// The full path chosen last, and the name of the list that is open.
    QString ListFilePath;
    QString ListFileName;

    void cmdLoad_Click();
    /// Reads ListFilePath into the grid; ends a run first. Returns how it went, after its message.
    ListContents::End OpenFile();
    void cmdSave_Click();
    void cmdEditList_Click();
    void cmdSaveList_Click();
    void cmdAddRow_Click();
    void cmdDeleteRow_Click();
    void cmdClearCol_Click();
    void cmdClear_Click();
    void cmdMaxGrid_Click();
    void cmdMinGrid_Click();
    /// Opens txtFlexText over the current cell, with the character that was typed, if any.
    void flexgridVDL_EditRequested(const QString &typed);
    /// Any other action on the grid: hides the box and empties it.
    void flexgridVDL_Acted();
    void txtFlexText_KeyDown(int key);
    void txtFlexText_LostFocus();

    /// The grid in its empty start-up form: an empty chamber settings list.
    void initialiseGrid();
    /// Writes chamber settings as cmdSave does, to a path that is already chosen. Returns why the
    /// file could not be written; empty when it is.
    QString saveSettings(const QString &path);
    /// The list as text that reads back to the same list, as far as the file syntax can hold it.
    [[nodiscard]] QString listText() const;
    /// The comments, lines ended by CR LF.
    [[nodiscard]] QString comments() const;

    /// Appends a line to the comments; when they would become too long, they are emptied instead,
    /// and say so.
    void appendComment(const QString &line);

    /// Shows how far a run is, and what is to know about it; row 0: no run.
    void showProgress(int row, int rows, const QString &note = {});

Q_SIGNALS:
    /// What is to be known of the last load or save beside its message; empty: nothing.
    void noted(const QString &note);
    /// The list is about to be replaced; a run of it must end now.
    void listAboutToChange();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void makeControls();
    void layOut();
    void orderTabs();
    void setColumnWidths();
    void connectControls();
    [[nodiscard]] frmList &editor();
    void setKind(int kind);
    void showContents(ListContents &contents);

    Module1 &m_module;
    ListHost &m_host;
    Dialogs &m_dialogs;
    std::vector<ListConstant> m_constants;
    QWidget *m_leftHand = nullptr;
    frmList *m_editor = nullptr;
    UnreadRest m_rest;
};

} // namespace corvane
