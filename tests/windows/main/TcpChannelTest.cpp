// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/channels/Reconnect.h"
#include "core/channels/TcpSession.h"
#include "tests/windows/main/ChannelDesk.h"
#include "windows/main/TcpTab.h"

using namespace corvane;

namespace {

struct TcpDesk : ChannelDesk
{
    explicit TcpDesk(int index)
        : session(index, client, context)
        , channel(session)
    {
        host.listenTo(session);
        channel.txtAddress->setText(u"127.0.0.1"_s);
        session.initialise();
    }

    void sendText(const QString &command)
    {
        session.setCommand(command);
        channel.cmdSend_Click();
    }

    FakeTcpClient client;
    TcpSession session;
    TcpTab channel;
};

using Pieces = std::vector<QByteArray>;

} // namespace

TEST(TcpChannel, ConnectsToTheEntriesFromAnyStateButConnected)
{
    TcpDesk desk(channels::tcpIp1);
    desk.channel.txtPort->setText(u"5025"_s);
    desk.client.setState(SocketState::PeerClosing);
    QTest::keyClick(desk.channel.txtAddress, Qt::Key_Return);
    EXPECT_EQ(desk.client.remoteHost(), u"127.0.0.1");
    EXPECT_EQ(desk.client.remotePort(), 5025);
    EXPECT_EQ(desk.client.closes, 1) << "closed first";
    desk.channel.cmdConnect_Click();
    EXPECT_EQ(desk.client.connects, 1) << "already connected: ignored";
    desk.channel.txtAddress->setText(u"elsewhere"_s);
    EXPECT_EQ(desk.channel.lblPlace->text(), u"Connected to 127.0.0.1 port 5025");

    desk.channel.chkLoop->setChecked(true);
    desk.channel.cmdDisconnect_Click();
    EXPECT_FALSE(desk.channel.chkLoop->isChecked());
    EXPECT_EQ(desk.client.state(), SocketState::Closed);
    EXPECT_EQ(desk.channel.lblPlace->text(), QString());
    EXPECT_EQ(desk.session.place(), u"elsewhere port 5025") << "as the entries stand";
}

TEST(TcpChannel, ShowsEveryStateAndLeavesTheTextOnAnError)
{
    TcpDesk desk(channels::tcpIp1);
    const QStringList states =
        u"Closed|Open|Listening|Connection Pending|Resolving host|Host "
        "resolved|Connecting|Connected|"
        "Peer is closing the connection|Peer is closing the connection"_s.split(u'|');
    for (int state = 0; state < 10; ++state) {
        desk.client.setState(static_cast<SocketState>(state));
        desk.session.Timer1_Timer();
        EXPECT_EQ(desk.channel.lblStatus->text(), u"Socket "_s + states[state]);
    }
}

TEST(TcpChannel, AFailedConnectionIsToldWithoutASeparatorAndThenClosed)
{
    TcpDesk desk(channels::tcpIp2);
    desk.dialogs.expectMessage(u"Errorconnection refused"_s, Dialogs::Answer::Ok,
                               [&] { EXPECT_EQ(desk.client.state(), SocketState::Error); });
    desk.client.fail(10061, u"connection refused"_s);
    EXPECT_EQ(desk.client.state(), SocketState::Closed);

    for (const char16_t *wrong : {u"", u"abc", u"5000x"}) {
        const QString entry = QString::fromUtf16(wrong);
        desk.dialogs.expectMessage(u"Error occurred while trying to connect.\r\n"
                                   "the port \"%1\" is not a number from 1 to 65535"_s.arg(entry));
        desk.channel.txtPort->setText(entry);
        desk.channel.cmdConnect_Click();
    }
    EXPECT_EQ(desk.client.connects, 0);
}

TEST(TcpChannel, EditingThePortOfAConnectedSocketIsRefusedAtEachChange)
{
    TcpDesk desk(channels::tcpIp1);
    desk.channel.txtPort->setText(u"6000"_s);
    EXPECT_EQ(desk.client.remotePort(), 6000) << "taken over at once";
    for (const char16_t *noNumber : {u"", u"7000x", u"1.6"})
        desk.channel.txtPort->setText(QString::fromUtf16(noNumber));
    EXPECT_EQ(desk.client.remotePort(), 6000);
    desk.client.setState(SocketState::Connected);
    const QString refusal =
        u"You are already connected.  To change the port number, you must first disconnect."_s;
    desk.dialogs.expectMessage(refusal);
    desk.dialogs.expectMessage(refusal);
    QTest::keyClicks(desk.channel.txtPort, u"70"_s);
    EXPECT_EQ(desk.client.remotePort(), 6000);
}

TEST(TcpChannel, ASendOnAClosedSocketGoesBackToPort5000)
{
    const QString texts[] = {u"TCP/IP1 is not connected.  Please connect and try again."_s,
                             u"TCP/IP2 is not connected.  Please connect and try again."_s};
    for (const int index : {channels::tcpIp1, channels::tcpIp2}) {
        TcpDesk desk(index);
        desk.channel.txtPort->setText(u"6000"_s);
        desk.client.setState(SocketState::PeerClosing);
        desk.dialogs.expectMessage(texts[index - channels::tcpIp1]);
        desk.channel.cmdSend_Click();
        EXPECT_EQ(desk.client.remotePort(), 5000);
        EXPECT_EQ(desk.client.state(), SocketState::Closed);
        EXPECT_EQ(desk.client.connects, 0);
    }
}

TEST(TcpChannel, TcpIp1SendsOneLineAndShowsTheNewestArrival)
{
    TcpDesk desk(channels::tcpIp1);
    desk.channel.cmdConnect_Click();
    desk.sendText(u"A;B;C"_s);
    EXPECT_EQ(desk.client.sent, Pieces{"A;B;C\r"});
    desk.client.feed("first\r\n");
    desk.client.feed("sec\r\nond\n\r\n");
    EXPECT_EQ(desk.channel.txtIn->text(), u"second\n");
    EXPECT_EQ(desk.host.gridCell, "second\n");
    EXPECT_EQ(desk.host.replies, 2);
    EXPECT_TRUE(desk.host.notes.last().contains(u"newest one alone"));
    desk.host.faults = {u"of the command before"_s};
    desk.sendText(u"D"_s);
    EXPECT_EQ(desk.host.faults, QStringList());
    EXPECT_EQ(desk.host.notes.last(), QString()) << "it was about the command before";
    for (const char *piece : {"1.25\r", "\n", "\r\n"})
        desk.client.feed(piece);
    EXPECT_EQ(desk.channel.txtIn->text(), u"1.25") << "the line's end came by itself";
    EXPECT_EQ(desk.host.notes.last(), QString());
}

TEST(TcpChannel, TcpIp2SendsEachPieceAfterTheReplyToTheOneBefore)
{
    TcpDesk desk(channels::tcpIp2);
    desk.channel.cmdConnect_Click();
    desk.sendText(u"A;B;"_s);
    EXPECT_EQ(desk.client.sent, Pieces{"A\r"});
    desk.channel.chkLoop->setChecked(true);
    desk.session.Timer1_Timer();
    EXPECT_EQ(desk.client.sent.size(), 1U) << "a loop waits for the end of its command";
    desk.session.TimerTransfer->start();
    desk.client.feed("1\r");
    EXPECT_EQ(desk.client.sent, (Pieces{"A\r", "B\r"}));
    EXPECT_FALSE(desk.session.TimerTransfer->isActive()) << "no step between two pieces";
    desk.client.feed("\n2\r\n");
    EXPECT_EQ(desk.client.sent, (Pieces{"A\r", "B\r", "\r"})) << "a final bare CR";
    desk.client.feed("3");
    EXPECT_EQ(desk.client.sent.size(), 3U);
    EXPECT_EQ(desk.channel.txtIn->text(), u"123") << "collected, pairs removed, split ones too";
}

TEST(TcpChannel, AnotherCommandOrTheEndOfTheConnectionDropsTheRestOfACommand)
{
    TcpDesk desk(channels::tcpIp2);
    desk.channel.cmdConnect_Click();
    desk.sendText(u"X;Y"_s);
    desk.sendText(u"A;B;;C"_s);
    EXPECT_EQ(desk.client.sent, (Pieces{"X\r", "A\r"}));
    EXPECT_EQ(desk.host.faults.size(), 1);
    desk.client.setState(SocketState::PeerClosing);
    EXPECT_EQ(desk.host.faults.size(), 2);
    desk.channel.cmdConnect_Click();
    desk.client.feed("late");
    EXPECT_EQ(desk.client.sent, (Pieces{"X\r", "A\r"}));
    desk.sendText(u"D;E"_s);
    EXPECT_EQ(desk.client.sent.back(), "D\r");
    desk.client.failSend = u"network is down"_s;
    desk.client.feed("reply"); // not told from within the socket's own frame
    EXPECT_FALSE(desk.session.TimerTransfer->isActive());
    desk.dialogs.expectMessage(u"Error occurred in CmdSend"_s);
    QCoreApplication::processEvents();
    EXPECT_EQ(desk.host.faults.last(), desk.client.failSend);
}

TEST(TcpChannel, ALoopBeginsItsCommandAnewWhenAnAnswerIsLost)
{
    TcpDesk desk(channels::tcpIp2);
    desk.channel.cmdConnect_Click();
    desk.sendText(u"A;B"_s);
    desk.channel.chkLoop->setChecked(true);
    desk.session.Timer1_Timer();
    EXPECT_EQ(desk.client.sent, Pieces{"A\r"}) << "sent by hand a moment ago";
    desk.session.Timer1_Timer();
    EXPECT_EQ(desk.client.sent, (Pieces{"A\r", "A\r"}));
    EXPECT_TRUE(desk.host.faults.value(0).contains(u"a reply did not come"));
    desk.client.feed("1");
    EXPECT_EQ(desk.client.sent.size(), 3U) << "B goes out after A's answer";
    desk.client.feed("2");
    desk.session.Timer1_Timer();
    EXPECT_EQ(desk.host.faults.size(), 1) << "stands while the loop goes on";
    desk.channel.chkLoop->setChecked(false);
    desk.channel.chkLoop->setChecked(true);
    EXPECT_EQ(desk.host.faults, QStringList()) << "another loop";
    desk.channel.chkLoop->setChecked(false);
    for (int tick = 0; tick < 3; ++tick)
        desk.session.Timer1_Timer();
    EXPECT_EQ(desk.client.sent.size(), 4U) << "without a loop it waits as long as it takes";
}

TEST(TcpChannel, AFloodKeepsItsNewest64MegabytesAndSaysOnceThatOlderTextIsGone)
{
    TcpDesk desk(channels::tcpIp2);
    desk.channel.cmdConnect_Click();
    QByteArray arrival(10'000'000, 'x');
    for (char number = '0'; number <= '9'; ++number) {
        arrival.back() = number;
        desk.client.feed(arrival);
    }
    const QByteArray &kept = desk.channel.txtIn->bytes();
    EXPECT_GE(kept.size(), ResponseText::mostKept);
    EXPECT_LE(kept.size(), ResponseText::mostKept / 4 * 5);
    EXPECT_EQ(kept.size() + desk.session.response().dropped(), 100'000'000);
    EXPECT_TRUE(kept.endsWith('9') && kept[kept.size() - 10'000'001] == '8');
    EXPECT_TRUE(desk.host.notes.size() == 1 && desk.host.notes[0].contains(u"newest 64 MB"));
    desk.sendText(u"next"_s);
    desk.client.feed("whole");
    EXPECT_EQ(desk.host.notes.last(), QString());
}

TEST(TcpChannel, LoopsOnlyWhileConnected)
{
    TcpDesk desk(channels::tcpIp1);
    desk.channel.chkLoop->setChecked(true);
    desk.session.Timer1_Timer();
    EXPECT_TRUE(desk.client.sent.empty());
    desk.channel.cmdConnect_Click();
    desk.session.Timer1_Timer();
    EXPECT_EQ(desk.client.sent, Pieces{"*IDN?\r"});
    EXPECT_TRUE(desk.channel.shpComm->isBright());
    desk.client.reset = true;
    desk.client.setState(SocketState::PeerClosing);
    EXPECT_TRUE(desk.host.faults.value(0).contains(u"reset by the peer"));
    desk.session.Timer1_Timer();
    EXPECT_FALSE(desk.channel.shpComm->isBright());
    EXPECT_EQ(desk.client.sent.size(), 1U);
}

TEST(TcpChannel, ALostConnectionIsTriedAgainAtItsPlaceWithoutABoxAndOneTryAtATime)
{
    TcpDesk desk(channels::tcpIp1);
    Reconnect &again = desk.session.reconnect();
    QString note;
    QObject::connect(&again, &Reconnect::noted, &again, [&note](auto &text) { note = text; });
    desk.channel.chkReconnect->setChecked(true);
    desk.dialogs.expectMessage(u"Errorrefused"_s);
    desk.client.fail(10061, u"refused"_s);
    EXPECT_TRUE(note.endsWith(u"only after it has been connected")) << note.toStdString();
    desk.channel.cmdConnect_Click();
    desk.channel.txtAddress->setText(u"elsewhere"_s);
    desk.client.fail(10054, u"broken"_s);
    EXPECT_TRUE(note.endsWith(u"trying again: broken")) << note.toStdString();
    desk.client.stateAfterConnect = SocketState::Connecting;
    again.tmrTry_Timer();
    again.tmrTry_Timer();
    EXPECT_EQ(desk.client.connects, 2) << "the earlier try is pending";
    EXPECT_EQ(desk.client.remoteHost(), u"127.0.0.1");
    desk.client.fail(10061, u"refused"_s);
    EXPECT_TRUE(note.endsWith(u"trying again (1): refused")) << note.toStdString();
    again.tmrTry_Timer();
    desk.client.setState(SocketState::Connected);
    EXPECT_TRUE(note.contains(u"connected again"));
    EXPECT_EQ(desk.channel.lblPlace->text(), u"Connected to 127.0.0.1 port 5000");

    desk.client.setState(SocketState::PeerClosing);
    again.tmrTry_Timer();
    desk.channel.chkReconnect->setChecked(false);
    EXPECT_EQ(desk.client.state(), SocketState::Closed) << "the pending try is given up";
}
