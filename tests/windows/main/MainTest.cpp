// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/main/Main.h"

#include "core/channels/TrafficLog.h"
#include "tests/support/Soon.h"
#include "tests/windows/main/MainDesk.h"
#include "windows/lists/CommandListArea.h"
#include "windows/main/ConnectHint.h"
#include "windows/main/GpibTab.h"
#include "windows/main/SerialTab.h"
#include "windows/main/StatusLine.h"
#include "windows/main/TcpTab.h"
#include "windows/widgets/TextGrid.h"

using namespace corvane;

TEST(Main, StartsWithItsDefaultsAndNothingOpen)
{
    MainDesk desk;
    EXPECT_EQ(desk.rs485.settings(), u"9600,N,8,1");
    EXPECT_EQ(desk.rs232.settings(), u"19200,N,8,1");
    EXPECT_EQ(desk.rs485.opened + desk.rs232.opened + desk.tcpClient1.connects, 0);
    EXPECT_TRUE(desk.bus.calls.empty());
    EXPECT_TRUE(desk.main.mnuCmdList->isChecked());
    EXPECT_TRUE(desk.main.shpLog->isHidden());
    for (int index = 0; index < channelCount; ++index) {
        const ChannelTab &channel = *desk.main.channel(index);
        EXPECT_EQ(channel.cboOut->currentText(), u"*IDN?");
        EXPECT_EQ(channel.cboMs->currentText(), u"1000");
        EXPECT_EQ(channel.session().Timer1->interval(), 1000);
        EXPECT_TRUE(channel.session().Timer1->isActive());
        EXPECT_FALSE(channel.session().TimerTransfer->isActive());
        EXPECT_TRUE(channel.shpComm->isHidden());
    }
    for (const int index : {3, 4})
        EXPECT_EQ(desk.main.tcpTab(index).txtPort->text(), u"5000");
    EXPECT_EQ(desk.main.serialTab(1).txtPort->text(), u"1");
    EXPECT_EQ(desk.main.gpibTab().lblConnectString->text(), u"GPIB0::0");
}

TEST(Main, AShownWindowPutsTheComputersOwnAddressIntoTheHostEntriesThatAreUntouched)
{
    MainDesk desk;
    QCoreApplication::processEvents();
    EXPECT_FALSE(desk.addressWanted) << "never without a window";
    desk.main.show();
    ASSERT_TRUE(soon([&] { return static_cast<bool>(desk.addressWanted); }));
    QLineEdit &typed = *desk.main.tcpTab(4).txtAddress;
    QTest::keyClicks(&typed, u"x"_s);
    desk.dialogs.expectMessage(
        {.text = u"Authoritative answer host not found."_s, .icon = Dialogs::Icon::Exclamation});
    desk.addressWanted({.failure = 11001});
    desk.addressWanted({.text = u"192.168.1.20"_s});
    EXPECT_EQ(desk.main.tcpTab(3).txtAddress->text(), u"192.168.1.20");
    EXPECT_EQ(typed.text(), u"x");
    desk.addressWanted({.failure = 11001}); // nobody asks any more
}

TEST(Main, IgnoresAnIndexOutsideTheChannels)
{
    MainDesk desk;
    for (const int index : {-1, channelCount, 2147483647}) {
        desk.main.cmdConnect_Click(index);
        desk.main.cmdDisconnect_Click(index);
        desk.main.cmdSend_Click_Public(index);
        desk.main.cmdIDN_Click(index);
        desk.main.cmdSystErr_Click(index);
        desk.main.Timer1_Timer(index);
        desk.main.TimerTransfer_Timer(index);
        desk.main.chkLog_Click(index);
        desk.main.cmdLoadFrmChmber_Click(index);
        desk.main.cmdStop_Click(index);
    }
    EXPECT_EQ(desk.rs485.opened + desk.tcpClient1.connects, 0);
}

TEST(Main, ChannelsRunSideBySideAndNoCommandBringsALineEndOfItsOwn)
{
    MainDesk desk;
    desk.connectAll();
    for (int index = 0; index < channelCount; ++index) {
        desk.channels.at(index).setCommand(u"A\r\nC%1\n"_s.arg(index));
        desk.main.channel(index)->chkLoop->setChecked(true);
        desk.main.Timer1_Timer(index);
    }
    EXPECT_EQ(desk.rs485.written.back(), ">01 A C0\r");
    EXPECT_EQ(desk.rs232.written.back(), "A C1\r");
    EXPECT_EQ(desk.bus.calls.back(), u"write GPIB0::0 A C2\r");
    EXPECT_EQ(desk.tcpClient1.sent.back(), "A C3\r");
    EXPECT_EQ(desk.tcpClient2.sent.back(), "A C4\r");
    desk.rs485.feed("<01:zero\r\n");
    desk.rs232.feed("<01:one");
    EXPECT_EQ(desk.main.channel(0)->txtIn->text(), u"zero");
    EXPECT_EQ(desk.main.channel(1)->txtIn->text(), u"one") << "the RS-485 address counts here too";
}

TEST(Main, EveryPieceOfAReplyLetsTheRowsIntervalBeginAnewAndAClosedChannelIsSaid)
{
    MainDesk desk;
    desk.connectAll();
    QFile list(desk.folder.filePath(u"a.kms"_s));
    ASSERT_TRUE(list.open(QIODevice::WriteOnly) && list.write("= SP 1\n= T 2\n") > 0);
    list.close();
    ASSERT_EQ(desk.list.OpenFile(list.fileName()), ListContents::End::Complete);
    const QTimer &timer = *desk.channels.at(1).TimerTransfer;
    desk.main.channel(1)->cboMs->setEditText(u"3600000"_s);
    desk.main.channel(1)->cboMs_Change();
    desk.main.showChannel(1);
    desk.main.commandList->cmdSendList->click();
    const auto isLater = [&] { return timer.remainingTime() < 3'599'900; };
    ASSERT_TRUE(soon(isLater));
    desk.rs232.feed("unasked");
    EXPECT_TRUE(isLater()) << "what nobody asked for does not hold up the first row";
    desk.main.TimerTransfer_Timer(1);
    EXPECT_FALSE(timer.isActive());
    desk.rs232.feed("AL");
    ASSERT_TRUE(soon([&] { return timer.remainingTime() < 3'599'000; }));
    desk.rs232.feed("PHA");
    EXPECT_GT(timer.remainingTime(), 3'599'000);
    EXPECT_EQ(desk.list.text(1, 3), u"ALPHA");

    desk.main.TimerTransfer_Timer(1);
    Q_EMIT desk.channels.at(1).noteChanged(u"the reply is cut"_s);
    desk.rs232.unplug(u"the device went away"_s);
    const QString said = desk.main.lblFaults->text();
    for (const char *part : {"row 2 of 2", "press Send", "; the device went away", "; the reply"})
        EXPECT_TRUE(said.contains(QLatin1String(part))) << part;
    EXPECT_TRUE(desk.module.SendMode);
    desk.main.cmdConnect_Click(1);
    desk.main.cmdSend_Click(1);
    EXPECT_EQ(desk.rs232.written.back(), "= T 2\r") << "the row again";
    desk.rs232.feed("BETA");
    EXPECT_EQ(desk.list.text(2, 3), u"BETA");
    Q_EMIT desk.channels.at(1).noteChanged({});
    EXPECT_EQ(desk.main.lblFaults->text(), QString());
    EXPECT_TRUE(timer.isActive());
    EXPECT_EQ(desk.main.commandList->lblProgress->text(), u"Row 2 of 2");
    desk.main.showChannel(0);
    desk.main.commandList->cmdStopSend->click(); // whichever tab is showing
    EXPECT_FALSE(timer.isActive() || desk.module.transferRunning());
    desk.main.commandList->cmdGetList->click();
    EXPECT_TRUE(desk.module.GetMode && desk.channels.at(0).TimerTransfer->isActive());
    EXPECT_EQ(desk.main.commandList->lblProgress->text(), QString());
}

TEST(Main, LogsWhileAnyBoxIsCheckedAndSaysAFailureOnce)
{
    MainDesk desk;
    desk.connectAll();
    for (const int index : {3, 4})
        desk.main.channel(index)->chkLog->setChecked(true);
    const QString blocked = QDir::toNativeSeparators(desk.folder.filePath(u"Log.txt"_s));
    const auto saysWhere = [&] { return desk.main.lblFaults->toolTip().contains(blocked); };
    EXPECT_TRUE(desk.main.shpLog->toolTip().endsWith(blocked));
    EXPECT_FALSE(desk.main.shpLog->isHidden());
    desk.main.channel(3)->chkLog->setChecked(false);
    EXPECT_FALSE(desk.main.shpLog->isHidden());
    EXPECT_TRUE(saysWhere());
    desk.main.channel(4)->chkLog->setChecked(false);
    EXPECT_TRUE(desk.main.shpLog->isHidden());
    EXPECT_FALSE(saysWhere());

    QDir().mkdir(blocked);
    desk.main.channel(3)->chkLog->setChecked(true);
    desk.tcpClient1.feed("A");
    desk.dialogs.expectMessage(u"The log cannot be written; logging has been switched off.\r\n"
                               "%1: it is no regular file"_s.arg(blocked));
    auto *log = desk.main.findChild<TrafficLog *>();
    log->TimerLog_Timer();
    QCoreApplication::processEvents();
    EXPECT_FALSE(desk.main.channel(3)->chkLog->isChecked());
    EXPECT_FALSE(log->TimerLog->isActive() || saysWhere());
}

TEST(Main, TheHintOfAnEmptyResponseIsWholeInASmallWindow)
{
    MainDesk desk;
    desk.main.tabChannels->setCurrentIndex(channels::ieee488);
    desk.main.show();
    desk.main.resize(954, 500);
    const ChannelTab &tab = *desk.main.channel(channels::ieee488);
    EXPECT_TRUE(soon([&tab] {
        return tab.hint != nullptr &&
               tab.hint->height() >= tab.hint->layout()->heightForWidth(tab.hint->width());
    }));
}

TEST(Main, TheTabKeyGoesThroughAChannelAsItIsRead)
{
    MainDesk desk;
    for (int index = 0; index < channelCount; ++index) {
        const ChannelTab &channel = *desk.main.channel(index);
        QList<QWidget *> order;
        for (QWidget *next = channel.txtIn->nextInFocusChain(); next != channel.txtIn;
             next = next->nextInFocusChain())
            order.append(next);
        const QString entry = index == 2 ? u"txtTimeout488"_s : u"txtPort_%1"_s.arg(index);
        QWidget *const expected[] = {channel.findChild<QLineEdit *>(entry), channel.cmdConnect,
                                     channel.cmdDisconnect, channel.cboOut, channel.cmdStop};
        for (size_t place = 1; place < std::size(expected); ++place)
            EXPECT_LT(order.indexOf(expected[place - 1]), order.indexOf(expected[place])) << index;
    }
}
