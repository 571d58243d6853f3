// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/lists/CommandListArea.h"

#include "core/channels/Module1.h"
#include "core/lists/CommandList.h"
#include "tests/core/lists/ListFixture.h"
#include "tests/support/ScriptedDialogs.h"
#include "tests/support/WriteLimit.h"
#include "windows/lists/frmList.h"
#include "windows/widgets/ElidedLabel.h"
#include "windows/widgets/TextGrid.h"

using namespace corvane;

namespace {

using Outcome = Dialogs::FileChoice::Outcome;

class Area : public ListFolder
{
protected:
    Area()
    {
        m_area.resize(1000, 320);
        const auto keepNote = [this](const QString &note) { m_note = note; };
        QObject::connect(&m_area, &CommandListArea::noted, &m_area, keepNote);
        QObject::connect(&m_list, &CommandList::noted, &m_area, keepNote);
        QObject::connect(&m_area, &CommandListArea::captioned, &m_area,
                         [this](const QString &caption) { m_caption = caption; });
    }

    QByteArray saved()
    {
        QFile in(path("b.kms"));
        EXPECT_TRUE(in.open(QIODevice::ReadOnly));
        return in.readAll();
    }

    void load(const char *name, const QByteArray &text)
    {
        m_dialogs.answerOpen({Outcome::Chosen, file(name, text)});
        m_area.cmdLoad->click();
    }

    void showWithFocus()
    {
        m_area.show();
        m_area.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&m_area, 30000));
        m_grid.setFocus();
        m_list.setCurrentCell(1, 1);
    }

    void save(Outcome outcome, QPushButton *button)
    {
        m_dialogs.answerSave({outcome, path("b.kms")});
        button->click();
    }

    /// The grid's size and current cell, the name and the caption.
    [[nodiscard]] QString shown() const
    {
        return u"%1x%2 at %3.%4, %5, %6"_s.arg(m_list.table().rowCount())
            .arg(m_list.columnCount())
            .arg(m_list.currentRow())
            .arg(m_list.currentCol())
            .arg(m_area.lblFileName->text(), m_caption);
    }

    /// The user closes the window at its frame.
    static void closeByHand(QWidget &window)
    {
        QCloseEvent close;
        QSpontaneKeyEvent::setSpontaneous(&close);
        qApp->notify(&window, &close); // sendEvent would take the mark away
    }

    void key(int code) { QTest::keyClick(QApplication::focusWidget(), static_cast<Qt::Key>(code)); }
    [[nodiscard]] bool editing() const { return m_area.txtFlexText->isVisible(); }

    Module1 m_module;
    ScriptedDialogs m_dialogs;
    CommandList m_list{m_module, m_dialogs};
    CommandListArea m_area{m_list, m_module, m_dialogs};
    TextGrid &m_grid = *m_area.flexgridVDL;
    QString m_note;
    QString m_caption;
};

} // namespace

TEST_F(Area, ALoadShowsTheListItsNameAndWhatIsAvailableAndAClearTheStart)
{
    EXPECT_EQ(shown(), u"2x5 at 1.0, , ");
    m_list.setCurrentCell(1, 2);
    load("sub.tst", "// c\n? SP x\n");
    EXPECT_EQ(
        m_dialogs.questions[0].filter,
        u"KMX Chamber Settings (*.kms)|*.kms|KMX Profile (*.kmp)|*.kmp|Test List (*.tst)|*.tst");
    EXPECT_EQ(shown(), u"2x6 at 0.0, sub.tst, Corvane - sub.tst");
    EXPECT_EQ(m_list.comments(), u" c\r\n");
    EXPECT_TRUE(m_area.chkStripOpr->isEnabled() && !m_area.cmdGetList->isEnabled());
    m_area.chkStripOpr->click();
    EXPECT_TRUE(m_list.stripsOperator());
    load("b.kms", "SP\n");
    EXPECT_TRUE(!m_area.chkStripOpr->isEnabled() && m_area.cmdGetList->isEnabled());
    m_dialogs.answerOpen({Outcome::Cancelled, {}});
    m_area.cmdLoad_Click();
    EXPECT_EQ(shown(), u"2x4 at 0.0, b.kms, Corvane - b.kms");
    load("a.tst", "= SP 50\n");
    m_area.cmdClear->click();
    EXPECT_EQ(shown(), u"2x5 at 1.0, , Corvane");
    EXPECT_EQ(m_module.ListKind, 0);
    EXPECT_EQ(m_list.text(1, 0) + m_list.text(1, 1) + m_list.ListFileName, QString());
}

TEST_F(Area, AFailedLoadSaysSoAndTheNameBeforeStaysWhenNothingWasOpened)
{
    load("a.kms", "SP\n");
    m_dialogs.expectMessage(
        u"Error occurred while trying to open file.\r\nFunction cmdLoad_Click"_s);
    m_dialogs.answerOpen({Outcome::Chosen, path("missing.tst")});
    m_area.cmdLoad->click();
    EXPECT_EQ(shown(), u"100x6 at 0.0, a.kms, Corvane - a.kms");
    EXPECT_EQ(m_note, u"missing.tst: No such file or directory");
    EXPECT_EQ(m_module.ListKind, 2);
    m_dialogs.expectMessage(
        u"Error occurred while trying to open file.  Please check string format "
        "on each line: command space value.  Comments are proceeded by //"
        "\r\nFunction cmdLoad_Click"_s);
    load("bad.tst", "wait\n? SP x\n? SP\n");
    EXPECT_EQ(shown(), u"100x6 at 0.0, bad.tst, Corvane - bad.tst");
    EXPECT_EQ(m_note, u"bad.tst: line 3: too few words; 1 line ignored: line 1");
    m_area.cmdClear->click();
    EXPECT_EQ(m_note, QString());
}

TEST_F(Area, SavingWritesSettingsUnderTheChosenNameAndTheCaptionKeepsTheOldOne)
{
    load("a.kms", "// one\n= SP 50\nSP\nA B C D\nT\n"); // saved down to the row without a command
    m_list.setCurrentCell(1, 2);
    save(Outcome::Cancelled, m_area.cmdSave);
    EXPECT_FALSE(QFile::exists(path("b.kms")));
    EXPECT_EQ(shown(), u"5x4 at 1.2, a.kms, Corvane - a.kms");
    EXPECT_EQ(m_dialogs.questions[1].filter + m_dialogs.questions[1].name,
              u"KMX Chamber Settings(*.kms)|*.kmsa.kms");

    m_area.txtVDL->setPlainText(u"\u00a0one\n\ntwo"_s);
    save(Outcome::Chosen, m_area.cmdSave);
    EXPECT_EQ(saved(), "\\\\\xa0one\r\n\\\\two\r\n= SP 50\r\nSP \r\n");
    EXPECT_EQ(m_note, u"Row 3 has no command: it and the rows below it were not saved");
    EXPECT_EQ(shown(), u"5x4 at 0.0, b.kms, Corvane - a.kms");
    m_list.setText(1, 2, u"\u20ac"_s);
    for (const Outcome outcome : {Outcome::Chosen, Outcome::InvalidName}) {
        m_dialogs.expectMessage(u"Error occurred while trying to save file."_s);
        save(outcome, m_area.cmdSave);
        EXPECT_TRUE(saved().endsWith("= SP 50\r\nSP \r\n"));
        EXPECT_EQ(m_note, outcome == Outcome::Chosen
                              ? u"b.kms: line 3: \"\u20ac\" (U+20ac) does not fit into 8-bit text"
                              : u"b.kms: no file can have this name");
    }
    load("t.tst", "= SP 1\n");
    m_area.cmdSave_Click(); // asks nothing: only settings are saved this way
}

TEST_F(Area, RowsAreAddedUpToAHundredAndDeletedWithTheirNumbers)
{
    load("a.kms", QByteArray("SP\n").repeated(98));
    for (int click = 0; click < 2; ++click) {
        m_area.cmdAddRow->click();
        EXPECT_EQ(shown(), u"100x4 at 99.1, a.kms, Corvane - a.kms");
    }
    load("b.kms", "A\nB\nC\n");
    m_area.cmdDeleteRow->click(); // no row is selected
    m_list.setCurrentCell(1, 1);
    m_module.SendMode = true;
    m_area.cmdDeleteRow_Click();
    EXPECT_EQ(m_list.table().rowCount(), 4);
    m_module.SendMode = false;
    m_area.cmdDeleteRow->click();
    EXPECT_EQ(m_list.text(1, 0) + m_list.text(1, 1) + m_list.text(2, 0), u"1B2");
    for (int row = 0; row < 3; ++row)
        m_area.cmdDeleteRow->click(); // also the last one
    EXPECT_EQ(shown(), u"1x4 at 0.1, b.kms, Corvane - b.kms");
}

TEST_F(Area, AColumnIsClearedUnlessGetListRuns)
{
    load("a.kms", "= SP 50\n= T 5\n");
    m_list.setCurrentCell(2, 2);
    m_module.GetMode = true;
    m_area.cmdClearCol->click();
    EXPECT_EQ(m_list.text(1, 2), u"50");
    m_module = {.SendMode = true};
    m_area.cmdClearCol->click();
    m_area.cmdClearCol->click(); // the numbers stay
    EXPECT_EQ(shown(), u"3x4 at 0.0, a.kms, Corvane - a.kms");
    EXPECT_EQ(m_list.text(1, 0) + m_list.text(1, 2) + m_list.text(2, 2) + m_list.text(0, 2),
              u"1Value");
}

TEST_F(Area, ACellIsEditedInPlaceWithTheKeyboardAlone)
{
    load("a.kms", "= SP 50\n= T 5\n");
    showWithFocus();
    key(Qt::Key_Right);
    key(Qt::Key_7);
    EXPECT_TRUE(editing() && m_area.txtFlexText->hasFocus());
    EXPECT_TRUE(m_area.txtFlexText->geometry().contains(m_grid.cellRect(1, 2).center()));
    key(Qt::Key_5);
    key(Qt::Key_Return);
    EXPECT_EQ(m_list.text(1, 2), u"75");
    EXPECT_EQ(m_list.currentRow(), 2);
    // What the box does not use is not the grid's.
    const int unused[] = {Qt::Key_Shift, Qt::Key_Control, Qt::Key_Alt,      Qt::Key_Meta,
                          Qt::Key_Up,    Qt::Key_F2,      Qt::Key_PageDown, Qt::Key_CapsLock};
    for (const int code : {Qt::Key_F2, Qt::Key_9})
        key(code);
    for (const int code : unused)
        key(code);
    EXPECT_TRUE(editing() && m_area.txtFlexText->text() == u"9");
    key(Qt::Key_Escape);
    EXPECT_EQ(m_list.text(2, 2), u"5");
    for (const int code : {Qt::Key_Enter, Qt::Key_8, Qt::Key_Enter})
        key(code);
    EXPECT_EQ(m_list.text(2, 2), u"8");
    EXPECT_EQ(m_list.currentRow(), 2); // the last row
    key(Qt::Key_F2);
    m_area.txtFlexText->setText(u"a\r\nb"_s); // as a paste brings it
    key(Qt::Key_Enter);
    EXPECT_EQ(m_list.text(2, 2), u"a b");
}

TEST_F(Area, TextLeftInTheCellBoxIsLost)
{
    load("a.kms", "= SP 50\n= T 5\n");
    showWithFocus();
    const std::function<void()> leavings[] = {
        [this] { m_area.cmdLoad->setFocus(); },
        [this] { QTest::mouseClick(m_grid.viewport(), Qt::LeftButton); },
        [this] { m_list.setCurrentCell(2, 1); },
        [this] { m_grid.setColumnWidth(1, 50); },
    };
    for (const auto &leave : leavings) {
        m_grid.setFocus();
        m_list.setCurrentCell(1, 1);
        key(Qt::Key_X);
        ASSERT_TRUE(editing());
        leave();
        EXPECT_FALSE(editing());
        EXPECT_EQ(m_list.text(1, 1) + m_list.text(2, 1), u"= SP= T");
    }
    m_module.SendMode = true;
    m_area.flexgridVDL_EditRequested(u"x"_s); // a list that runs is not edited
    EXPECT_FALSE(editing());
}

TEST_F(Area, TheGridWidensOverTheCommentsAndBack)
{
    m_area.show();
    const int narrow = m_grid.width();
    for (const bool wide : {true, false}) {
        (wide ? m_area.cmdMaxGrid : m_area.cmdMinGrid)->click();
        QApplication::processEvents();
        EXPECT_EQ(m_grid.width() > narrow, wide);
        EXPECT_EQ(m_area.txtVDL->isVisible(), !wide);
        EXPECT_NE(m_area.cmdMaxGrid->isVisible(), m_area.cmdMinGrid->isVisible());
        EXPECT_TRUE(m_area.cmdStopSend->isVisible());
    }
}

TEST_F(Area, TheEditorSavesTheTextAsItStandsAndTheListIsReadBackFromTheFile)
{
    load("a.tst", "// c\n? SP x\n! SP 25 0.5\n");
    m_area.cmdEditList->click();
    frmList &editor = *m_area.findChild<frmList *>();
    EXPECT_TRUE(editor.isModal());
    EXPECT_EQ(editor.windowTitle(), u"Edit List");
    EXPECT_EQ(editor.text(), u"\\\\ c\r\n? SP x\r\n! SP 25 0.5\r\n");
    save(Outcome::Cancelled, editor.cmdSave);
    EXPECT_EQ(m_dialogs.questions.back().filter + m_dialogs.questions.back().name,
              u"Test List (*.tst)|*.tst");
    editor.txtList->setPlainText(u"= SP \u20ac"_s);
    m_dialogs.expectMessage(u"Error occurred while trying to save file."_s);
    save(Outcome::Chosen, editor.cmdSave);
    EXPECT_TRUE(editor.isVisible());

    editor.txtList->setPlainText(u"= SP\u00a0 50\nT"_s);
    save(Outcome::Chosen, editor.cmdSave); // read by its extension, whatever was edited
    EXPECT_FALSE(editor.isVisible());
    EXPECT_EQ(saved(), "= SP\xa0 50\r\nT");
    EXPECT_EQ(shown(), u"3x4 at 0.0, b.kms, Corvane - b.kms");
    m_area.cmdSaveList->click(); // shows the text and only saves it
    EXPECT_TRUE(editor.isVisible() && editor.txtList->isReadOnly());
    editor.cmdCAncel->click();
    EXPECT_FALSE(editor.isVisible());
}

TEST_F(Area, TheEditorAsksBeforeAChangeIsLostUnlessCancelled)
{
    const Dialogs::MessageBox question{
        .text = u"The text has been changed.  Close without saving it?"_s,
        .icon = Dialogs::Icon::Exclamation,
        .buttons = Dialogs::Buttons::YesNo};
    const std::function<void(frmList &)> leavings[] = {
        [](frmList &editor) { QTest::keyClick(&editor, Qt::Key_Escape); }, &closeByHand};
    for (const auto &leave : leavings) {
        m_area.cmdEditList->click();
        frmList &editor = *m_area.findChild<frmList *>();
        EXPECT_EQ(editor.text(), QString()); // a row that holds nothing gives no line
        leave(editor);
        EXPECT_FALSE(editor.isVisible());
        m_area.cmdEditList->click();
        QTest::keyClicks(editor.txtList, u"= SP 50"_s);
        m_dialogs.expectMessage(question, Dialogs::Answer::No);
        leave(editor);
        EXPECT_TRUE(editor.isVisible());
        m_dialogs.expectMessage(question, Dialogs::Answer::Yes);
        leave(editor);
        EXPECT_FALSE(editor.isVisible());
    }
    m_area.cmdEditList->click();
    frmList &editor = *m_area.findChild<frmList *>();
    QTest::keyClicks(editor.txtList, u"= SP 50"_s);
    {
        m_dialogs.expectMessage(u"Error occurred while trying to save file."_s);
        m_dialogs.answerSave({Outcome::Chosen, path("b.kms")});
        const WriteLimit full(2);
        editor.cmdSave_Click();
    }
    EXPECT_EQ(m_note + u'|' + editor.lblNote->text(), u"b.kms: File too large|"_s + m_note);
    EXPECT_FALSE(QFile::exists(path("b.kms")));
    editor.cmdCAncel->click();
    EXPECT_FALSE(editor.isVisible());
}

TEST_F(Area, WhatALoadThatBrokeOffDidNotReadIsNotSavedOverUnasked)
{
    const QByteArray whole = "A\nB\n" + QByteArray(70'000, 'x') + "\nC\n";
    m_dialogs.expectMessage(
        u"Error occurred while trying to open file.\r\nFunction cmdLoad_Click"_s);
    load("b.kms", whole);
    m_area.cmdEditList->click();
    frmList &editor = *m_area.findChild<frmList *>();
    EXPECT_EQ(editor.text(), u"A\r\nB\r\n");
    const QString warning = u"The lines of b.kms from line 3 on have not been read.  Saving over "
                            "that file would lose them."_s;
    EXPECT_TRUE(editor.lblNote->isVisible());
    EXPECT_EQ(editor.lblNote->text(), warning);
    const Dialogs::MessageBox question{.text = warning + u"\r\nSave all the same?"_s,
                                       .icon = Dialogs::Icon::Exclamation,
                                       .buttons = Dialogs::Buttons::YesNo};
    for (QPushButton *button : {editor.cmdSave, m_area.cmdSave}) {
        m_dialogs.expectMessage(question, Dialogs::Answer::No);
        save(Outcome::Chosen, button);
        EXPECT_EQ(saved(), whole);
    }
    m_dialogs.answerSave({Outcome::Chosen, path("other.kms")});
    m_area.cmdSave_Click();
    m_dialogs.expectMessage(question, Dialogs::Answer::Yes);
    save(Outcome::Chosen, editor.cmdSave);
    EXPECT_EQ(saved(), "A\r\nB\r\n");
    m_area.cmdEditList->click();
    EXPECT_FALSE(editor.lblNote->isVisible());
    save(Outcome::Chosen, editor.cmdSave); // nothing is left to be lost
}

TEST_F(Area, ALoggedLineThatWouldMakeTheCommentsTooLongEmptiesThem)
{
    for (const auto &[before, reset] : {std::pair{30000, false}, std::pair{30001, true}}) {
        m_area.txtVDL->setPlainText(QString(before - 3, u'x'));
        m_area.appendComment(u"A"_s);
        EXPECT_EQ(m_area.txtVDL->toPlainText() ==
                      u"Text Box > 32000 Characters: Buffer Over Run: Text Box Reset",
                  reset);
    }
}
