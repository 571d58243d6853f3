// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/widgets/QtDialogs.h"

#include "devices/FileQuestions.h"
#include "tests/support/Testing.h"

using namespace corvane;
using Outcome = Dialogs::FileChoice::Outcome;

class QtDialogsTest : public testing::Test
{
protected:
    QtDialogsTest()
    {
        question.filter = u"Lists(*.kms)|*.kms|Any (*.*)|*.*"_s;
        question.folder = folder.path();
        EXPECT_TRUE(QFile(old).open(QIODevice::WriteOnly));
        QObject::connect(&watchdog, &QTimer::timeout, &watchdog, [this] {
            ADD_FAILURE() << "a dialog stayed open";
            dialogs.dismissAll();
        });
        watchdog.start(30000);
    }

    /// Runs the action when the next modal window of the type has opened.
    template <typename Window, typename Action>
    void whenOpen(Action action)
    {
        auto *poll = new QTimer(&watchdog);
        QObject::connect(poll, &QTimer::timeout, poll, [poll, action] {
            auto *window = qobject_cast<Window *>(QApplication::activeModalWidget());
            if (!window || !window->isVisible())
                return;
            poll->stop();
            action(*window);
        });
        poll->start(10);
    }

    /// Types the name into the next file dialog and presses Enter.
    void answerFile(const QString &name)
    {
        whenOpen<QFileDialog>([name](QFileDialog &dialog) {
            auto *edit = dialog.findChild<QLineEdit *>(u"fileNameEdit"_s);
            edit->setText(name);
            QTest::keyClick(edit, Qt::Key_Return);
        });
    }

    void answerBox(QMessageBox::StandardButton button)
    {
        whenOpen<QMessageBox>([button](QMessageBox &box) {
            ASSERT_TRUE(box.button(button)) << box.text().toStdString();
            QTest::mouseClick(box.button(button), Qt::LeftButton);
        });
    }

    QTemporaryDir folder;
    const QString old = folder.filePath(u"old.kms"_s);
    QtDialogs dialogs;
    Dialogs::FileQuestion question;
    QTimer watchdog;
};

TEST_F(QtDialogsTest, AMessageBoxShowsItsTextsAndGivesTheAnswer)
{
    QWidget window;
    window.setGeometry(100, 100, 500, 400);
    window.show();
    whenOpen<QMessageBox>([&](QMessageBox &box) {
        EXPECT_EQ(box.text(), u"<b>Delete?");
        EXPECT_EQ(box.textFormat(), Qt::PlainText);
        EXPECT_EQ(box.windowTitle(), u"Title");
        EXPECT_EQ(box.icon(), QMessageBox::Warning);
        EXPECT_EQ(box.windowModality(), Qt::ApplicationModal);
        EXPECT_LT((box.geometry().center() - window.geometry().center()).manhattanLength(), 60);
        EXPECT_EQ(dialogs.openCount(), 1);
        EXPECT_EQ(box.defaultButton(), box.button(QMessageBox::No));
        box.button(QMessageBox::Yes)->click();
    });
    const Dialogs::MessageBox box{.text = u"<b>Delete?"_s,
                                  .title = u"Title"_s,
                                  .icon = Dialogs::Icon::Exclamation,
                                  .buttons = Dialogs::Buttons::YesNo};
    EXPECT_EQ(dialogs.showMessage(&window, box), Dialogs::Answer::Yes);
    EXPECT_EQ(dialogs.openCount(), 0);
    answerBox(QMessageBox::No);
    EXPECT_EQ(dialogs.showMessage(nullptr, box), Dialogs::Answer::No);
    window.move(450, -350);
    whenOpen<QMessageBox>([](QMessageBox &shown) {
        EXPECT_TRUE(shown.screen()->availableGeometry().contains(shown.frameGeometry()));
        shown.accept();
    });
    dialogs.showMessage(&window, QString(100, u'x') + u" long"_s.repeated(20000));
}

TEST_F(QtDialogsTest, DismissAllClosesNestedBoxesAndABoxOutlivesItsWindow)
{
    auto window = std::make_unique<QWidget>();
    window->show();
    Dialogs::Answer inner = Dialogs::Answer::Ok;
    Dialogs::FileChoice file{Outcome::Chosen, {}};
    whenOpen<QMessageBox>([&](QMessageBox &) {
        QTimer::singleShot(20, &watchdog, [&] {
            window.reset();
            EXPECT_EQ(dialogs.openCount(), 3);
            dialogs.dismissAll();
        });
        whenOpen<QFileDialog>([&](QFileDialog &) {
            inner = dialogs.showMessage(window.get(), Dialogs::MessageBox{});
            EXPECT_EQ(dialogs.openCount(), 2);
        });
        file = dialogs.saveFile(window.get(), question);
    });
    EXPECT_EQ(dialogs.showMessage(window.get(), Dialogs::MessageBox{}), Dialogs::Answer::Dismissed);
    EXPECT_EQ(inner, Dialogs::Answer::Dismissed);
    EXPECT_EQ(file.outcome, Outcome::Cancelled);
    EXPECT_EQ(dialogs.openCount(), 0);
    answerBox(QMessageBox::Ok);
    EXPECT_EQ(dialogs.showMessage(nullptr, Dialogs::MessageBox{}), Dialogs::Answer::Ok);
}

TEST_F(QtDialogsTest, OpeningGivesAnExistingFileOnly)
{
    EXPECT_EQ(fileQuestions::nameFilters(question.filter),
              (QStringList{u"Lists(*.kms)"_s, u"Any (*.*)"_s}));
    EXPECT_EQ(fileQuestions::nameFilters(u"Any|*.a;*.b"_s), QStringList(u"Any (*.a *.b)"_s));
    answerFile(u"missing.kms"_s);
    whenOpen<QMessageBox>([&](QMessageBox &box) {
        EXPECT_TRUE(box.text().contains(u"missing.kms"_s));
        answerFile(old);
        box.button(QMessageBox::Ok)->click();
    });
    EXPECT_EQ(dialogs.openFile(nullptr, question), (Dialogs::FileChoice{Outcome::Chosen, old}));

    const QString first = QFileInfo(old).path();
    dialogs.setFirstFolder(first);
    whenOpen<QFileDialog>([&](QFileDialog &dialog) {
        EXPECT_EQ(dialog.directory().path(), first);
        dialog.reject();
    });
    EXPECT_EQ(dialogs.openFile(nullptr, {}).outcome, Outcome::Cancelled);
}

TEST_F(QtDialogsTest, AFileDialogStartsWhereTheLastFileOfItsWindowCameFromAlsoNextTime)
{
    QSettings settings(folder.filePath(u"remembered.ini"_s), QSettings::IniFormat);
    QWidget asker;
    asker.setObjectName(u"asker"_s);
    const auto startsIn = [&](QtDialogs &asked) {
        QString start;
        whenOpen<QFileDialog>([&start](QFileDialog &dialog) {
            start = dialog.directory().path();
            dialog.reject();
        });
        asked.openFile(&asker, {});
        return start;
    };
    dialogs.noteFolder(&asker, old); // without settings for this session
    EXPECT_EQ(startsIn(dialogs), folder.path());
    dialogs.rememberFoldersIn(settings);
    dialogs.noteFolder(&asker, old);
    QtDialogs next;
    EXPECT_NE(startsIn(next), folder.path());
    next.rememberFoldersIn(settings);
    EXPECT_EQ(startsIn(next), folder.path());
}

TEST_F(QtDialogsTest, SavingAppendsTheExtensionAndAsksBeforeReplacing)
{
    answerFile(u"new"_s);
    EXPECT_EQ(dialogs.saveFile(nullptr, question),
              (Dialogs::FileChoice{Outcome::Chosen, folder.filePath(u"new.kms"_s)}));
    for (const auto &[typed, whole] :
         {std::pair("1234.5_0123-07", "1234.5_0123-07.kms"), std::pair("a.2", "a.2.kms"),
          std::pair("a.", "a.kms"), std::pair("A.KMS", "A.KMS"), std::pair("a.kmp", "a.kmp")})
        EXPECT_EQ(fileQuestions::withExtension(QString::fromLatin1(typed), u"kms"_s),
                  QString::fromLatin1(whole));
    for (const auto &[typed, whole] :
         {std::pair("a.pcapng", "a.pcapng"), std::pair("a.b", "a.b.txt")}) {
        answerFile(QString::fromLatin1(typed)); // while the first type is chosen
        EXPECT_EQ(
            dialogs.saveFile(nullptr, {u"Text|*.txt|Packets|*.pcapng"_s, folder.path(), {}}),
            (Dialogs::FileChoice{Outcome::Chosen, folder.filePath(QString::fromLatin1(whole))}));
    }
    answerFile(u"old"_s);
    whenOpen<QMessageBox>([&](QMessageBox &box) {
        answerFile(u"x.txt"_s);
        box.button(QMessageBox::No)->click();
    });
    EXPECT_EQ(dialogs.saveFile(nullptr, question),
              (Dialogs::FileChoice{Outcome::Chosen, folder.filePath(u"x.txt"_s)}));
    question.name = u"/old.kms"_s; // proposed in the folder all the same
    whenOpen<QFileDialog>([](QDialog &dialog) { dialog.accept(); });
    whenOpen<QMessageBox>([](QMessageBox &box) { box.button(QMessageBox::Yes)->click(); });
    EXPECT_EQ(dialogs.saveFile(nullptr, question), (Dialogs::FileChoice{Outcome::Chosen, old}));
}

TEST_F(QtDialogsTest, ANameThatTheFileSystemRefusesIsInvalid)
{
    answerFile(QString(300, u'x'));
    EXPECT_EQ(dialogs.saveFile(nullptr, question).outcome, Outcome::InvalidName);
    answerFile(folder.filePath(u"missing/x.kms"_s));
    EXPECT_EQ(dialogs.saveFile(nullptr, question).outcome, Outcome::InvalidName);

    for (const QString &bad :
         {QString(), u"/"_s, folder.path(), u".."_s, u"/dev/full"_s, folder.filePath(u"a\0b"_s),
          folder.filePath(QString(128, QChar(0xe9))), // 256 bytes
          folder.filePath(u"no/x"_s)})
        EXPECT_TRUE(fileQuestions::isRefusedName(bad)) << bad.toStdString();
    EXPECT_FALSE(fileQuestions::isRefusedName(folder.filePath(QString(255, u'x'))));
    EXPECT_EQ(fileQuestions::refusalOf(folder.filePath(u"no/x"_s)),
              u"there is no folder "_s + folder.filePath(u"no"_s));
    EXPECT_EQ(fileQuestions::refusalOf(folder.path()), u"no file can have this name");
}

TEST(FileQuestions, KnowsTheNamesThatMeanADeviceOnWindows)
{
    for (const char *name :
         {"CON", "nul", "Com1.txt", "LPT9.tar.gz", "aux .kms", "COM\xb2", "conin$"})
        EXPECT_TRUE(fileQuestions::isReservedOnWindows(QString::fromLatin1(name))) << name;
    for (const char *name :
         {"", "console.txt", "COM", "COM0", "com10.txt", "a.con", "nul_", "x nul"})
        EXPECT_FALSE(fileQuestions::isReservedOnWindows(QString::fromLatin1(name))) << name;
}
