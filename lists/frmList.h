#pragma once

#include <QDialog>

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

    QPlainTextEdit *txtList;
    QPushButton *cmdSave;
    QPushButton *cmdCAncel;

    /// Opens the window, modal, with the text; returns at once. `listKind` chooses the filter of
    /// the file dialog.
    void edit(const QString &text, int listKind, bool readOnly);

    void cmdSave_Click();
    void cmdCAncel_Click();

    /// The text, lines ended by CR LF.
    [[nodiscard]] QString text() const;

Q_SIGNALS:
    /// The text has been written to the file.
    void saved(const QString &path);

private:
    Dialogs &m_dialogs;
    int m_listKind = 0;
};

} // namespace corvane
