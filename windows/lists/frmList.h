// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/lists/UnreadRest.h"

#include <QDialog>

class QLabel;
class QPlainTextEdit;
class QPushButton;

namespace corvane {

class Dialogs;

/// The list editor: the list as text, saved to a file of the user's choice. Making the text and
/// reading the file back are its owner's.
class frmList : public QDialog
{
    Q_OBJECT

public:
    explicit frmList(Dialogs &dialogs, QWidget *parent = nullptr);

    /// What the user has to know of the text or of its file; hidden when there is nothing.
    QLabel *lblNote;
    QPlainTextEdit *txtList;
    QPushButton *cmdSave;
    QPushButton *cmdCAncel;

    /// Opens the window, modal, with the text; returns at once. `listKind` chooses the filter of
    /// the file dialog, `rest` is what the text's own file has beyond the text, `folder` is where
    /// the dialog starts at first; empty: where the log is.
    void edit(const QString &text, int listKind, bool readOnly, const UnreadRest &rest,
              const QString &folder);

    void cmdSave_Click();
    void cmdCAncel_Click() { close(); }
    /// Esc: closes, and asks before when the text has been changed.
    void reject() override;

    /// The text, lines ended by CR LF.
    [[nodiscard]] QString text() const;

Q_SIGNALS:
    /// The text has been written to the file.
    void saved(const QString &path);
    /// The file could not be written, and why.
    void saveFailed(const QString &note);

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    void showNote(const QString &note);

    Dialogs &m_dialogs;
    int m_listKind = 0;
    QString m_folder;
    UnreadRest m_rest;
};

} // namespace corvane
