// SPDX-License-Identifier: GPL-3.0-or-later
#include "TransferFixture.h"
#include "core/channels/ChannelTexts.h"
#include "core/channels/Reconnect.h"
#include "core/lists/ListTexts.h"

using namespace corvane;

TEST_F(Transfer, GetListFillsTheValueColumnWithTheRepliesOfItsQueries)
{
    load("a.kms", "SP\n= T 5\n");
    channels.at(3).setLooping(true);
    channels.at(3).setLogged(true);
    m_engine.cmdLoadFrmChmber_Click(3);
    EXPECT_FALSE(channels.at(3).isLooping() || channels.at(3).isLogged());
    EXPECT_TRUE(module.GetMode && module.ResponseReady && isTimed(3));
    EXPECT_EQ(busy(), QList<int>{3});
    EXPECT_EQ(m_list.currentRow(), 1);
    tick(3);
    EXPECT_FALSE(module.ResponseReady || isTimed(3));
    EXPECT_EQ(m_progress, u"1 of 2");
    piece("50\r\n", 3);
    EXPECT_TRUE(module.ResponseReady && isTimed(3) && m_list.markedRow() == 1);
    tick(3);
    piece("5", 3);
    tick(3);
    EXPECT_EQ(m_list.text(1, 2) + m_list.text(2, 2), u"505");
    EXPECT_EQ(channels.at(3).response().bytes(), "Transfer complete.");
    EXPECT_EQ(m_rows, (QStringList{u"1 > ? SP"_s, u"1 < 50 0"_s, u"2 > ? = T"_s, u"2 < 5 0"_s}));
    expectEnd(Outcome::Complete);
}

TEST_F(Transfer, ATestJudgesTheReplyOfTheRowAboveAndPausesForOneTick)
{
    m_list.setStripsOperator(true);
    send("a.tst", "? SP x\n! SP 25 0.5\n# PAUSE\n= SP 1\n! OK \"OK\"\n! X \"PASSED\"\n");
    tick();
    piece("25.5");
    tick();
    EXPECT_EQ(m_list.verdict(2, 5), GridModel::Verdict::Passed);
    EXPECT_TRUE(module.ResponseReady);
    EXPECT_EQ(channels.at(0).command(), QString());
    tick();
    tick();
    piece("OK");
    tick();
    tick();
    dialogs.expectMessage(u"Test Passed."_s, Dialogs::Answer::Ok, [this] { expectIdle(); });
    tick();
    EXPECT_EQ(m_sent, (QStringList{u"SP x"_s, u"SP 1"_s}));
    EXPECT_EQ(m_rows.join(u'\n'), u"1 > SP x\n1 < 25.5 0\n2 > \n2 < PASSED 1\n3 > \n3 <  0\n"
                                  "4 > SP 1\n4 < OK 0\n5 > \n5 < PASSED 1\n6 > \n6 < PASSED 1");
    expectEnd(Outcome::Passed);
    m_list.setText(3, 5, u"of hand"_s);
    m_engine.cmdLoadToChmber_Click(0);
    for (int row = 1; row <= 6; ++row) // no reply and no verdict of the run before
        EXPECT_EQ(m_list.text(row, 5), row == 3 ? u"of hand" : u"");
    EXPECT_EQ(m_list.verdict(2, 5), GridModel::Verdict::None);
}

TEST_F(Transfer, AListOfPausesPassesAfterATickARowHoweverLongItIs)
{
    send("a.tst", QByteArray("# PAUSE\n").repeated(33000));
    for (int row = 0; row < 33000; ++row)
        tick();
    EXPECT_EQ(module.CurrentListRow, 33000);
    dialogs.expectMessage(u"Test Passed."_s);
    tick();
    expectEnd(Outcome::Passed);
}

TEST_F(Transfer, AFailedCheckIsShownBeforeTheRunStopsAndNothingMovesBehindTheBox)
{
    send("a.tst", "? SP x\n! ID \"READY\"\n", 4);
    tick(4);
    piece("READY NOW", 4);
    dialogs.expectMessage(u"Test Failed."_s, Dialogs::Answer::Ok, [this] {
        EXPECT_TRUE(module.SendMode && m_engine.isBusy());
        EXPECT_FALSE(isTimed(4));
        piece("late", 4);
        module.ResponseReady = true;
        tick(4);
        m_engine.cmdLoadToChmber_Click(4);
        EXPECT_EQ(module.CurrentListRow, 2);
    });
    tick(4);
    EXPECT_EQ(m_rows.last(), u"2 < PASSED 2"); // the reply only continues
    EXPECT_EQ(m_list.verdict(2, 5), GridModel::Verdict::Failed);
    expectEnd(Outcome::Failed);
    send("b.tst", "! ID Response\n", 4);
    dialogs.expectMessage(u"Test Failed."_s);
    tick(4);
    EXPECT_EQ(m_list.verdict(1, 5), GridModel::Verdict::Failed) << "the column's title is no reply";
}

TEST_F(Transfer, AnEmptyOrIncompleteListIsRefused)
{
    dialogs.expectMessage(listTexts::emptyAtGet);
    m_engine.cmdLoadFrmChmber_Click(3);
    expectEnd(Outcome::Empty);
    dialogs.expectMessage(listTexts::emptyAtSend);
    send("a.kms", "");
    expectEnd(Outcome::Empty);
    dialogs.expectMessage(listTexts::incompleteAtSend);
    send("a.kms", "SP 50\n= SP 50\n");
    expectEnd(Outcome::Incomplete);
    for (const int index : {-1, channelCount, 1000})
        m_engine.cmdLoadToChmber_Click(index);
    EXPECT_TRUE(m_outcomes.empty());
}

TEST_F(Transfer, ARowWithoutACellThatItNeedsCancelsTheTransfer)
{
    send("a.kms", "= SP 50\nSP\n");
    tick();
    piece("OK");
    dialogs.expectMessage(u"Syntax Error.  Canceling Transfer."_s, Dialogs::Answer::Ok, [this] {
        EXPECT_TRUE(module.SendMode);
        tick();
    });
    tick();
    EXPECT_EQ(channels.at(0).command(), u"Syntax Error");
    EXPECT_EQ(m_list.text(1, 3), u"OK");
    expectEnd(Outcome::SyntaxError);
}

TEST_F(Transfer, TheGpibTimeOutEndsTheRunWithoutABox)
{
    Q_EMIT channels.at(2).timedOut();
    send("a.kmp", "= SP 50\n= SP 51", 2);
    EXPECT_FALSE(module.GpibTransfer);
    tick(2);
    piece("OK", 2);
    EXPECT_EQ(m_list.text(1, 4), u"OK");
    tick(2);
    Q_EMIT channels.at(1).timedOut();
    EXPECT_TRUE(module.GpibTransfer && module.SendMode);
    Q_EMIT channels.at(2).timedOut();
    expectEnd(Outcome::TimedOut);
    m_engine.cmdLoadToChmber_Click(2);
    EXPECT_TRUE(m_engine.doubt().contains(u"the reply to row 2 of 2 of the run before"));
    Q_EMIT channels.at(2).timedOut(); // of a command before the first row
    m_engine.cmdLoadToChmber_Click(2);
    EXPECT_EQ(m_engine.doubt(), QString());
}

TEST_F(Transfer, ARunIsStoppedByItsButtonByAStartElsewhereAndByAnotherList)
{
    send("a.kms", "= SP 50\n= T 5\n");
    tick();
    piece("OK");
    module.TransferWaitCount[1] = 7;
    m_engine.ResetTransferData(1); // whichever tab is showing
    EXPECT_EQ(m_rows.last(), u"1 < OK 0");
    EXPECT_EQ(module.TransferWaitCount[1], 0);
    piece("late");
    tick();
    expectEnd(Outcome::Stopped);
    EXPECT_EQ(m_list.text(1, 3) + m_list.text(2, 3), u"OK");

    m_engine.cmdLoadToChmber_Click(0);
    tick();
    m_engine.cmdLoadFrmChmber_Click(4);
    piece("for channel 0");
    tick(0);
    EXPECT_EQ(busy(), QList<int>{4});
    EXPECT_EQ(module.CurrentListRow, 0);
    load("b.kms", "X\n");
    piece("late", 4);
    EXPECT_EQ(m_list.text(1, 3), QString());
    m_engine.cmdLoadFrmChmber_Click(4);
    m_list.clear();
    EXPECT_EQ(m_outcomes, std::vector<Outcome>(3, Outcome::Stopped));
    EXPECT_FALSE(module.transferRunning() || isTimed(4));
}

TEST_F(Transfer, AStopInsideASendOrABoxEndsTheRunForGood)
{
    m_onSend = [this] { m_engine.ResetTransferData(0); };
    send("a.tst", "= SP 50\n! SP 25\n");
    tick();
    expectEnd(Outcome::Stopped);
    // A new run that starts inside the send of the old one waits for its return.
    m_onSend = [this] {
        m_engine.cmdLoadFrmChmber_Click(1);
        tick(1);
        EXPECT_EQ(module.CurrentListRow, 0);
    };
    m_engine.cmdLoadToChmber_Click(0);
    tick();
    EXPECT_TRUE(module.GetMode && isTimed(1));
    m_outcomes.clear();
    // A send that is refused with a box leaves its run waiting.
    channels.at(0).close();
    m_engine.cmdLoadToChmber_Click(0);
    dialogs.expectMessage(channels.at(0).traits().notConnected, Dialogs::Answer::Ok,
                          [this] { tick(); });
    tick();
    EXPECT_TRUE(module.SendMode && !isTimed(0));
    EXPECT_EQ(module.CurrentListRow, 1);
    channels.at(0).open();
    // One that fails ends it.
    rs485.failWrite = u"pulled out"_s;
    m_outcomes.clear();
    dialogs.expectMessage(channelTexts::sendError);
    channels.at(0).send();
    expectEnd(Outcome::Stopped);

    rs485.failWrite.clear();
    m_engine.cmdLoadToChmber_Click(0);
    tick();
    piece("1");
    dialogs.expectMessage(u"Test Failed."_s, Dialogs::Answer::Dismissed,
                          [this] { m_engine.ResetTransferData(0); });
    tick();
    expectEnd(Outcome::Stopped);
}

TEST_F(Transfer, AReplyInPiecesIsFollowedWithoutLookingAtTheWholeAgain)
{
    send("a.tst", "? SP x\n# PAUSE\n! SP 25\n");
    m_list.setText(1, 5, u"of the last run"_s);
    tick();
    for (int at = 0; at < 20000; ++at)
        say(qsizetype{5} * at, "ab\r\n\xff");
    EXPECT_EQ(m_list.text(1, 5), QString::fromLatin1(QByteArray("ab\xff").repeated(20000)));
    say(0, "<05");
    say(0, "A"); // an echo prefix is taken out once it is whole
    say(1, "BC");
    say(2, "D");
    EXPECT_EQ(m_list.text(1, 5), u"ABD");

    tick(); // the pause: its cell holds none of the box
    channels.at(0).setResponse("A\rBDE");
    say(4, "E");
    EXPECT_EQ(m_list.text(2, 5), u"ABDE");
    channels.at(0).setResponse("25");
    m_list.setText(2, 5, QString());
    say(1, "5"); // the cell was emptied: the whole text again
    EXPECT_EQ(m_list.text(2, 5), u"25");
    tick();
    piece(" too late");
    EXPECT_EQ(m_list.text(3, 5), u"PASSED"); // a verdict stands
}

TEST_F(Transfer, ALongReplyIsHeldUpToABoundAndPiecesTakenBackCostNoWholeLook)
{
    send("a.tst", "? SP x\n# PAUSE\n");
    tick();
    // A line feed alone stays in the box; the pair behind it takes the last byte back each time.
    qsizetype box = 0;
    say(0, "\nab\r");
    for (box = 4; box < 3000; box += 3)
        say(box - 1, "\nab\r");
    EXPECT_EQ(m_list.textLength(1, 5), (box - 1) / 3 * 2);
    EXPECT_EQ(m_noted, QString());
    const QByteArray flood(600'000, 'y');
    for (int arrival = 0; arrival < 3; ++arrival, box += flood.size())
        say(box, flood);
    EXPECT_EQ(m_list.textLength(1, 5), ReplyMirror::longestCell);
    EXPECT_TRUE(m_list.text(1, 5).endsWith("yy"_L1));
    EXPECT_TRUE(m_noted.contains(u"RS-485") && m_noted.contains(u"row 1 of 2"));
    tick();
    EXPECT_FALSE(m_noted.isEmpty()) << "until the next run";
    m_engine.cmdLoadToChmber_Click(0);
    EXPECT_TRUE(m_noted.isEmpty());
}

TEST_F(Transfer, ARowThatIsNotSentYetWaitsWithoutABoxWhileItsChannelIsTriedAgain)
{
    channels.at(3).reconnect().setOn(true);
    send("a.tst", "? SP x\n= SP 5\n", 3);
    tick(3);
    piece("5", 3);
    tcpClient1.setState(SocketState::Closed);
    tick(3);
    tick(3);
    EXPECT_EQ(m_sent, QStringList(u"? SP x"_s));
    EXPECT_EQ(m_progress, u"1 of 2 closed");
    tcpClient1.setState(SocketState::Connected);
    EXPECT_EQ(m_progress, u"1 of 2");
    tick(3);
    EXPECT_EQ(m_sent.last(), u"= SP 5");
}

TEST_F(Transfer, AChannelThatClosesIsSaidWithTheWayOnAndTheRunWaits)
{
    QStringList troubles;
    QObject::connect(&m_engine, &TransferEngine::troubled, &m_engine,
                     [&troubles](const QString &reason) { troubles += reason; });
    send("a.tst", "? SP x\n? SP y\n! 5 5\n", 3);
    tick(3);
    channels.at(4).close(); // another Channel's business
    EXPECT_TRUE(troubles.isEmpty());
    channels.at(3).close();
    EXPECT_TRUE(m_noted.contains(u"TCP/IP-1") && m_noted.contains(u"row 1 of 3") &&
                m_noted.contains(u"press Send"));
    EXPECT_TRUE(troubles.last().endsWith(u"no whole reply.")) << "no advice for nobody's buttons";
    EXPECT_EQ(m_progress, u"1 of 3 closed");
    channels.at(3).open();
    EXPECT_TRUE(m_noted.contains(u"connected again, but row 1 of 3 has no whole reply"));
    EXPECT_TRUE(module.SendMode);
    Q_EMIT channels.at(3).commandSent(u"? SP x"_s); // the row's, once more
    Q_EMIT channels.at(4).commandSent(u"B"_s);
    EXPECT_EQ(m_noted, QString());
    piece("5", 3);
    for (const QString &command : {u"? SP x"_s, u"B"_s}) {
        Q_EMIT channels.at(3).commandSent(command);
        EXPECT_TRUE(m_noted.contains(
            u"\"%1\" was sent by hand; its reply stands in row 1 of 3"_s.arg(command)));
    }
    EXPECT_EQ(m_progress, u"1 of 3");
    channels.at(3).close();
    EXPECT_TRUE(m_noted.contains(u"row 2 of 3 is not sent yet. Connect"));
    channels.at(3).open();
    EXPECT_FALSE(m_noted.contains(u"row 2")) << "nothing is lost";
    channels.at(3).close();
    dialogs.expectMessage(channels.at(3).traits().notConnected);
    tick(3);
    EXPECT_TRUE(m_noted.contains(u"row 2 of 3 has no whole reply. Connect and press Send"));
    EXPECT_EQ(m_progress, u"2 of 3 closed");
    channels.at(3).open();
    channels.at(3).send();
    piece("5", 3);
    EXPECT_FALSE(m_noted.contains(u"row 2"));
    channels.at(3).close();
    tick(3);
    EXPECT_EQ(troubles.size(), 4) << "a check needs the Channel no more";
    channels.at(3).open();
    for (const bool came : {false, true}) {
        m_engine.cmdLoadToChmber_Click(3);
        tick(3);
        m_engine.ResetTransferData(3);
        if (came)
            piece("late", 3);
        m_engine.cmdLoadToChmber_Click(3);
        EXPECT_EQ(m_noted.contains(u"the reply to row 1 of 3 of the run before"), !came);
        m_engine.ResetTransferData(3);
        Q_EMIT channels.at(4).commandSent(u"B"_s);
        if (came)
            piece("late", 4);
        m_engine.cmdLoadToChmber_Click(4);
        EXPECT_EQ(m_engine.doubt().contains(u"the reply to \"B\", sent before the run"), !came);
        m_engine.ResetTransferData(4);
    }
}
