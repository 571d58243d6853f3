// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/text/Dialogs.h"

#include <QFileDialog>

namespace corvane {

/// The file dialog of a file question. It lets every name through to its caller: the toolkit's own
/// refuses some names without a word, and asks its questions in boxes that nobody can dismiss.
class FileDialog : public QFileDialog
{
    Q_OBJECT

public:
    /// Starts in `firstFolder` where the question names none.
    FileDialog(const Dialogs::FileQuestion &question, const QString &firstFolder, AcceptMode mode);

    /// The chosen path, with the filter's extension where the user typed none.
    [[nodiscard]] QString path() const;

protected:
    void accept() override;
};

} // namespace corvane
