#include "windows/lists/TransferEngine.h"

#include "ListFixture.h"
#include "core/lists/ListTexts.h"

using namespace corvane;
using namespace Qt::StringLiterals;

namespace {

using Outcome = TransferEngine::Outcome;
using RowVerdict = TransferEngine::RowVerdict;

/// An engine over a real list area and a fake main window; the ticks come by hand.
class Transfer : public ListFixture
{
protected:
    Transfer()
    {
        m_host.onStop = [this](int index) { m_engine.ResetTransferData(index); };
        using Engine = TransferEngine;
        QObject::connect(&m_engine, &Engine::runEnded, &m_area,
                         [this](Outcome outcome) { m_outcomes.push_back(outcome); });
        QObject::connect(&m_engine, &Engine::rowStarted, &m_area, [this](int row, QString command) {
            m_rows += u"%1 > %2"_s.arg(row).arg(command);
        });
        QObject::connect(&m_engine, &Engine::rowFinished, &m_area,
                         [this](int row, QString reply, RowVerdict verdict) {
                             m_rows += u"%1 < %2 %3"_s.arg(row).arg(reply).arg(int(verdict));
                         });
    }

    void load(const char *name, const QByteArray &text)
    {
        m_area.ListFilePath = file(name, text);
        ASSERT_EQ(m_area.OpenFile(), ListContents::End::Complete);
    }

    /// Loads the list and starts to send it on the Channel.
    void send(const char *name, const QByteArray &text, int index = 0)
    {
        load(name, text);
        m_engine.cmdLoadToChmber_Click(index);
    }

    /// One Channel is closed from now on, or none.
    void setClosed(int index, int open = -1)
    {
        m_host.closed = index;
        m_engine.channelOpenChanged(index < 0 ? open : index);
    }

    void tick(int index = 0) { m_engine.TimerTransfer_Timer(index); }

    /// A piece of a reply, as a serial Channel appends it to its box.
    void piece(const QByteArray &bytes, int index = 0)
    {
        QByteArray &box = m_host.responses[index];
        const qsizetype keep = box.size();
        box += bytes;
        m_engine.replyArrived(index, keep, bytes);
    }

    void expectIdle()
    {
        EXPECT_FALSE(m_module.transferRunning() || m_module.GpibTransfer || m_module.ResponseReady);
        EXPECT_EQ(m_host.timers, QList<bool>(5));
        EXPECT_EQ(m_host.used, QList<bool>(5));
        EXPECT_EQ(m_module.CurrentListRow + m_grid.currentRow() + m_grid.markedRow(), 0);
        EXPECT_EQ(m_area.lblProgress->text(), QString());
    }

    void expectEnd(Outcome outcome)
    {
        expectIdle();
        EXPECT_EQ(m_outcomes, std::vector<Outcome>{outcome});
        m_outcomes.clear();
    }

    TransferEngine m_engine{m_module, m_area, m_host, m_dialogs};
    std::vector<Outcome> m_outcomes;
    QStringList m_rows;
};

} // namespace

TEST_F(Transfer, GetListFillsTheValueColumnWithTheRepliesOfItsQueries)
{
    load("a.kms", "SP\n= T 5\n");
    m_host.showing = 3;
    m_area.cmdGetList->click();
    EXPECT_TRUE(m_module.GetMode && m_module.ResponseReady && m_host.timers[3]);
    EXPECT_EQ(m_grid.currentRow(), 1);
    tick(3);
    EXPECT_FALSE(m_module.ResponseReady || m_host.timers[3]);
    EXPECT_EQ(m_area.lblProgress->text(), u"Row 1 of 2");
    piece("50\r\n", 3);
    EXPECT_TRUE(m_module.ResponseReady && m_host.timers[3] && m_grid.markedRow() == 1);
    tick(3);
    piece("5", 3);
    tick(3);
    EXPECT_EQ(m_grid.text(1, 2) + m_grid.text(2, 2), u"505");
    EXPECT_EQ(m_host.responses[3], "Transfer complete.");
    EXPECT_EQ(m_host.cleared, (QStringList{u"loop 3"_s, u"log 3"_s}));
    EXPECT_EQ(m_rows, (QStringList{u"1 > ? SP"_s, u"1 < 50 0"_s, u"2 > ? = T"_s, u"2 < 5 0"_s}));
    expectEnd(Outcome::Complete);
}

TEST_F(Transfer, ATestJudgesTheReplyOfTheRowAboveAndPausesForOneTick)
{
    m_area.chkStripOpr->setChecked(true);
    send("a.tst", "? SP x\n! SP 25 0.5\n# PAUSE\n= SP 1\n! OK \"OK\"\n! X \"PASSED\"\n");
    tick();
    piece("25.5");
    tick();
    EXPECT_EQ(m_grid.verdict(2, 5), TextGrid::Verdict::Passed);
    EXPECT_TRUE(m_module.ResponseReady);
    EXPECT_EQ(m_host.commands[0], QString());
    tick();
    tick();
    piece("OK");
    tick();
    tick();
    m_dialogs.expectMessage(u"Test Passed."_s, Dialogs::Answer::Ok, [this] { expectIdle(); });
    tick();
    EXPECT_EQ(m_host.sent, (QStringList{u"SP x"_s, u"SP 1"_s}));
    EXPECT_EQ(m_rows.join(u'\n'), u"1 > SP x\n1 < 25.5 0\n2 > \n2 < PASSED 1\n3 > \n3 <  0\n"
                                  "4 > SP 1\n4 < OK 0\n5 > \n5 < PASSED 1\n6 > \n6 < PASSED 1");
    expectEnd(Outcome::Passed);
    m_grid.setText(3, 5, u"of hand"_s);
    m_engine.cmdLoadToChmber_Click(0);
    for (int row = 1; row <= 6; ++row) // no reply and no verdict of the run before
        EXPECT_EQ(m_grid.text(row, 5), row == 3 ? u"of hand" : u"");
    EXPECT_EQ(m_grid.verdict(2, 5), TextGrid::Verdict::None);
}

TEST_F(Transfer, AListOfPausesPassesAfterATickARowHoweverLongItIs)
{
    send("a.tst", QByteArray("# PAUSE\n").repeated(33000));
    for (int row = 0; row < 33000; ++row)
        tick();
    EXPECT_EQ(m_module.CurrentListRow, 33000);
    m_dialogs.expectMessage(u"Test Passed."_s);
    tick();
    expectEnd(Outcome::Passed);
}

TEST_F(Transfer, AFailedCheckIsShownBeforeTheRunStopsAndNothingMovesBehindTheBox)
{
    send("a.tst", "? SP x\n! ID \"READY\"\n", 4);
    tick(4);
    piece("READY NOW", 4);
    m_dialogs.expectMessage(u"Test Failed."_s, Dialogs::Answer::Ok, [this] {
        EXPECT_TRUE(m_module.SendMode && m_host.stopped.isEmpty() && m_engine.isBusy());
        EXPECT_FALSE(m_host.timers[4]);
        piece("late", 4);
        m_module.ResponseReady = true;
        tick(4);
        m_engine.cmdLoadToChmber_Click(4);
        EXPECT_EQ(m_module.CurrentListRow, 2);
    });
    m_host.showing = 1; // the stop button is that of the showing tab
    tick(4);
    EXPECT_EQ(m_host.stopped, QList<int>{1});
    EXPECT_EQ(m_rows.last(), u"2 < PASSED 2"); // the reply only continues
    EXPECT_EQ(m_grid.verdict(2, 5), TextGrid::Verdict::Failed);
    expectEnd(Outcome::Failed);
}

TEST_F(Transfer, AnEmptyOrIncompleteListIsRefused)
{
    m_dialogs.expectMessage(listTexts::emptyAtGet);
    m_engine.cmdLoadFrmChmber_Click(3);
    expectEnd(Outcome::Empty);
    EXPECT_EQ(m_host.cleared, (QStringList{u"loop 3"_s, u"log 3"_s}));
    m_dialogs.expectMessage(listTexts::emptyAtSend);
    send("a.kms", "");
    expectEnd(Outcome::Empty);
    m_dialogs.expectMessage(listTexts::incompleteAtSend);
    send("a.kms", "SP 50\n= SP 50\n");
    expectEnd(Outcome::Incomplete);
    for (const int index : {-1, 5, 1000})
        m_engine.cmdLoadToChmber_Click(index);
    EXPECT_TRUE(m_outcomes.empty());
}

TEST_F(Transfer, ARowWithoutACellThatItNeedsCancelsTheTransfer)
{
    send("a.kms", "= SP 50\nSP\n");
    tick();
    piece("OK");
    m_dialogs.expectMessage(u"Syntax Error.  Canceling Transfer."_s, Dialogs::Answer::Ok, [this] {
        EXPECT_TRUE(m_module.SendMode && m_host.stopped.isEmpty());
        tick();
    });
    tick();
    EXPECT_EQ(m_host.commands[0], u"Syntax Error");
    EXPECT_EQ(m_host.stopped, QList<int>{0});
    EXPECT_EQ(m_grid.text(1, 3), u"OK");
    expectEnd(Outcome::SyntaxError);
}

TEST_F(Transfer, TheGpibTimeOutEndsTheRunWithoutABox)
{
    m_engine.replyTimedOut(2);
    send("a.kmp", "= SP 50\n= SP 51", 2);
    EXPECT_FALSE(m_module.GpibTransfer);
    tick(2);
    piece("OK", 2);
    EXPECT_EQ(m_grid.text(1, 4), u"OK");
    tick(2);
    m_engine.replyTimedOut(1);
    EXPECT_TRUE(m_module.GpibTransfer && m_module.SendMode);
    m_engine.replyTimedOut(2);
    expectEnd(Outcome::TimedOut);
}

TEST_F(Transfer, ARunIsStoppedByItsButtonByAStartElsewhereAndByAnotherList)
{
    send("a.kms", "= SP 50\n= T 5\n");
    tick();
    piece("OK");
    m_module.TransferWaitCount[1] = 7;
    m_host.showing = 1;
    m_area.cmdStopSend->click(); // whichever tab is showing
    EXPECT_EQ(m_rows.last(), u"1 < OK 0");
    EXPECT_EQ(m_module.TransferWaitCount[1], 0);
    piece("late");
    tick();
    expectEnd(Outcome::Stopped);
    EXPECT_EQ(m_grid.text(1, 3) + m_grid.text(2, 3), u"OK");

    m_engine.cmdLoadToChmber_Click(0);
    tick();
    m_engine.cmdLoadFrmChmber_Click(4);
    piece("for channel 0");
    tick(0);
    EXPECT_EQ(m_host.timers, (QList<bool>{false, false, false, false, true}));
    EXPECT_EQ(m_module.CurrentListRow, 0);
    load("b.kms", "X\n");
    piece("late", 4);
    EXPECT_EQ(m_grid.text(1, 3), QString());
    m_engine.cmdLoadFrmChmber_Click(4);
    m_area.cmdClear_Click();
    EXPECT_EQ(m_outcomes, std::vector<Outcome>(3, Outcome::Stopped));
    EXPECT_FALSE(m_module.transferRunning() || m_host.timers[4]);
}

TEST_F(Transfer, AStopInsideASendOrABoxEndsTheRunForGood)
{
    m_host.onSend = [this](int) { m_engine.ResetTransferData(0); };
    send("a.tst", "= SP 50\n! SP 25\n");
    tick();
    expectEnd(Outcome::Stopped);
    // A new run that starts inside the send of the old one waits for its return.
    m_host.onSend = [this](int) {
        m_host.onSend = {};
        m_engine.cmdLoadFrmChmber_Click(1);
        tick(1);
        EXPECT_EQ(m_module.CurrentListRow, 0);
    };
    m_engine.cmdLoadToChmber_Click(0);
    tick();
    EXPECT_TRUE(m_module.GetMode && m_host.timers[1]);
    m_outcomes.clear();
    // A send that fails and shows a box leaves its run waiting.
    m_host.timerAfterSend = true;
    m_host.onSend = [this](int) { tick(); };
    m_engine.cmdLoadToChmber_Click(0);
    tick();
    EXPECT_TRUE(m_module.SendMode && !m_host.timers[0]);
    EXPECT_EQ(m_module.CurrentListRow, 1);
    m_outcomes.clear();

    piece("1");
    m_dialogs.expectMessage(u"Test Failed."_s, Dialogs::Answer::Dismissed,
                            [this] { m_engine.ResetTransferData(0); });
    tick();
    EXPECT_TRUE(m_host.stopped.isEmpty());
    expectEnd(Outcome::Stopped);
}

TEST_F(Transfer, AReplyInPiecesIsFollowedWithoutLookingAtTheWholeAgain)
{
    send("a.tst", "? SP x\n# PAUSE\n! SP 25\n");
    m_grid.setText(1, 5, u"of the last run"_s);
    tick();
    for (int at = 0; at < 20000; ++at)
        piece("ab\r\n\xff");
    EXPECT_EQ(m_grid.text(1, 5), QString::fromLatin1(QByteArray("ab\xff").repeated(20000)));
    m_engine.replyArrived(0, 0, "<05");
    m_engine.replyArrived(0, 0, "A"); // an echo prefix is taken out once it is whole
    m_engine.replyArrived(0, 1, "BC");
    m_engine.replyArrived(0, 2, "D");
    EXPECT_EQ(m_grid.text(1, 5), u"ABD");
    EXPECT_EQ(m_host.wholeResponses, 0);

    tick(); // the pause: its cell holds none of the box
    m_host.responses[0] = "A\rBDE";
    m_engine.replyArrived(0, 4, "E");
    EXPECT_EQ(m_grid.text(2, 5), u"ABDE");
    m_host.responses[0] = "25";
    m_grid.setText(2, 5, QString());
    m_engine.replyArrived(0, 1, "5"); // the cell was emptied: the whole text again
    EXPECT_EQ(m_grid.text(2, 5), u"25");
    EXPECT_EQ(m_host.wholeResponses, 2);
    tick();
    piece(" too late");
    EXPECT_EQ(m_grid.text(3, 5), u"PASSED"); // a verdict stands
}

TEST_F(Transfer, ALongReplyIsHeldUpToABoundAndPiecesTakenBackCostNoWholeLook)
{
    QString noted;
    QObject::connect(&m_engine, &TransferEngine::noted, &m_area,
                     [&noted](const QString &note) { noted = note; });
    send("a.tst", "? SP x\n# PAUSE\n");
    tick();
    // A line feed alone stays in the box; the pair behind it takes the last byte back each time.
    qsizetype box = 0;
    m_engine.replyArrived(0, 0, "\nab\r");
    for (box = 4; box < 3000; box += 3)
        m_engine.replyArrived(0, box - 1, "\nab\r");
    EXPECT_EQ(m_grid.textLength(1, 5), (box - 1) / 3 * 2);
    EXPECT_EQ(noted, QString());
    const QByteArray flood(600'000, 'y');
    for (int arrival = 0; arrival < 3; ++arrival, box += flood.size())
        m_engine.replyArrived(0, box, flood);
    EXPECT_EQ(m_grid.textLength(1, 5), ReplyMirror::longestCell);
    EXPECT_TRUE(m_grid.text(1, 5).endsWith("yy"_L1));
    EXPECT_TRUE(noted.contains(u"Channel 0") && noted.contains(u"row 1 of 2"));
    EXPECT_EQ(m_host.wholeResponses, 0);
    tick();
    EXPECT_FALSE(noted.isEmpty()) << "until the next run";
    m_engine.cmdLoadToChmber_Click(0);
    EXPECT_TRUE(noted.isEmpty());
}

TEST_F(Transfer, AChannelThatClosesIsSaidWithTheWayOnAndTheRunWaits)
{
    QString noted;
    QStringList troubles;
    QObject::connect(&m_engine, &TransferEngine::noted, &m_area,
                     [&noted](const QString &note) { noted = note; });
    QObject::connect(&m_engine, &TransferEngine::troubled, &m_area,
                     [&troubles](const QString &reason) { troubles += reason; });
    send("a.tst", "? SP x\n? SP y\n! 5 5\n", 3);
    tick(3);
    setClosed(4); // another Channel's business
    EXPECT_TRUE(troubles.isEmpty());
    setClosed(3);
    EXPECT_TRUE(noted.contains(u"Channel 3") && noted.contains(u"row 1 of 3") &&
                noted.contains(u"press Send"));
    EXPECT_TRUE(troubles.last().endsWith(u"no whole reply.")) << "no advice for nobody's buttons";
    EXPECT_EQ(m_area.lblProgress->text(), u"Row 1 of 3: closed");
    setClosed(-1, 3);
    EXPECT_TRUE(noted.contains(u"connected again, but row 1 of 3 has no whole reply"));
    EXPECT_TRUE(m_module.SendMode);
    piece("5", 3); // sent again by hand
    EXPECT_EQ(noted, QString());
    m_engine.commandSent(3, u"? SP x"_s);
    m_engine.commandSent(4, u"B"_s);
    EXPECT_EQ(noted, QString());
    m_engine.commandSent(3, u"B"_s);
    EXPECT_TRUE(noted.contains(u"\"B\" was sent by hand; its reply stands in row 1 of 3"));
    EXPECT_EQ(m_area.lblProgress->text(), u"Row 1 of 3");
    setClosed(3);
    EXPECT_TRUE(noted.contains(u"row 2 of 3 is not sent yet. Connect"));
    setClosed(-1, 3);
    EXPECT_FALSE(noted.contains(u"row 2")) << "nothing is lost";
    setClosed(3);
    tick(3);
    EXPECT_TRUE(noted.contains(u"row 2 of 3 has no whole reply. Connect and press Send"));
    EXPECT_EQ(m_area.lblProgress->text(), u"Row 2 of 3: closed");
    setClosed(-1, 3);
    piece("5", 3);
    EXPECT_FALSE(noted.contains(u"row 2"));
    setClosed(3);
    tick(3);
    EXPECT_EQ(troubles.size(), 4) << "a check needs the Channel no more";
    setClosed(-1, 3);
    for (const bool came : {false, true}) {
        m_engine.cmdLoadToChmber_Click(3);
        tick(3);
        m_engine.ResetTransferData(3);
        if (came)
            piece("late", 3);
        m_engine.cmdLoadToChmber_Click(3);
        EXPECT_EQ(noted.contains(u"the reply to row 1 of 3 of the run before"), !came);
        m_engine.ResetTransferData(3);
    }
}
