// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "devices/Literals.h"

#include <QString>

class QObject;

namespace corvane {

/// Every question to the user: message boxes and file choices. One seam, so that tests answer and
/// record, and so that an unattended run can print instead.
///
/// All calls block until the user has answered; events are processed meanwhile. They must not be
/// made inside a driver's slot.
class Dialogs
{
public:
    enum class Icon { None, Stop, Exclamation };
    enum class Buttons { Ok, YesNo };
    enum class Answer { Ok, Yes, No, Dismissed };

    struct MessageBox
    {
        QString text;
        QString title = u"Corvane"_s;
        Icon icon = Icon::None;
        Buttons buttons = Buttons::Ok;

        bool operator==(const MessageBox &) const = default;
    };

    struct FileQuestion
    {
        /// Filter parts as "Description|*.ext|Description|*.ext".
        QString filter;
        /// The folder that the dialog starts in; empty: the one that the log is in.
        QString folder;
        /// The proposed file name; may be empty.
        QString name;

        bool operator==(const FileQuestion &) const = default;
    };

    struct FileChoice
    {
        enum class Outcome { Chosen, Cancelled, InvalidName };

        Outcome outcome = Outcome::Cancelled;
        QString path;

        bool operator==(const FileChoice &) const = default;
    };

    virtual ~Dialogs() = default;

    /// Shows a message box. `asker` is a window, or any object whose parents lead to one: the box
    /// stands over that window, else over the main one. Dismissed: closed by dismissAll; the
    /// close box and Esc answer Ok, or No where that is a choice.
    virtual Answer showMessage(QObject *asker, const MessageBox &box) = 0;
    /// A message box with an OK button, no icon and the program's title.
    void showMessage(QObject *asker, const QString &text);
    /// Asks for an existing file. Never InvalidName.
    virtual FileChoice openFile(QObject *asker, const FileQuestion &question) = 0;
    /// Asks for a file to write; appends the filter's extension when the user typed none, and asks
    /// before an existing file is replaced. InvalidName: a name that the file system refuses.
    virtual FileChoice saveFile(QObject *asker, const FileQuestion &question) = 0;

    /// Closes every open box and dialog as if the user had dismissed it.
    virtual void dismissAll() = 0;
    /// The number of boxes and dialogs that are open.
    [[nodiscard]] virtual int openCount() const = 0;

protected:
    Dialogs() = default;
    Q_DISABLE_COPY_MOVE(Dialogs)
};

} // namespace corvane
