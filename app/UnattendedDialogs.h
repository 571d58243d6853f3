// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/text/Dialogs.h"

class QTextStream;

namespace corvane {

/// The dialogs of a run without a display: a message goes to a stream, and its box is answered with
/// OK, or with No where there is a choice. File questions are cancelled.
class UnattendedDialogs : public Dialogs
{
public:
    /// `messages` must outlive the dialogs.
    explicit UnattendedDialogs(QTextStream &messages)
        : m_messages(messages)
    {
    }

    using Dialogs::showMessage;

    Answer showMessage(QObject *asker, const MessageBox &box) override;
    FileChoice openFile(QObject *, const FileQuestion &) override { return {}; }
    FileChoice saveFile(QObject *, const FileQuestion &) override { return {}; }
    void dismissAll() override {}
    [[nodiscard]] int openCount() const override { return 0; }

private:
    QTextStream &m_messages;
};

} // namespace corvane
