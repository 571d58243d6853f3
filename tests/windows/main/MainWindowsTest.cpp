// SPDX-License-Identifier: GPL-3.0-or-later
// The main window among the others: who may use a Channel, and closing.
#include "core/board/BoardTexts.h"
#include "core/lists/ListTexts.h"
#include "core/setup/GpibSearch.h"
#include "devices/PlatformError.h"
#include "tests/support/Soon.h"
#include "tests/windows/main/MainDesk.h"
#include "windows/board/CalibrationPanel.h"
#include "windows/board/frmSBC.h"
#include "windows/lists/CommandListArea.h"
#include "windows/main/BoardWindows.h"
#include "windows/main/GpibTab.h"
#include "windows/main/RecentLists.h"
#include "windows/main/SetupWindows.h"
#include "windows/main/StatusLine.h"
#include "windows/trend/TrendModule.h"
#include "windows/widgets/TextGrid.h"

using namespace corvane;

TEST(Main, ClosingDisconnectsEveryChannelAndThenUnloadsTheOtherWindows)
{
    MainDesk desk;
    desk.connectAll();
    desk.main.show();
    desk.main.mnuHelp_Click();
    auto *guide = desk.main.findChild<QWidget *>(u"GuideWindow"_s);
    desk.main.mnuSBC->trigger();
    QWidget &board = *desk.main.boardWindows().boardWindow();
    bool othersOpen = false; // while the last Channel is disconnected
    QObject::connect(&desk.tcpClient2, &TcpClient::stateChanged, &desk.main, [&] {
        EXPECT_EQ(desk.tcpClient1.state(), SocketState::Closed) << "in the order of the Channels";
        othersOpen = guide != nullptr && guide->isVisible() && board.isVisible();
    });
    QSignalSpy closed(&desk.main, &Main::closed);
    desk.main.close();
    EXPECT_TRUE(othersOpen);
    EXPECT_EQ(closed.size(), 1);
    EXPECT_EQ(desk.rs485.closed, 1);
    EXPECT_EQ(desk.rs232.closed, 1);
    EXPECT_EQ(desk.tcpClient1.state(), SocketState::Closed);
    EXPECT_EQ(desk.tcpClient2.state(), SocketState::Closed);
    EXPECT_FALSE(guide->isVisible());
    EXPECT_FALSE(desk.channels.at(0).Timer1->isActive());
}

TEST(Main, AClosingInAWaitOrUnderAMessageBoxIsHeldUntilItHasUnwound)
{
    MainDesk desk;
    desk.connectAll();
    desk.main.show();
    QSignalSpy closed(&desk.main, &Main::closed);
    desk.main.cmdSend_Click(2);
    desk.clock.after(10, [&] {
        desk.main.close();
        EXPECT_TRUE(closed.empty()) << "a frame below still runs";
    });
    desk.main.Timer1_Timer(2); // reads
    ASSERT_TRUE(closed.wait(30000));
    EXPECT_EQ(desk.rs485.closed, 1);

    MainDesk boxed;
    boxed.main.show();
    QSignalSpy boxedClosed(&boxed.main, &Main::closed);
    boxed.dialogs.expectMessage(
        u"The RS 485 port is not connected.  Please connect and try again."_s, Dialogs::Answer::Ok,
        [&] {
            boxed.main.close();
            EXPECT_TRUE(boxedClosed.empty());
        });
    boxed.main.cmdSend_Click(0);
    EXPECT_TRUE(boxedClosed.wait(30000));
}

TEST(Main, ClicksWaitWhileTheBusIsReadAndAreHandedOverAfterwards)
{
    MainDesk desk;
    desk.connectAll();
    desk.main.showChannel(channels::ieee488);
    desk.main.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&desk.main));
    QCheckBox *box = desk.main.channel(channels::ieee488)->chkLoop;
    const auto click = [&] {
        QTest::mouseClick(desk.main.windowHandle(), Qt::LeftButton, {},
                          box->mapTo(&desk.main, QPoint(8, box->height() / 2)));
    };
    desk.main.cmdSend_Click(channels::ieee488);
    desk.clock.after(10, click);
    desk.bus.afterRead = [&] { EXPECT_FALSE(box->isChecked()); };
    desk.main.Timer1_Timer(channels::ieee488);
    EXPECT_TRUE(soon([box] { return box->isChecked(); }));
}

TEST(Main, AClosingDuringASearchEndsItAtOnceAndIsHeldUntilItHasReturned)
{
    for (const bool inAWait : {true, false}) {
        MainDesk desk;
        desk.main.show();
        QSignalSpy closed(&desk.main, &Main::closed);
        const auto close = [&] {
            desk.main.close();
            EXPECT_TRUE(closed.empty()) << inAWait;
        };
        if (inAWait)
            desk.clock.after(10, close);
        else
            desk.bus.afterRead = close;
        GpibSearch &search = desk.main.setupWindows().search();
        const quint32 start = desk.clock.MS_TIMER();
        search.SearchGPIBLoop();
        EXPECT_EQ(desk.clock.MS_TIMER() - start, inAWait ? 10U : 1075U);
        EXPECT_EQ(desk.bus.calls.filter(u"clear "_s).size(), 1);
        EXPECT_TRUE(closed.wait(2000));
    }
    MainDesk asking;
    asking.main.show();
    QSignalSpy closed(&asking.main, &Main::closed);
    asking.bus.whileAsked = [&] {
        asking.main.close();
        EXPECT_TRUE(closed.empty()) << "an adapter is asked for its version";
    };
    asking.main.setupWindows().showGpibAbout();
    EXPECT_TRUE(closed.wait(2000));
}

TEST(Main, WhoeverUsesAChannelKeepsTheOthersFromThatChannelOnly)
{
    MainDesk desk;
    desk.connectAll();
    Main &main = desk.main;
    main.mnuSBC->trigger();
    BoardWindows &lent = main.boardWindows();
    const ChannelUsers &users = desk.channels.users();
    const auto expectUse = [&](int channel, ChannelUse use) {
        for (const int each : {channels::rs232, channels::ieee488, channels::tcpIp1})
            EXPECT_EQ(users.refusal(each, ChannelUse::Board),
                      each == channel ? ChannelUsers::told(each, use) : QString());
    };
    const auto expectFree = [&] { expectUse(-1, ChannelUse::Send); };
    const auto expectRefusal = [&](int channel, ChannelUse use) {
        for (int each = 0; each < channelCount; ++each)
            EXPECT_EQ(users.refusal(each, ChannelUse::Send),
                      each == channel ? ChannelUsers::told(each, use) : QString());
    };
    desk.main.commandList->flexgridVDL->cells().setText(1, 1, u"A"_s);
    for (const int channel : {channels::rs232, channels::ieee488, channels::tcpIp1}) {
        main.channel(channel)->chkLoop->setChecked(true);
        expectUse(channel, ChannelUse::Loop);
        main.channel(channel)->chkLoop->setChecked(false);
        main.cmdLoadFrmChmber_Click(channel);
        expectUse(channel, ChannelUse::List);
        main.cmdStop_Click(channel);
        expectFree();

        lent.boardWindow()->CallOptSbcCommMeth(static_cast<qint16>(channel - channels::rs232));
        desk.clock.after(10, [&] { expectRefusal(channel, ChannelUse::Board); });
        lent.boardWindow()->calibration->cmdWriteCal_Click();
        expectRefusal(-1, ChannelUse::Send);
    }
    main.cmdSend_Click(channels::ieee488);
    expectUse(channels::ieee488, ChannelUse::Reply);
    main.Timer1_Timer(channels::ieee488);
    desk.clock.after(10, [&] {
        expectUse(channels::ieee488, ChannelUse::Search);
        expectRefusal(channels::ieee488, ChannelUse::Search);
        main.setupWindows().search().cancel();
    });
    main.setupWindows().search().SearchGPIBLoop();
    expectFree();
    EXPECT_EQ(main.gpibTab().txtIn->text(), QString()) << "no reply from another address";
}

TEST(Main, AChannelThatIsDisconnectedEndsTheBoardsOperationAndSaysSo)
{
    MainDesk desk;
    desk.connectAll();
    desk.main.mnuSBC->trigger();
    frmSBC &board = *desk.main.boardWindows().boardWindow();
    const QString rs232 = u"The RS 232 port is not connected.  Please connect and try again."_s;
    const QString tcp = u"TCP/IP1 is not connected.  Please connect and try again."_s;
    const std::pair<int, std::function<void()>> ends[] = {
        {0, [&] { desk.main.cmdDisconnect_Click(1); }},
        {0, [&] { desk.rs232.unplug(u"unplugged"_s); }},
        {2, [&] { desk.main.cmdDisconnect_Click(3); }},
        {2, [&] { desk.tcpClient1.setState(SocketState::PeerClosing); }}};
    for (const auto &[method, end] : ends) {
        desk.connectAll();
        board.CallOptSbcCommMeth(static_cast<qint16>(method));
        for (int i = 0; i < 2; ++i) // while it runs, and at the start of the next one
            desk.dialogs.expectMessage(method == 0 ? rs232 : tcp);
        desk.clock.after(1000, end);
        const quint32 start = desk.clock.MS_TIMER();
        board.calibration->cmdScanCals_Click();
        EXPECT_EQ(desk.clock.MS_TIMER() - start, 1000U);
        EXPECT_TRUE(board.calibration->lblProgress->text().startsWith(u"Stopped at channel 0"));
        board.calibration->cmdWriteCal_Click();
    }
    board.CallOptSbcCommMeth(1);
    desk.dialogs.expectMessage(u"Error occurred in CmdSend\r\n"_s + boardTexts::channelClosed);
    desk.clock.after(1000, [&] { desk.main.gpibTab().cmdDisconnect->click(); });
    board.calibration->cmdScanCals_Click();
    desk.bus.fault = u"no controller"_s;
    desk.dialogs.expectMessage(u"Error occurred in CmdSend\r\nno controller"_s);
    board.calibration->cmdScanCals_Click();
}

TEST(Main, TheBoardWindowChosenAgainWhileItClosesOpensAfterwardsAndItsStateStays)
{
    for (const int choices : {0, 1, 2, 3}) {
        MainDesk desk;
        BoardWindows &windows = desk.main.boardWindows();
        windows.unsavedCalibrations().setChanged(3);
        desk.main.mnuSBC->trigger();
        EXPECT_EQ(desk.main.lblFaults->text(), QString());
        const QPointer<frmSBC> first(windows.boardWindow());
        desk.main.mnuSBC->trigger();
        for (int i = 0; i < choices; ++i)
            desk.main.mnuSBC->trigger();
        ASSERT_TRUE(QTest::qWaitFor([&] { return first.isNull(); }, 2000));
        const bool isOpen = choices % 2 == 1;
        EXPECT_EQ(windows.boardWindow() != nullptr, isOpen) << choices;
        EXPECT_EQ(desk.main.mnuSBC->isChecked(), isOpen) << choices;
        EXPECT_EQ(desk.main.lblFaults->text(),
                  isOpen ? QString() : u"VXM250E window closed.  Not saved to EEPROM: channel 3"_s);
        testing::internal::CaptureStderr(); // of a program without debug messages
        windows.shutDown();
        EXPECT_NE(testing::internal::GetCapturedStderr().find("corvane: Not saved to EEPROM: chan"),
                  std::string::npos);
    }
    MainDesk ending;
    for (int i = 0; i < 3; ++i) // opened, closed and chosen again
        ending.main.mnuSBC->trigger();
    const QPointer<frmSBC> last(ending.main.boardWindows().boardWindow());
    ending.main.boardWindows().shutDown();
    ASSERT_TRUE(QTest::qWaitFor([&] { return last.isNull(); }, 2000));
    EXPECT_EQ(ending.main.boardWindows().boardWindow(), nullptr) << "the program ends";
}

TEST(Main, ATrendWindowThatCannotBeLoadedIsSaidAndNothingElseHappens)
{
    MainDesk desk; // whose folder has no module
    QString reason;
    try {
        programModule::load(trendFunction, desk.folder.path(), u"The Trend window"_s);
    } catch (const PlatformError &error) {
        reason = error.description();
    }
    EXPECT_TRUE(reason.startsWith(u"The Trend window cannot be loaded: ")) << reason.toStdString();
    for (int time = 0; time < 2; ++time) {
        desk.dialogs.expectMessage(
            reason + u"\r\nIts curves are drawn by QCustomPlot for Qt 6: install "
                     "libqcustomplot2.1-qt6. A program that was built without it lacks the window: "
                     "install libqcustomplot-dev and build again."_s);
        desk.main.mnuTrend->trigger();
    }
}

TEST(Main, AListThatIsDroppedAnywhereIsLoadedAndComesBackFromTheMenu)
{
    MainDesk desk;
    desk.main.show();
    const auto fileOf = [&desk](const QString &name) {
        QFile file(desk.folder.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("! a comment\r\n");
        return file.fileName();
    };
    const auto drop = [](QWidget &on, const QList<QUrl> &urls, const QString &text = {}) {
        QMimeData data;
        data.setUrls(urls);
        if (!text.isEmpty())
            data.setText(text);
        QDragEnterEvent enter({}, Qt::MoveAction, &data, Qt::LeftButton, {});
        QCoreApplication::sendEvent(&on, &enter);
        QDropEvent event({}, Qt::MoveAction, &data, Qt::LeftButton, {});
        QCoreApplication::sendEvent(&on, &event);
        QCoreApplication::processEvents();
    };
    const QString first = fileOf(u"first & only.kms"_s);
    drop(*desk.main.commandList->txtVDL->viewport(), {QUrl::fromLocalFile(first)});
    EXPECT_EQ(desk.list.ListFilePath, first);
    EXPECT_FALSE(desk.main.commandList->txtVDL->toPlainText().contains(u"file:"));
    const QString second = fileOf(u"second.tst"_s);
    EXPECT_TRUE(desk.main.channel(0)->cmdLoadFrmChmber->isEnabled());
    drop(desk.main, {QUrl::fromLocalFile(second)});
    EXPECT_FALSE(desk.main.channel(0)->cmdLoadFrmChmber->isEnabled());
    QLineEdit &entry = *desk.main.channel(0)->cboOut->lineEdit();
    drop(entry, {QUrl::fromLocalFile(first), QUrl::fromLocalFile(first)});
    EXPECT_FALSE(entry.text().contains(u"file:"));
    drop(entry, {}, u"*IDN?"_s);
    EXPECT_TRUE(entry.text().contains(u"*IDN?"));
    EXPECT_EQ(desk.list.ListFilePath, second);

    QMenu next;
    const RecentLists ofNextSession(desk.list, next, &desk.settings, nullptr);
    ASSERT_EQ(next.actions().size(), 2);
    ASSERT_EQ(desk.main.mnuRecent->actions().size(), 2);
    EXPECT_TRUE(desk.main.mnuRecent->actions().at(1)->text().startsWith(u"&2  first && only.kms"));
    desk.main.mnuRecent->actions().at(1)->trigger();
    EXPECT_EQ(desk.list.ListFilePath, first);
    QFile::remove(second);
    desk.dialogs.expectMessage(listTexts::openFailed + listTexts::openProcedure);
    const QString before = desk.list.text();
    desk.main.mnuRecent->actions().at(1)->trigger();
    EXPECT_EQ(desk.list.text(), before);
    EXPECT_EQ(desk.list.ListFilePath, first);
}
