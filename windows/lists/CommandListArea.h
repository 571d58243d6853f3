// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QHash>
#include <QWidget>

class QCheckBox;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;

namespace corvane {

class CommandList;
class Dialogs;
class ElidedLabel;
class TextGrid;
class frmList;
struct Module1;

/// The command-list area below the Channels: shows the list in its grid, with its comments and file
/// name, and hands on loading, saving and editing. The buttons of a run are only laid out here.
class CommandListArea : public QWidget
{
    Q_OBJECT

public:
    /// `module` tells whether a run is on.
    CommandListArea(CommandList &list, const Module1 &module, Dialogs &dialogs,
                    QWidget *parent = nullptr);
    ~CommandListArea() override;

    ElidedLabel *lblFileName;
    QPlainTextEdit *txtVDL;
    TextGrid *flexgridVDL;
    QLineEdit *txtFlexText;
    QPushButton *cmdLoad;
    QPushButton *cmdSave;
    QPushButton *cmdEditList;
    QPushButton *cmdSaveResults;
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

    void cmdLoad_Click();
    void cmdSave_Click();
    void cmdEditList_Click() { edit(false); }
    void cmdSaveList_Click() { edit(true); }
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

    /// Appends a line to the comments; when they would become too long, they are emptied instead,
    /// and say so.
    void appendComment(const QString &line);

    /// Shows how far a run is, and what is to know about it; row 0: no run.
    void showProgress(int row, int rows, const QString &note);

Q_SIGNALS:
    /// What the main window's caption is to be.
    void captioned(const QString &caption);
    /// A save failed, and why.
    void noted(const QString &note);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void makeControls();
    void layOut();
    void setColumnWidths();
    void connectControls();
    void showList();
    void showName(const QString &name);
    void edit(bool readOnly);
    void handOverComments();

    CommandList &m_list;
    const Module1 &m_module;
    Dialogs &m_dialogs;
    QWidget *m_leftHand = nullptr;
    frmList *m_editor = nullptr;
    QHash<QString, int> m_columnWidths; ///< by the columns' titles, in pixels
};

} // namespace corvane
