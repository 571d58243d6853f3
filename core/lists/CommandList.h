// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/lists/ListFile.h"
#include "core/lists/UnreadRest.h"
#include "core/text/GridModel.h"

namespace corvane {

class Dialogs;
struct Module1;

/// The command list: its cells, which the grid shows and the engine works through, its kind, file,
/// comments and constants. A fault of its file it shows itself, in a message box.
class CommandList : public GridModel
{
    Q_OBJECT

public:
    /// An empty chamber settings list. The module's ListKind follows the list's.
    CommandList(Module1 &module, Dialogs &dialogs, QObject *parent = nullptr);

    /// The full path chosen last, and the name of the list that is open.
    QString ListFilePath;
    QString ListFileName;

    /// Its number in listKinds.
    [[nodiscard]] int kind() const { return m_kind; }
    /// Lines ended by CR LF. A view hands over what the user has made of them.
    [[nodiscard]] const QString &comments() const { return m_comments; }
    void setComments(const QString &comments) { m_comments = comments; }
    /// A test list's "=" and "?" commands go out without their operator.
    [[nodiscard]] bool stripsOperator() const { return m_stripsOperator; }
    void setStripsOperator(bool on) { m_stripsOperator = on; }
    /// What of its file is not in the list, as the load broke off.
    [[nodiscard]] const UnreadRest &rest() const { return m_rest; }
    /// The row as one line, without its reply.
    [[nodiscard]] QString rowText(int row) const;
    /// The list as text that reads back to the same list, as far as the file syntax can hold it.
    [[nodiscard]] QString text() const;

    using GridModel::text;

    /// Reads the file, or ListFilePath again; a run ends first. Returns how it went, after its
    /// message.
    ListContents::End OpenFile(const QString &path);
    ListContents::End OpenFile();
    /// The same for a file that need not be there (a recent one, one that was dropped): what cannot
    /// be opened is told, and the list and its run stay as they are.
    void openIfThere(const QString &path);
    /// The list as at the start: no name, one empty row of chamber settings, the comments kept.
    void clear();
    /// Appends an empty row, unless as many as rows can be added by hand are there.
    void addRow();
    /// Takes the row away and numbers those below anew.
    void deleteRow(int row);
    /// Writes chamber settings, down to the first row without a command. Returns why the file could
    /// not be written; empty when it is.
    QString saveSettings(const QString &path);

Q_SIGNALS:
    /// The list is about to be replaced; a run of it must end now.
    void aboutToBeReplaced();
    /// Its cells and its kind are another list's now.
    void replaced();
    /// A file has brought these comments, this name; empty: the list has no name any more.
    void commented(const QString &comments);
    void named(const QString &name);
    /// What is to be known of the last load or save beside its message; empty: nothing.
    void noted(const QString &note);

private:
    void setKind(int kind);
    void initialise();

    Module1 &m_module;
    Dialogs &m_dialogs;
    int m_kind = 0;
    QString m_comments;
    std::vector<ListConstant> m_constants;
    UnreadRest m_rest;
    bool m_stripsOperator = false;
};

} // namespace corvane
