#include "lists/CommandListArea.h"

#include "FakeListHost.h"
#include "lists/frmList.h"
#include "platform/TextGrid.h"
#include "tests/support/ScriptedDialogs.h"

#include <QApplication>
#include <QCheckBox>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

using namespace corvane;
using namespace Qt::StringLiterals;

namespace {

using Outcome = Dialogs::FileChoice::Outcome;

class Area : public testing::Test
{
protected:
    Area() { m_area.resize(1000, 320); }

    QString path(const char *name) { return m_folder.filePath(QString::fromLatin1(name)); }

    QString file(const char *name, const QByteArray &text)
    {
        QFile out(path(name));
        EXPECT_TRUE(out.open(QIODevice::WriteOnly));
        out.write(text);
        return out.fileName();
    }

    static QByteArray contents(const QString &name)
    {
        QFile in(name);
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
        QApplication::setActiveWindow(&m_area);
        m_grid.setFocus();
        m_grid.setCurrentCell(1, 1);
    }

    void key(int code) { QTest::keyClick(QApplication::focusWidget(), static_cast<Qt::Key>(code)); }
    bool editing() const { return m_area.txtFlexText->isVisible(); }

    QTemporaryDir m_folder;
    Module1 m_module;
    FakeListHost m_host;
    ScriptedDialogs m_dialogs;
    CommandListArea m_area{m_module, m_host, m_dialogs};
    TextGrid &m_grid = *m_area.flexgridVDL;
    frmList &m_editor = *m_area.findChild<frmList *>();
};

} // namespace

TEST_F(Area, ALoadShowsTheListItsNameAndWhatIsAvailable)
{
    m_grid.setCurrentCell(1, 2);
    load("sub.tst", "// c\n? SP x\n");
    EXPECT_EQ(
        m_dialogs.questions[0].filter,
        u"KMX Chamber Settings (*.kms)|*.kms|KMX Profile (*.kmp)|*.kmp|Test List (*.tst)|*.tst");
    EXPECT_EQ(m_grid.currentRow(), 0);
    EXPECT_EQ(m_area.lblFileName->text(), u"sub.tst");
    EXPECT_EQ(m_host.caption, u"Corvane - sub.tst");
    EXPECT_EQ(m_area.comments(), u" c\r\n");
    EXPECT_TRUE(m_area.chkStripOpr->isEnabled());
    EXPECT_FALSE(m_area.cmdGetList->isEnabled());
    load("b.kms", "SP\n");
    EXPECT_FALSE(m_area.chkStripOpr->isEnabled());
    EXPECT_TRUE(m_area.cmdGetList->isEnabled());
    m_dialogs.answerOpen({Outcome::Cancelled, {}});
    m_area.cmdLoad_Click();
    EXPECT_EQ(m_area.lblFileName->text(), u"b.kms");
}

TEST_F(Area, AFailedLoadSaysSoAndTheNameBeforeStaysWhenNothingWasOpened)
{
    const QString start = u"Error occurred while trying to open file."_s;
    const QString end = u"\r\nFunction cmdLoad_Click"_s;
    load("a.kms", "SP\n");
    m_dialogs.expectMessage(start + end);
    m_dialogs.answerOpen({Outcome::Chosen, path("missing.tst")});
    m_area.cmdLoad->click();
    EXPECT_EQ(m_area.lblFileName->text(), u"a.kms");
    EXPECT_EQ(m_module.ListKind, 2);
    EXPECT_EQ(m_grid.rowCount(), 100);

    m_dialogs.expectMessage(start +
                            u"  Please check string format on each line: command space value."
                            "  Comments are proceeded by //"_s +
                            end);
    load("bad.tst", "? SP x\n? SP\n");
    EXPECT_EQ(m_area.lblFileName->text(), u"bad.tst");
    EXPECT_EQ(m_grid.text(1, 3), u"x");
}

TEST_F(Area, SavingWritesSettingsUnderTheChosenNameAndTheCaptionKeepsTheOldOne)
{
    load("a.kms", "// one\n= SP 50\n");
    m_dialogs.answerSave({Outcome::Cancelled, path("b.kms")});
    m_area.cmdSave->click();
    EXPECT_FALSE(QFile::exists(path("b.kms")));
    EXPECT_EQ(m_area.lblFileName->text(), u"a.kms");
    EXPECT_EQ(m_dialogs.questions[1].filter, u"KMX Chamber Settings(*.kms)|*.kms");
    EXPECT_EQ(m_dialogs.questions[1].name, u"a.kms");

    m_area.txtVDL->setPlainText(u"\u00a0one\n\ntwo"_s);
    m_grid.setCurrentCell(1, 2);
    m_dialogs.answerSave({Outcome::Chosen, path("b.kms")});
    m_area.cmdSave->click();
    EXPECT_EQ(contents(path("b.kms")), "\\\\\xa0one\r\n\\\\two\r\n= SP 50\r\n");
    EXPECT_EQ(m_area.lblFileName->text(), u"b.kms");
    EXPECT_EQ(m_host.caption, u"Corvane - a.kms");
    EXPECT_EQ(m_grid.currentRow(), 0);

    m_grid.setText(1, 2, u"\u20ac"_s);
    for (const Outcome outcome : {Outcome::Chosen, Outcome::InvalidName}) {
        m_dialogs.answerSave({outcome, path("b.kms")});
        m_dialogs.expectMessage(u"Error occurred while trying to save file."_s);
        m_area.cmdSave->click();
        EXPECT_TRUE(contents(path("b.kms")).endsWith("= SP 50\r\n"));
    }
    load("t.tst", "= SP 1\n");
    m_area.cmdSave_Click(); // asks nothing: only settings are saved this way
}

TEST_F(Area, RowsAreAddedUpToAHundredAndDeletedWithTheirNumbers)
{
    load("a.kms", QByteArray("SP\n").repeated(98));
    m_area.cmdAddRow->click();
    EXPECT_EQ(m_grid.rowCount(), 100);
    EXPECT_EQ(m_grid.currentRow(), 99);
    EXPECT_EQ(m_grid.text(99, 0), u"99");
    m_area.cmdAddRow->click();
    EXPECT_EQ(m_grid.rowCount(), 100);

    load("a.kms", "A\nB\nC\n");
    m_area.cmdDeleteRow->click(); // no row is selected
    m_grid.setCurrentCell(1, 1);
    m_module.SendMode = true;
    m_area.cmdDeleteRow_Click();
    EXPECT_EQ(m_grid.rowCount(), 4);
    m_module.SendMode = false;
    m_area.cmdDeleteRow->click();
    EXPECT_EQ(m_grid.text(1, 0) + m_grid.text(1, 1) + m_grid.text(2, 0) + m_grid.text(2, 1),
              u"1B2C");
    EXPECT_EQ(m_grid.currentRow(), 1);
    for (int row = 0; row < 3; ++row)
        m_area.cmdDeleteRow->click();
    EXPECT_EQ(m_grid.rowCount(), 1);
}

TEST_F(Area, AColumnIsClearedUnlessGetListRuns)
{
    load("a.kms", "= SP 50\n= T 5\n");
    m_grid.setCurrentCell(2, 2);
    m_module.GetMode = true;
    m_area.cmdClearCol->click();
    EXPECT_EQ(m_grid.text(1, 2), u"50");
    m_module = {.SendMode = true};
    m_area.cmdClearCol->click();
    EXPECT_EQ(m_grid.text(1, 2) + m_grid.text(2, 2), QString());
    EXPECT_EQ(m_grid.currentRow() + m_grid.currentCol(), 0);
    m_area.cmdClearCol->click(); // the numbers stay
    EXPECT_EQ(m_grid.text(1, 0) + m_grid.text(0, 2), u"1Value");
}

TEST_F(Area, AClearedListIsTheEmptySettingsListOfTheStart)
{
    for (const bool cleared : {false, true}) {
        EXPECT_EQ(m_grid.colCount(), 5) << cleared;
        EXPECT_EQ(m_grid.rowCount(), 2) << cleared;
        EXPECT_EQ(m_grid.text(1, 0), QString()) << cleared;
        EXPECT_EQ(m_grid.currentRow(), 1) << cleared;
        EXPECT_EQ(m_grid.currentCol(), 0) << cleared;
        EXPECT_EQ(m_module.ListKind, 0) << cleared;
        load("a.tst", "= SP 50\n");
        m_area.cmdClear->click();
    }
    EXPECT_EQ(m_area.lblFileName->text() + m_area.ListFileName, QString());
    EXPECT_EQ(m_host.caption, u"Corvane");
}

TEST_F(Area, ACellIsEditedInPlaceWithTheKeyboardAlone)
{
    load("a.kms", "= SP 50\n= T 5\n");
    showWithFocus();
    key(Qt::Key_Right);
    key(Qt::Key_7);
    EXPECT_TRUE(editing());
    EXPECT_EQ(QApplication::focusWidget(), m_area.txtFlexText);
    EXPECT_TRUE(m_area.txtFlexText->geometry().contains(m_grid.cellRect(1, 2).center()));
    key(Qt::Key_5);
    key(Qt::Key_Return);
    EXPECT_EQ(m_grid.text(1, 2), u"75");
    EXPECT_FALSE(editing());
    EXPECT_EQ(m_grid.currentRow(), 2);
    key(Qt::Key_F2);
    EXPECT_EQ(m_area.txtFlexText->text(), u"5");
    key(Qt::Key_9);
    key(Qt::Key_Escape);
    EXPECT_EQ(m_grid.text(2, 2), u"5");
    EXPECT_EQ(QApplication::focusWidget(), &m_grid);
    key(Qt::Key_Enter);
    key(Qt::Key_8);
    key(Qt::Key_Enter);
    EXPECT_EQ(m_grid.text(2, 2), u"8");
    EXPECT_EQ(m_grid.currentRow(), 2); // the last row
}

TEST_F(Area, TextLeftInTheCellBoxIsLost)
{
    load("a.kms", "= SP 50\n= T 5\n");
    showWithFocus();
    const std::function<void()> leavings[] = {
        [this] { m_area.cmdLoad->setFocus(); },
        [this] {
            QTest::mouseClick(m_grid.viewport(), Qt::LeftButton, {},
                              m_grid.cellRect(2, 1).center());
        },
        [this] { m_grid.setCurrentCell(2, 1); },
        [this] { m_grid.setColumnWidth(1, 50); },
    };
    for (const auto &leave : leavings) {
        m_grid.setFocus();
        m_grid.setCurrentCell(1, 1);
        key(Qt::Key_X);
        ASSERT_TRUE(editing());
        leave();
        EXPECT_FALSE(editing());
        EXPECT_EQ(m_grid.text(1, 1) + m_grid.text(2, 1), u"= SP= T");
    }
    m_grid.setFocus();
    m_grid.setCurrentCell(1, 0);
    key(Qt::Key_X); // a row's number is not edited
    m_grid.setCurrentCell(1, 1);
    m_module.SendMode = true;
    key(Qt::Key_X); // nor is a list that runs
    EXPECT_FALSE(editing());
}

TEST_F(Area, TheGridWidensOverTheCommentsAndBack)
{
    m_area.show();
    const int narrow = m_grid.width();
    QTest::mouseClick(m_area.cmdMaxGrid, Qt::LeftButton);
    QApplication::processEvents();
    EXPECT_GT(m_grid.width(), narrow + 50);
    EXPECT_TRUE(m_area.cmdStopSend->isVisible() && !m_area.txtVDL->isVisible());
    EXPECT_TRUE(m_area.cmdMinGrid->isVisible() && !m_area.cmdMaxGrid->isVisible());
    QTest::mouseClick(m_area.cmdMinGrid, Qt::LeftButton);
    QApplication::processEvents();
    EXPECT_EQ(m_grid.width(), narrow);
    EXPECT_TRUE(m_area.cmdMaxGrid->isVisible() && !m_area.cmdMinGrid->isVisible());
}

TEST_F(Area, TheEditorSavesTheTextAsItStandsAndTheListIsReadBackFromTheFile)
{
    load("a.tst", "// c\n? SP x\n! SP 25 0.5\n");
    m_area.cmdEditList->click();
    EXPECT_TRUE(m_editor.isVisible() && m_editor.isModal());
    EXPECT_EQ(m_editor.windowTitle(), u"Edit List");
    EXPECT_EQ(m_editor.text(), u"\\\\ c\r\n? SP x\r\n! SP 25 0.5\r\n");
    m_dialogs.answerSave({Outcome::Cancelled, {}});
    m_editor.cmdSave->click();
    EXPECT_TRUE(m_editor.isVisible());
    EXPECT_EQ(m_dialogs.questions.back().filter, u"Test List (*.tst)|*.tst");
    EXPECT_EQ(m_dialogs.questions.back().name, QString());

    m_editor.txtList->setPlainText(u"= SP \u20ac"_s);
    m_dialogs.answerSave({Outcome::Chosen, path("b.kms")});
    m_dialogs.expectMessage(u"Error occurred while trying to save file."_s);
    m_editor.cmdSave->click();
    EXPECT_TRUE(m_editor.isVisible());
    EXPECT_EQ(m_area.ListFileName, u"a.tst");

    m_editor.txtList->setPlainText(u"= SP\u00a0 50\nT"_s);
    m_dialogs.answerSave({Outcome::Chosen, path("b.kms")});
    m_editor.cmdSave->click();
    EXPECT_FALSE(m_editor.isVisible());
    EXPECT_EQ(contents(path("b.kms")), "= SP\xa0 50\r\nT");
    EXPECT_EQ(m_area.ListFilePath, path("b.kms"));
    EXPECT_EQ(m_module.ListKind, 0); // by the file's extension, whatever was edited
    EXPECT_EQ(m_grid.text(2, 1), u"T");

    m_area.cmdSaveList->click(); // shows the text and only saves it
    EXPECT_TRUE(m_editor.isVisible() && m_editor.txtList->isReadOnly());
    m_editor.cmdCAncel->click();
    EXPECT_FALSE(m_editor.isVisible());
}
