// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/channels/ChannelTexts.h"
#include "core/channels/GpibSession.h"
#include "tests/windows/main/ChannelDesk.h"
#include "windows/main/GpibTab.h"

using namespace corvane;

namespace {

struct GpibDesk : ChannelDesk
{
    GpibDesk()
    {
        host.listenTo(session);
        session.initialise();
        channel.cboIEEEAddress->setCurrentText(u"5"_s);
        session.applyEntries();
    }

    FakeGpibBus bus;
    GpibControl control{clock, [this](int) { return std::make_unique<FakeGpibAdapter>(bus); }};
    GpibSession session{control, context};
    GpibTab channel{session};
};

const QString device = u"GPIB0::5"_s;

} // namespace

TEST(GpibChannel, ShowsTheConnectStringThatTheEntriesMake)
{
    GpibDesk desk;
    EXPECT_EQ(desk.channel.cboIEEEPort->count(), 4);
    EXPECT_EQ(desk.control.connectString(), device);
    desk.channel.cboIEEEPort->setCurrentText(u" GPIB2 "_s);
    EXPECT_EQ(desk.control.connectString(), u"GPIB2::5");
    EXPECT_EQ(desk.channel.lblConnectString->text(), u"GPIB2::5");
}

TEST(GpibChannel, EntriesWaitWhileSomebodyElseUsesTheControl)
{
    const std::function<void(GpibDesk &)> next[] = {
        [](GpibDesk &desk) { desk.session.Timer1_Timer(); },
        [](GpibDesk &desk) { desk.channel.cmdSend_Click(); },
        [](GpibDesk &desk) { desk.channel.cmdConnect_Click(); }};
    for (const auto &goOn : next) {
        GpibDesk desk;
        desk.users.claim(channels::ieee488, ChannelUse::Board);
        desk.channel.cboIEEEAddress->setCurrentText(u"9"_s);
        desk.dialogs.expectMessage(u"Error occurred while trying to connect.\r\n"_s +
                                   ChannelUsers::told(channels::ieee488, ChannelUse::Board));
        desk.channel.cmdConnect_Click();
        EXPECT_EQ(desk.control.connectString(), device);
        desk.users.release(channels::ieee488, ChannelUse::Board);
        goOn(desk);
        EXPECT_EQ(desk.control.connectString(), u"GPIB0::9");
    }
    GpibDesk desk;
    desk.channel.cmdSend_Click();
    desk.users.claim(channels::ieee488, ChannelUse::Board);
    desk.session.Timer1_Timer();
    EXPECT_EQ(desk.bus.calls.size(), 1) << "a read would take the borrower's reply";
}

TEST(GpibChannel, ConnectingShowsWhatTheControlHolds)
{
    GpibDesk desk;
    desk.control.setConnectString(u"GPIB1::7"_s);
    desk.control.setTimeout(2500);
    desk.channel.cmdConnect_Click();
    EXPECT_EQ(desk.bus.calls, QStringList{u"open GPIB1::7"_s});
    EXPECT_EQ(desk.channel.cboIEEEPort->currentText(), u"GPIB1");
    EXPECT_EQ(desk.channel.cboIEEEAddress->currentText(), u"7");
    EXPECT_EQ(desk.channel.txtTimeout488->text(), u"2500");
    desk.channel.cmdDisconnect_Click();
    EXPECT_EQ(desk.host.faults, QStringList(channelTexts::nothingToDisconnect));
    EXPECT_TRUE(desk.session.isOpen());

    desk.bus.fault = u"no adapter"_s;
    desk.dialogs.expectMessage(u"Error occurred while trying to connect.\r\nno adapter"_s);
    desk.channel.cmdConnect_Click();
    EXPECT_FALSE(desk.session.isOpen());
}

TEST(GpibChannel, AppliesATimeoutInRangeAndBringsTheControlsBack)
{
    GpibDesk desk;
    QLineEdit &entry = *desk.channel.txtTimeout488;
    const std::pair<const char16_t *, int> entries[] = {
        {u"59999", 59999}, {u"60000", 59999}, {u"0", 59999}, {u"-5", 59999}, {u"abc", 59999},
        {u"", 59999},      {u"1e3", 1000},    {u".5", 1},    {u" 250 ", 250}};
    for (const auto &[text, expected] : entries) {
        entry.setText(QString::fromUtf16(text));
        desk.channel.txtTimeout488_Apply();
        EXPECT_EQ(desk.control.timeout(), expected);
        EXPECT_EQ(entry.text(), QString::number(expected));
    }
    QTest::keyClicks(&entry, u"0"_s);
    EXPECT_TRUE(entry.font().bold()) << "edit pending";
    EXPECT_EQ(desk.control.timeout(), 250);
    QTest::keyClick(&entry, Qt::Key_Return);
    EXPECT_FALSE(entry.font().bold());
    EXPECT_EQ(desk.control.timeout(), 2500);
    QTest::mouseClick(&entry, Qt::LeftButton);
    EXPECT_TRUE(entry.font().bold());
    entry.end(false);
    QTest::keyClicks(&entry, u"1"_s);
    desk.channel.cmdConnect_Click(); // by its mnemonic: the entry keeps the focus
    EXPECT_EQ(desk.control.timeout(), 25001);
    EXPECT_FALSE(entry.font().bold());
    entry.setText(u"300"_s);
    for (const auto &[reason, applied] :
         {std::pair(Qt::PopupFocusReason, 25001), std::pair(Qt::MenuBarFocusReason, 25001),
          std::pair(Qt::TabFocusReason, 300)}) {
        QFocusEvent leaving(QEvent::FocusOut, reason);
        QApplication::sendEvent(&entry, &leaving);
        EXPECT_EQ(desk.control.timeout(), applied);
    }
}

TEST(GpibChannel, ThePointerAndTheStatusLineSayThatAConnectTakesItsTime)
{
    GpibDesk desk;
    desk.bus.onOpen = [&] {
        EXPECT_NE(QGuiApplication::overrideCursor(), nullptr);
        EXPECT_EQ(desk.host.progress.last(), u"IEEE 488: connecting to GPIB0::5 ...");
    };
    const auto isQuiet = [&desk] {
        return QGuiApplication::overrideCursor() == nullptr && desk.host.progress.last().isEmpty();
    };
    desk.channel.cmdConnect_Click();
    EXPECT_TRUE(isQuiet());
    EXPECT_EQ(desk.channel.lblPlace->text(), u"Connected to GPIB0::5 through fake adapter");
    desk.channel.cboIEEEPort->setCurrentText(u"GPIB2"_s);
    EXPECT_EQ(desk.channel.lblPlace->text(), u"Connected to board GPIB0, not to GPIB2::5");
    desk.channel.cboIEEEPort->setCurrentText(u"GPIB0"_s);
    desk.control.forgetAdapter(0);
    EXPECT_EQ(desk.channel.lblPlace->text(), QString());

    desk.bus.fault = u"no adapter"_s;
    desk.dialogs.expectMessage(u"Error occurred while trying to connect.\r\nno adapter"_s,
                               Dialogs::Answer::Ok, [&] { EXPECT_TRUE(isQuiet()); });
    desk.channel.cmdConnect_Click();
    desk.bus.fault.clear();
    desk.bus.onOpen = [&] { desk.control.shutDown(); }; // the window closes
    desk.channel.cmdConnect_Click();
    EXPECT_TRUE(isQuiet());
}

TEST(GpibChannel, ReadsTheReplyOnePeriodAfterTheCommand)
{
    GpibDesk desk;
    desk.bus.replies[device] = {"MAKER,\r\nMODEL\r\n"};
    desk.module.GpibTransfer = desk.module.SendMode = true;
    desk.channel.cmdIDN_Click();
    EXPECT_EQ(desk.bus.calls, QStringList{u"write GPIB0::5 *IDN?\r"_s});
    EXPECT_FALSE(desk.session.isReadDone());
    desk.session.Timer1_Timer();
    EXPECT_TRUE(desk.session.isReadDone());
    EXPECT_EQ(desk.channel.txtIn->text(), u"MAKER,MODEL");
    EXPECT_EQ(desk.host.gridCell, "MAKER,MODEL");
    EXPECT_TRUE(desk.module.ResponseReady);
    desk.session.Timer1_Timer();
    EXPECT_EQ(desk.bus.calls.size(), 2) << "one read for one command";
    desk.bus.end = gpibReply::End::TimedOut;
    for (const char *reply : {"12.", "12.\n"}) {
        desk.bus.replies[device] = {reply};
        desk.channel.cmdSend_Click();
        desk.session.Timer1_Timer();
    }
    EXPECT_EQ(desk.host.notes, (QStringList{u"IEEE 488: the reply is incomplete: its "
                                            "end did not come in time"_s,
                                            QString()}))
        << "said until a reply is whole";
    desk.channel.cboMs->setEditText(u"2000"_s);
    desk.channel.cboMs_Change();
    EXPECT_EQ(desk.session.Timer1->interval(), 2000);
    EXPECT_EQ(desk.session.TimerTransfer->interval(), 500) << "a list keeps its own pace here";
}

TEST(GpibChannel, SaysATimeoutAndHandsItToTheRunOrEndsTheLoop)
{
    GpibDesk desk;
    desk.module.GetMode = true;
    desk.channel.cmdSend_Click();
    desk.session.Timer1_Timer();
    EXPECT_EQ(desk.channel.txtIn->text(), u"Timed Out: 1000 ms.");
    EXPECT_EQ(desk.host.timeOuts, 1);

    desk.module.GetMode = false;
    desk.channel.cmdSend_Click();
    desk.session.Timer1_Timer();
    EXPECT_EQ(desk.channel.txtIn->text(), u"Timed Out: 1000 ms.") << "no loop is on";
    desk.host.timeOuts = 0;
    desk.channel.chkLoop->click();
    EXPECT_TRUE(desk.module.GpibLoopEnabled);
    desk.session.Timer1_Timer(); // sends
    desk.session.Timer1_Timer(); // reads nothing
    EXPECT_EQ(desk.channel.txtIn->text(), u"Loop timed out: 1000 ms.");
    EXPECT_FALSE(desk.channel.chkLoop->isChecked());
    EXPECT_FALSE(desk.module.GpibLoopEnabled);
    EXPECT_EQ(desk.host.timeOuts, 0);
    for (const bool mayBeLate : {true, false}) {
        desk.bus.replies[desk.session.connectString()].emplace_back("1");
        desk.channel.cmdSend_Click();
        desk.session.Timer1_Timer();
        EXPECT_EQ(desk.host.notes.last().contains(u"no reply in time"), mayBeLate);
    }
}

TEST(GpibChannel, AnAdapterThatGoesAwayIsToldOnce)
{
    GpibDesk desk;
    desk.channel.chkLoop->setChecked(true);
    desk.session.Timer1_Timer();
    desk.bus.fault = u"the adapter has gone"_s;
    desk.dialogs.expectMessage(u"Error occurred while trying to read.\r\nthe adapter has gone"_s);
    for (int tick = 0; tick < 4; ++tick)
        desk.session.Timer1_Timer();
    EXPECT_FALSE(desk.channel.chkLoop->isChecked());

    desk.dialogs.expectMessage(u"Error occurred in CmdSend"_s);
    desk.channel.cmdSend_Click();
    const auto calls = desk.bus.calls.size();
    desk.session.Timer1_Timer();
    EXPECT_EQ(desk.bus.calls.size(), calls) << "nothing is read for a command that did not go out";

    EXPECT_FALSE(desk.host.faults.isEmpty());
    desk.bus.fault.clear();
    desk.bus.replies[device] = {"back"};
    desk.channel.cmdSend_Click();
    desk.session.Timer1_Timer();
    EXPECT_TRUE(desk.host.faults.isEmpty()) << "it works again";
}

TEST(GpibChannel, AReadThatWaitsIsNeverInterleavedAndEndsWithTheWindow)
{
    GpibDesk desk;
    desk.channel.cmdSend_Click();
    desk.clock.after(10, [&] {
        desk.session.Timer1_Timer(); // skipped: the control is busy
        desk.dialogs.expectMessage(u"Error occurred in CmdSend"_s);
        desk.channel.cmdSend_Click();
    });
    desk.clock.after(20, [&] {
        desk.waits.close();
        desk.control.shutDown();
    });
    desk.session.Timer1_Timer();
    EXPECT_EQ(desk.bus.calls, (QStringList{u"write GPIB0::5 *IDN?\r"_s, u"read GPIB0::5"_s}));
    EXPECT_EQ(desk.channel.txtIn->text(), QString());
}
