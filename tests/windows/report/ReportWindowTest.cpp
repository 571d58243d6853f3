// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/report/ReportTexts.h"
#include "tests/core/board/BoardFixture.h"
#include "tests/support/Soon.h"
#include "windows/board/CalibrationPanel.h"
#include "windows/report/frmSBCPrint.h"

using namespace corvane;

namespace {

using Outcome = Dialogs::FileChoice::Outcome;

class ReportWindowTest : public BoardTest
{
protected:
    ReportWindowTest()
    {
        answerQueriesWith("ACME,P/N_1234-5,R2.1,P3.0,07/0123\r\n");
        open();
    }

    void make()
    {
        window = std::make_unique<frmSBCPrint>(
            ReportedBoard{board.session(), board.link(), board.calibration->table()}, remembered,
            dialogs, u"1.2.3"_s);
        QObject::connect(&board, &frmSBC::closing, window.get(), &QWidget::close);
    }
    void open()
    {
        make();
        window->show();
        window->Form_Load();
    }
    void accept(const Dialogs::FileChoice &choice, const QString &message)
    {
        if (!window->isVisible())
            open();
        dialogs.answerSave(choice);
        if (!message.isEmpty())
            dialogs.expectMessage(message);
        window->cmdAccept_Click();
        EXPECT_FALSE(window->isVisible()); // whatever the outcome
    }
    [[nodiscard]] QString status() const { return window->statusPanel->text(); }
    [[nodiscard]] QString path(const QString &name) const { return folder.filePath(name); }
    static QByteArray contents(const QString &file)
    {
        QFile f(file);
        return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
    }

    QTemporaryDir folder;
    modSBC remembered;
    std::unique_ptr<frmSBCPrint> window;
};

const QString syntaxError = u"SYNTAX ERROR: "_s;

} // namespace

TEST_F(ReportWindowTest, OpeningFillsTheFieldsFromTheBoardAndOnlyCancelWorksMeanwhile)
{
    clock.after(50, [this] {
        EXPECT_FALSE(window->cmdAccept->isEnabled());
        EXPECT_TRUE(window->cmdCAncel->isEnabled());
        window->cmdAccept_Click();
        window->cmdAutoFill_Click();
        act(*window, "txtYourName=Ada"); // typed meanwhile: stays
    });
    channels.forget();
    clock.waits.clear();
    open();
    EXPECT_EQ(window->windowTitle(), u"VXM250 Calibration File Info"_s);
    for (const auto &[box, text] :
         {std::pair("txtPartNum", "1234-5"), std::pair("txtSerialNum", "07/0123"),
          std::pair("txtPicFirmWare", "P3.0"), std::pair("txtRabbitVersion", "R2.1"),
          std::pair("txtFileName", "1234-5_0123-07"), std::pair("txtAppVer", "1.2.3"),
          std::pair("txtYourName", "Ada"),
          std::pair("StatusBar1_1", "ACME,P/N_1234-5,R2.1,P3.0,07/0123")})
        EXPECT_EQ(shown(*window, box), QString::fromLatin1(text));
    EXPECT_FALSE(window->txtDate->text().isEmpty());
    EXPECT_EQ(channels.commands(), latin({"*IDN?\r"}));
    EXPECT_EQ(clock.waits, (std::vector<int>{25, 100, 25}));
}

TEST_F(ReportWindowTest, AReplyOfFewerFieldsChangesNoBoxAndShowsTheSyntaxError)
{
    for (const char *reply : {"a,b,c,d", "nonsense", ""}) {
        answerQueriesWith(reply);
        window->cmdAutoFill_Click();
        EXPECT_EQ(status(), syntaxError + QString::fromLatin1(reply));
        EXPECT_EQ(window->txtPartNum->text(), u"1234-5"_s);
    }
}

TEST_F(ReportWindowTest, AReplyWithoutEndIsShownByItsStartAndIsNoIdentity)
{
    for (const char *piece : {"x", ",", "a,b,"}) {
        answerQueriesWith(QByteArray(piece).repeated(1'000'000) + ",b,c,d,e");
        window->txtSerialNum->setText(u"kept"_s);
        window->cmdAutoFill_Click();
        EXPECT_LE(status().size(), 1100);
        EXPECT_LE(window->txtSerialNum->text().size(), 4) << piece;
    }
    answerQueriesWith("ACME,P/N_7," + QByteArray(300, 'r') + ",P3.0,07/0124\r\n");
    window->cmdAutoFill_Click(); // long, and whole
    EXPECT_EQ(window->txtSerialNum->text(), u"07/0124"_s);
}

TEST_F(ReportWindowTest, FieldsReappearAndDateAndVersionAreRefreshed)
{
    act(*window, "txtYourName=Ada;txtMeterADINum=77;txtPartNum=typed;txtDate=old;txtAppVer=0.0.1");
    accept({Outcome::Cancelled, {}}, QString());
    answerQueriesWith(""); // the board is gone: what is remembered stays
    open();
    for (const auto &[box, text] :
         {std::pair("txtYourName", "Ada"), std::pair("txtMeterADINum", "77"),
          std::pair("txtPartNum", "typed"), std::pair("txtFileName", "typed_0123-07"),
          std::pair("txtAppVer", "1.2.3")})
        EXPECT_EQ(shown(*window, box), QString::fromLatin1(text));
    EXPECT_NE(shown(*window, "txtDate"), u"old"_s);
    act(*window, "txtYourName=Eve;cmdCAncel");
    open();
    EXPECT_EQ(shown(*window, "txtYourName"), u"Ada"_s);
}

TEST_F(ReportWindowTest, AcceptWritesTheGridAndRemembersTheFolder)
{
    answerQueriesWith("1.5,1,-0.25");
    board.calibration->cmdScanCals_Click();
    const QString file = path(u"report.txt"_s);
    accept({Outcome::Chosen, file}, u"Print Successful"_s);
    const QByteArray report = contents(file);
    EXPECT_TRUE(report.contains("  Technician:  \r\nTEST METER\r\n"));
    EXPECT_TRUE(report.endsWith("ADC Offset\t-0.25000 -0.25000 -0.25000 -0.25000 -0.25000 -0.25000 "
                                "-0.25000 -0.25000 \r\nKeithley   \t                \r\n"));
    open();
    act(*window, "txtSerialNum=070123;cmdGenFilename"); // without a "/": only the folder
    accept({Outcome::Cancelled, {}}, QString());
    EXPECT_EQ(dialogs.questions.back().name, QString());
    const auto &question = dialogs.questions.back();
    EXPECT_EQ(question.filter, u"Text(*.txt)|*.txt"_s);
    EXPECT_EQ(question.folder, folder.path() + u'/');
    EXPECT_EQ(dialogs.questions.front().folder, QString());
    EXPECT_EQ(dialogs.questions.front().name, u"1234-5_0123-07"_s);
}

TEST_F(ReportWindowTest, AnInvalidNameAndAFileThatCannotBeWrittenAreTold)
{
    accept({Outcome::InvalidName, {}},
           reportTexts::printErrorText(reportTexts::PrintError::InvalidName, {}, {}));
    const QString missing = path(u"none/report.txt"_s);
    const QString tooLong = path(QString(300, u'x'));
    open();
    accept({Outcome::Chosen, missing}, missing + u": No such file or directory"_s);
    open();
    accept({Outcome::Chosen, tooLong}, tooLong + u": File name too long"_s);
    EXPECT_TRUE(QDir(folder.path()).isEmpty());
}

TEST_F(ReportWindowTest, ATextThatDoesNotFitTheFileIsRefusedAndTheOldFileStays)
{
    const QString file = path(u"report.txt"_s);
    accept({Outcome::Chosen, file}, u"Print Successful"_s);
    const QByteArray old = contents(file);
    open();
    struct Row
    {
        QLineEdit *box;
        const char16_t *text;
        const char16_t *said;
    };
    for (const Row &row : {Row{window->txtYourName, u"R. \u03A9mega",
                               u"\"Technician\" holds a character that cannot "
                               u"be written to the report: \"\u03A9\" (U+03A9)."},
                           Row{window->txtMeterADINum, u"7\U0001F600",
                               u"\"ADI Number\" holds a character that cannot "
                               u"be written to the report: \"\U0001F600\" "
                               u"(U+1F600)."}}) {
        row.box->setText(QString::fromUtf16(row.text));
        dialogs.expectMessage(
            u"The field %1  Nothing was written."_s.arg(QString::fromUtf16(row.said)));
        window->cmdAccept_Click();
        EXPECT_TRUE(window->isVisible());
        EXPECT_EQ(window->focusWidget(), row.box);
        EXPECT_TRUE(QString::fromUtf16(row.said).contains(row.box->selectedText()));
        EXPECT_FALSE(row.box->selectedText().isEmpty());
        row.box->clear();
    }
    EXPECT_EQ(contents(file), old);
    EXPECT_FALSE(old.isEmpty());
}

TEST_F(ReportWindowTest, AutoFillDuringACalibrationIsRefusedAndLeavesItAlone)
{
    channels.meter.assign(3, "0.5");
    window->txtPartNum->setText(u"typed"_s);
    QStringList before;
    clock.after(1000, [&] {
        before = channels.commands();
        window->cmdAutoFill_Click();
        EXPECT_EQ(status(), u"BUSY: the board window is at work"_s);
        EXPECT_EQ(channels.commands(), before);
        window->cmdAccept_Click(); // the grid is half filled
        EXPECT_EQ(status(), reportTexts::notSaved);
        EXPECT_TRUE(window->isVisible());
        board.calibration->cmdCancelCal_Click();
    });
    board.calibration->cmdCal_Click();
    EXPECT_EQ(window->txtPartNum->text(), u"typed"_s);
    dialogs.answerSave({});
    window->cmdAccept_Click();
    EXPECT_EQ(status(), QString()) << "nothing is at work any more";
}

TEST_F(ReportWindowTest, ClosedAtAnyMomentOfAutoFillItEndsAtOnceAndTheBoardWindowGoesOn)
{
    answerQueriesWith("");
    for (int at = 5; at < 1900; at += 97) {
        make();
        QSignalSpy closed(window.get(), &frmSBCPrint::closed);
        window->show();
        const quint32 start = clock.MS_TIMER();
        clock.after(at, [this] { act(*window, "cmdCAncel"); });
        window->Form_Load();
        EXPECT_EQ(clock.MS_TIMER() - start, static_cast<quint32>(at));
        EXPECT_TRUE(soon([&closed] { return closed.count() == 1; })) << at;
        channels.forget();
        act(board, "cmdWriteCal");
        EXPECT_EQ(channels.commands(), latin({"CAL:PIC\r"})) << at;
    }
}

TEST_F(ReportWindowTest, ClosesWithTheBoardWindowUnderItsMessageBox)
{
    QSignalSpy boardClosed(&board, &frmSBC::closed);
    QSignalSpy closed(window.get(), &frmSBCPrint::closed);
    dialogs.answerSave({Outcome::Chosen, path(u"a.txt"_s)});
    dialogs.expectMessage(u"Print Successful"_s, Dialogs::Answer::Ok, [this] { board.close(); });
    window->cmdAccept_Click();
    EXPECT_TRUE(soon([&] { return closed.count() == 1 && boardClosed.count() == 1; }));
    window->cmdAccept_Click();
    EXPECT_EQ(dialogs.questions.size(), 1U);
}
