// SPDX-License-Identifier: GPL-3.0-or-later
#include "ScriptedDialogs.h"

namespace corvane {

ScriptedDialogs::~ScriptedDialogs()
{
    for (const Expected &expected : m_expected)
        ADD_FAILURE() << "message box never shown: " << expected.box.text.toStdString();
    EXPECT_TRUE(m_openChoices.empty()) << "an open dialog was expected";
    EXPECT_TRUE(m_saveChoices.empty()) << "a save dialog was expected";
}

void ScriptedDialogs::expectMessage(const MessageBox &box, Answer answer,
                                    std::function<void()> whileOpen)
{
    m_expected.push_back({box, answer, std::move(whileOpen)});
}

void ScriptedDialogs::expectMessage(const QString &text, Answer answer,
                                    std::function<void()> whileOpen)
{
    expectMessage(MessageBox{.text = text}, answer, std::move(whileOpen));
}

Dialogs::Answer ScriptedDialogs::showMessage(QObject *, const MessageBox &box)
{
    shown.append(box.text);
    if (m_expected.empty()) {
        ADD_FAILURE() << "unexpected message box: " << box.text.toStdString();
        return Answer::Dismissed;
    }
    const Expected expected = m_expected.front();
    m_expected.pop_front();
    EXPECT_EQ(box.text.toStdString(), expected.box.text.toStdString());
    EXPECT_EQ(box.title.toStdString(), expected.box.title.toStdString());
    EXPECT_EQ(box.icon, expected.box.icon);
    EXPECT_EQ(box.buttons, expected.box.buttons);
    m_dismissed = false;
    ++m_open;
    if (expected.whileOpen)
        expected.whileOpen();
    --m_open;
    return m_dismissed ? Answer::Dismissed : expected.answer;
}

Dialogs::FileChoice ScriptedDialogs::openFile(QObject *, const FileQuestion &question)
{
    return takeChoice(m_openChoices, question);
}

Dialogs::FileChoice ScriptedDialogs::saveFile(QObject *, const FileQuestion &question)
{
    return takeChoice(m_saveChoices, question);
}

Dialogs::FileChoice ScriptedDialogs::takeChoice(std::deque<FileChoice> &choices,
                                                const FileQuestion &question)
{
    questions.push_back(question);
    if (choices.empty()) {
        ADD_FAILURE() << "unexpected file dialog";
        return {};
    }
    FileChoice choice = choices.front();
    choices.pop_front();
    return choice;
}

} // namespace corvane
