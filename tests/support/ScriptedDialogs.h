// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/text/Dialogs.h"
#include "tests/support/Testing.h"

#include <deque>
#include <functional>
#include <vector>

namespace corvane {

/// Answers message boxes and file choices from a script. A box that was not expected fails the
/// test, and so does an answer that nobody asked for.
class ScriptedDialogs : public Dialogs
{
public:
    ~ScriptedDialogs() override;

    using Dialogs::showMessage;

    /// The next box must be exactly this one. `whileOpen` runs while it is open.
    void expectMessage(const MessageBox &box, Answer answer = Answer::Ok,
                       std::function<void()> whileOpen = {});
    void expectMessage(const QString &text, Answer answer = Answer::Ok,
                       std::function<void()> whileOpen = {});
    void answerOpen(const FileChoice &choice) { m_openChoices.push_back(choice); }
    void answerSave(const FileChoice &choice) { m_saveChoices.push_back(choice); }

    Answer showMessage(QObject *asker, const MessageBox &box) override;
    FileChoice openFile(QObject *asker, const FileQuestion &question) override;
    FileChoice saveFile(QObject *asker, const FileQuestion &question) override;
    void dismissAll() override { m_dismissed = true; }
    [[nodiscard]] int openCount() const override { return m_open; }

    /// The texts of all boxes so far, in order.
    QStringList shown;
    /// Every file question asked, in order.
    std::vector<FileQuestion> questions;

private:
    struct Expected
    {
        MessageBox box;
        Answer answer;
        std::function<void()> whileOpen;
    };

    FileChoice takeChoice(std::deque<FileChoice> &choices, const FileQuestion &question);

    std::deque<Expected> m_expected;
    std::deque<FileChoice> m_openChoices;
    std::deque<FileChoice> m_saveChoices;
    int m_open = 0;
    bool m_dismissed = false;
};

} // namespace corvane
