// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/channels/Reconnect.h"
#include "core/channels/SerialSession.h"
#include "devices/QtSerialPort.h"
#include "tests/devices/Pty.h"
#include "tests/windows/main/ChannelDesk.h"
#include "windows/main/PortMenu.h"
#include "windows/main/SerialTab.h"

using namespace corvane;

namespace {

struct SerialDesk : ChannelDesk
{
    explicit SerialDesk(int index)
        : session(
              index, port, [this] { return ports; }, context, &addressed)
        , channel(session)
    {
        host.listenTo(session);
        addressed.setAddress(u"05"_s);
        session.initialise();
        if (channel.cboAddress485)
            channel.cboAddress485->setCurrentText(u"05"_s);
    }

    QList<SerialPortEntry> ports;
    FakeSerialPort port;
    FakeSerialPort other;
    SerialSession addressed{channels::rs485, other, [] { return QList<SerialPortEntry>(); },
                            context};
    SerialSession session;
    SerialTab channel;
};

} // namespace

TEST(SerialChannel, ItsPortIsChosenFromThoseThatAreThereNowWithWhoUsesThem)
{
    SerialDesk desk(channels::rs232);
    QMenu &menu = *desk.channel.mnuPorts;
    const auto shown = [&menu] {
        Q_EMIT menu.aboutToShow();
        QStringList texts;
        for (const QAction *each : menu.actions())
            texts.append(each->text());
        return texts.join(u'|').toStdString();
    };
    EXPECT_EQ(shown().find("This computer lists no serial port"), 0U);
    const Pty open;
    desk.ports = {{1, u"/dev/none"_s, u"A & B"_s, u"adapter"_s, u"S1"_s},
                  {7, open.device(), {}, {}}};
    const std::string rows =
        "1   /dev/none   A && B adapter, S1|7   " + open.device().toStdString();
    EXPECT_EQ(shown(), rows) << "the bench has its devices open, too";
    SerialPortList list{[] { return QList<SerialPortEntry>(); }};
    QtSerialPort channel(list);
    channel.setDevice(open.device());
    channel.setPortOpen(true);
    EXPECT_EQ(shown(), rows + "   open elsewhere in this program");
    menu.actions().at(1)->trigger();
    EXPECT_EQ(desk.channel.txtPort->text(), u"7");
    (void)shown();
    EXPECT_TRUE(menu.actions().at(1)->isChecked() && !menu.actions().at(0)->isChecked());
}

TEST(SerialChannel, FramesACommandAndTakesTheEchoPrefixOutOfTheReply)
{
    SerialDesk rs485Desk(channels::rs485);
    rs485Desk.channel.cmdConnect_Click();
    rs485Desk.channel.cmdSend_Click();
    EXPECT_EQ(rs485Desk.port.written, (std::vector<QByteArray>{">05 *IDN?\r"}));
    EXPECT_EQ(rs485Desk.channel.lblPrefix->text(), u">05");
    EXPECT_EQ(rs485Desk.channel.cboAddress485->count(), 30);
    EXPECT_EQ(rs485Desk.port.inputLen(), 0);
    for (const char *piece : {"<0", "5:AB", "C\r", "\n"})
        rs485Desk.port.feed(piece);
    EXPECT_EQ(rs485Desk.channel.txtIn->text(), u"ABC");
    EXPECT_EQ(rs485Desk.host.gridCell, "ABC");
    EXPECT_TRUE(rs485Desk.module.ResponseReady);

    SerialDesk rs232Desk(channels::rs232);
    rs232Desk.channel.cmdConnect_Click();
    rs232Desk.port.setRThreshold(0);
    rs232Desk.port.feed("stale"); // not announced yet
    rs232Desk.port.setRThreshold(1);
    rs232Desk.channel.cmdSystErr_Click();
    EXPECT_EQ(rs232Desk.port.written, (std::vector<QByteArray>{"syst:err?\r"}));
    rs232Desk.port.feed("<05:0");
    EXPECT_EQ(rs232Desk.channel.txtIn->text(), u"0") << "what came before the send is dropped";
}

TEST(SerialChannel, ASendOnAClosedPortIsToldAndNeitherLoopNorRunEnds)
{
    const QString texts[] = {u"The RS 485 port is not connected.  Please connect and try again."_s,
                             u"The RS 232 port is not connected.  Please connect and try again."_s};
    for (const int index : {channels::rs485, channels::rs232}) {
        SerialDesk desk(index);
        desk.channel.chkLoop->setChecked(true);
        desk.session.TimerTransfer->start();
        desk.dialogs.expectMessage(texts[index], Dialogs::Answer::Ok, [&desk] {
            EXPECT_FALSE(desk.session.TimerTransfer->isActive()) << "no step behind the box";
        });
        desk.channel.cmdSend_Click();
        EXPECT_TRUE(desk.channel.chkLoop->isChecked());
        EXPECT_EQ(desk.host.failedSends, 0) << "a run waits";
        EXPECT_TRUE(desk.port.written.empty());
    }
}

TEST(SerialChannel, ConnectingOpensOnceAndAFaultIsTold)
{
    SerialDesk desk(channels::rs485);
    desk.channel.txtPort->setText(u"7"_s);
    desk.port.failOpen = u"serial port 7: there is no such port"_s;
    desk.dialogs.expectMessage(
        u"Error occurred while trying to connect.\r\nserial port 7: there is no such port"_s);
    desk.channel.cmdConnect_Click();
    EXPECT_EQ(desk.port.commPort(), 7);
    EXPECT_EQ(desk.channel.lblStatus->text(), u"Port Closed");

    desk.port.failOpen.clear();
    QTest::keyClick(desk.channel.txtPort, Qt::Key_Return);
    desk.channel.cmdConnect_Click();
    EXPECT_EQ(desk.port.opened, 1);
    EXPECT_EQ(desk.channel.lblStatus->text(), u"Port Open");

    QTest::keyClicks(desk.channel.txtPort, u"2"_s);
    EXPECT_EQ(desk.port.closed, 1) << "the first key closes the port";
}

TEST(SerialChannel, APortEntryMeansWhatItSaysAndTheOpenPortIsShown)
{
    SerialDesk desk(channels::rs232);
    const std::tuple<const char16_t *, int, const char16_t *> rows[] = {
        {u" 3 ", 3, u""},
        {u"com12", 12, u""},
        {u"/dev/ttyS0", 12, u"/dev/ttyS0"},
        {u"ttyUSB0", 12, u"ttyUSB0"},
        {u"7", 7, u""}};
    for (const auto &[entry, number, device] : rows) {
        desk.channel.txtPort->setText(QString::fromUtf16(entry));
        EXPECT_EQ(desk.channel.lblPlace->text(), QString());
        desk.channel.cmdConnect_Click();
        EXPECT_EQ(desk.port.commPort(), number);
        EXPECT_EQ(desk.port.device(), device);
        EXPECT_EQ(desk.channel.lblPlace->text(), u"Connected to "_s + desk.session.place());
    }
    const int opened = desk.port.opened;
    for (const char16_t *wrong : {u"", u"2x", u"1.6", u"1e1", u"-"}) {
        const QString entry = QString::fromUtf16(wrong);
        desk.channel.txtPort->setText(entry);
        desk.dialogs.expectMessage(
            u"Error occurred while trying to connect.\r\nthe port \"%1\" is not a number"_s.arg(
                entry));
        desk.channel.cmdConnect_Click();
    }
    desk.channel.txtPort->setText(u"99999999999"_s);
    desk.dialogs.expectMessage(
        u"Error occurred while trying to connect.\r\nserial port 99999999999: there is no such "
        "port; the numbers go from 1 to 2147483647"_s);
    desk.channel.cmdConnect_Click();
    EXPECT_EQ(desk.port.opened, opened);
}

TEST(SerialChannel, AnUnpluggedPortIsSaidOnceWithoutABoxAndTheLoopGoesQuiet)
{
    SerialDesk desk(channels::rs232);
    desk.channel.cmdConnect_Click();
    desk.channel.chkLoop->setChecked(true);
    desk.session.Timer1_Timer();
    EXPECT_TRUE(desk.channel.shpComm->isBright());
    desk.session.Timer1_Timer();
    EXPECT_FALSE(desk.channel.shpComm->isBright());
    desk.session.Timer1_Timer();
    desk.port.unplug(u"/dev/ttyUSB0 has gone"_s);
    desk.session.Timer1_Timer();
    desk.session.Timer1_Timer();
    EXPECT_EQ(desk.host.faults, QStringList{u"/dev/ttyUSB0 has gone"_s});
    EXPECT_EQ(desk.port.written.size(), 3U);
    EXPECT_EQ(desk.channel.lblStatus->text(), u"Port Closed");
    EXPECT_FALSE(desk.channel.shpComm->isBright());
}

TEST(SerialChannel, AFaultInALoopIsToldOnceAndSwitchesTheLoopOff)
{
    SerialDesk desk(channels::rs232);
    desk.channel.cmdConnect_Click();
    desk.channel.chkLoop->setChecked(true);
    desk.port.failWrite = u"the port has failed"_s;
    desk.dialogs.expectMessage(u"Error occurred in CmdSend"_s, Dialogs::Answer::Ok,
                               [&desk] { EXPECT_EQ(desk.host.failedSends, 0); });
    desk.session.Timer1_Timer();
    desk.session.Timer1_Timer();
    EXPECT_FALSE(desk.channel.chkLoop->isChecked());
    EXPECT_EQ(desk.host.failedSends, 1) << "a run of it ends when the box is closed";
}

TEST(Channel, KeepsTwentyOneCommandsAndDropsTheOldest)
{
    SerialDesk desk(channels::rs232);
    desk.channel.cmdConnect_Click();
    QComboBox &history = *desk.channel.cboOut;
    for (int number = 1; number <= 22; ++number) {
        desk.session.setCommand(u"CMD%1"_s.arg(number));
        QTest::keyClick(&history, Qt::Key_Return);
        EXPECT_EQ(history.currentText(), u"CMD%1"_s.arg(number));
    }
    ASSERT_EQ(history.count(), 21);
    EXPECT_EQ(history.itemText(0), u"CMD2");
    EXPECT_EQ(history.itemText(20), u"CMD22");
    EXPECT_EQ(desk.port.written.size(), 22U);
    QTest::keyClick(&history, Qt::Key_Up);
    EXPECT_EQ(history.currentText(), u"CMD21");
}

TEST(Channel, SendsHostileCommandsWholeAndRefusesWhatHasNoByte)
{
    SerialDesk desk(channels::rs232);
    desk.channel.cmdConnect_Click();
    const QString hundredKilobytes(100'000, u'x');
    for (const QString &command : {QString(), hundredKilobytes, u"\u00e4\u0085\u00ff"_s}) {
        desk.session.setCommand(command);
        desk.channel.cmdSend_Click();
        EXPECT_EQ(desk.port.written.back(), command.toLatin1() + '\r');
    }
    const auto sent = desk.port.written.size();
    desk.session.setCommand(u"SET 5 \u20ac"_s);
    desk.dialogs.expectMessage(
        u"The command holds a character that cannot be sent: \"\u20ac\".  Nothing was sent."_s);
    desk.channel.cmdSend_Click();
    EXPECT_EQ(desk.port.written.size(), sent);
}

TEST(Channel, TakesAPeriodInRangeAtOnceAndBringsTheLastGoodOneBack)
{
    SerialDesk desk(channels::rs232);
    SerialTab &channel = desk.channel;
    SerialSession &session = desk.session;
    EXPECT_EQ(session.Timer1->interval(), 1000);
    EXPECT_EQ(session.TimerTransfer->interval(), 500);
    const std::pair<const char16_t *, int> entries[] = {
        {u"10", 10},     {u"9", 10},     {u"3600000", 3'600'000}, {u"3600001", 3'600'000},
        {u" 250 ", 250}, {u"", 250},     {u"1e3", 250},           {u"abc", 250},
        {u"-1000", 250}, {u"10.5", 250},
    };
    for (const auto &[entry, expected] : entries) {
        channel.cboMs->setEditText(QString::fromUtf16(entry));
        channel.cboMs_Change();
        EXPECT_EQ(session.Timer1->interval(), expected);
        EXPECT_EQ(session.TimerTransfer->interval(), expected);
        EXPECT_EQ(channel.cboMs->currentText(), QString::number(expected));
    }
}

TEST(Channel, APeriodStillBeingTypedCountsForWhatTheUserStartsButNotForALoopThatRuns)
{
    SerialDesk desk(channels::rs232);
    SerialTab &channel = desk.channel;
    SerialSession &session = desk.session;
    const std::function<void()> starts[] = {
        [&] { channel.cmdConnect_Click(); },
        [&] { channel.cmdIDN_Click(); },
        [&] { channel.chkLoop->setChecked(true); },
    };
    int period = 1000;
    for (const auto &start : starts) {
        channel.cboMs->setEditText(QString::number(++period));
        start();
        EXPECT_EQ(session.Timer1->interval(), period);
    }
    channel.cboMs->setEditText(u"5"_s);
    session.Timer1_Timer();
    EXPECT_EQ(channel.cboMs->currentText(), u"5");
    session.send(); // a row of a list
    EXPECT_EQ(channel.cboMs->currentText(), u"5");
}

TEST(Channel, ALoopCannotBeSwitchedOnDuringAListRunOrWhileTheChannelIsBorrowed)
{
    SerialDesk desk(channels::rs232);
    desk.module.GetMode = true;
    desk.channel.chkLoop->click();
    EXPECT_FALSE(desk.channel.chkLoop->isChecked());
    desk.module.GetMode = false;
    desk.users.claim(channels::rs232, ChannelUse::Board);
    desk.channel.chkLoop->click();
    EXPECT_FALSE(desk.channel.chkLoop->isChecked());
}

TEST(SerialChannel, ALostPortIsTriedAgainAtItsDeviceUntilItsUserEndsThat)
{
    SerialDesk desk(channels::rs232);
    Reconnect &again = desk.session.reconnect();
    QString note;
    QObject::connect(&again, &Reconnect::noted, &again, [&note](auto &text) { note = text; });
    const auto isTried = [&] {
        const int before = desk.port.opened;
        again.tmrTry_Timer();
        return desk.port.opened > before;
    };
    desk.channel.txtPort->setText(u"7"_s);
    desk.channel.cmdConnect_Click();
    desk.channel.chkLoop->setChecked(true);
    desk.port.unplug(u"gone"_s);
    EXPECT_EQ(note, QString()) << "off at start";
    desk.channel.chkReconnect->setChecked(true);
    desk.port.failOpen = u"busy"_s;
    EXPECT_FALSE(isTried());
    EXPECT_TRUE(note.startsWith(u"RS-232: connection lost at ") &&
                note.endsWith(u"trying again (1): busy"))
        << note.toStdString();
    desk.port.failOpen.clear();
    desk.users.claim(channels::rs232, ChannelUse::Board);
    EXPECT_FALSE(isTried()) << "the board's operation began on another connection";
    desk.users.release(channels::rs232, ChannelUse::Board);
    EXPECT_TRUE(isTried());
    EXPECT_TRUE(note.contains(u"connected again at"));
    EXPECT_EQ(desk.port.device(), u"fake7") << "the number may be another one's by now";
    desk.session.Timer1_Timer();
    EXPECT_EQ(desk.port.written.size(), 1U) << "the loop goes on";

    const std::function<void()> ends[] = {[&] { desk.channel.cmdDisconnect_Click(); },
                                          [&] { desk.channel.chkReconnect->setChecked(false); },
                                          [&] { desk.channel.txtPort->setText(u"8"_s); },
                                          [&] { desk.session.stopTimers(); }};
    for (const auto &end : ends) {
        desk.channel.cmdConnect_Click();
        again.setOn(true);
        desk.port.unplug(u"gone"_s);
        EXPECT_TRUE(note.contains(u"trying again"));
        end();
        EXPECT_EQ(note, QString());
    }
    desk.channel.cmdConnect_Click();
    again.setOn(true);
    desk.channel.cmdDisconnect_Click();
    EXPECT_EQ(note, QString()) << "that was no loss";
}
