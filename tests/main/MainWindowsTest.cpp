// The main window among the others: who may use a Channel, and closing.
#include "board/BoardTexts.h"
#include "board/CalibrationPanel.h"
#include "board/frmSBC.h"
#include "lists/CommandListArea.h"
#include "main/BoardWindows.h"
#include "main/SetupWindows.h"
#include "main/StatusLine.h"
#include "platform/TextGrid.h"
#include "setup/GpibSearch.h"
#include "tests/main/MainDesk.h"

using namespace corvane;
using namespace Qt::StringLiterals;

TEST(Main, ClosingDisconnectsEveryChannelAndThenUnloadsTheOtherWindows)
{
    MainDesk desk;
    desk.connectAll();
    desk.main.show();
    desk.main.mnuHelp_Click();
    QWidget *guide = desk.main.findChild<QWidget *>(QStringLiteral("GuideWindow"));
    desk.main.mnuSBC->trigger();
    QWidget &board = *desk.main.boardWindows().boardWindow();
    bool othersOpen = false; // while the last Channel is disconnected
    QObject::connect(&desk.tcpClient2, &TcpClient::stateChanged, &desk.main, [&] {
        EXPECT_EQ(desk.tcpClient1.state(), SocketState::Closed) << "in the order of the Channels";
        othersOpen = guide && guide->isVisible() && board.isVisible();
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
    EXPECT_FALSE(desk.main.channel(0)->Timer1->isActive());
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
        QStringLiteral("The RS 485 port is not connected.  Please connect and try again."),
        Dialogs::Answer::Ok, [&] {
            boxed.main.close();
            EXPECT_TRUE(boxedClosed.empty());
        });
    boxed.main.cmdSend_Click(0);
    EXPECT_TRUE(boxedClosed.wait(30000));
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
    const auto expectUse = [&](int channel, ChannelUse use) {
        for (const int each : {channels::rs232, channels::ieee488, channels::tcpIp1})
            EXPECT_EQ(lent.channelUse(each), each == channel ? use : ChannelUse::Free) << each;
    };
    using OtherUse = GpibSearchHost::OtherUse;
    const auto expectSearchMeets = [&](int channel, OtherUse use) {
        EXPECT_EQ(main.setupWindows().otherGpibUse(),
                  channel == channels::ieee488 ? use : OtherUse::None)
            << channel;
    };
    const auto expectRefusal = [&](int channel, const QString &text) {
        for (int each = 0; each < channelCount; ++each)
            EXPECT_EQ(main.channelRefusal(each).contains(text), each == channel) << each;
    };
    const QString byBoard = QStringLiteral("The VXM250E window is using");
    desk.main.commandList->flexgridVDL->setText(1, 1, QStringLiteral("A"));
    for (const int channel : {channels::rs232, channels::ieee488, channels::tcpIp1}) {
        main.channel(channel)->chkLoop->setChecked(true);
        expectUse(channel, ChannelUse::Loop);
        expectSearchMeets(channel, OtherUse::Loop);
        main.channel(channel)->chkLoop->setChecked(false);
        main.cmdLoadFrmChmber_Click(channel);
        expectUse(channel, ChannelUse::List);
        expectSearchMeets(channel, OtherUse::ListRun);
        main.cmdStop_Click(channel);
        expectUse(channel, ChannelUse::Free);

        lent.boardWindow()->CallOptSbcCommMeth(static_cast<qint16>(channel - channels::rs232));
        desk.clock.after(10, [&] {
            expectRefusal(channel, byBoard);
            expectSearchMeets(channel, OtherUse::BoardExchange);
        });
        lent.boardWindow()->calibration->cmdWriteCal_Click();
        EXPECT_EQ(main.channelRefusal(channel), QString());
    }
    main.cmdSend_Click(channels::ieee488);
    expectUse(channels::ieee488, ChannelUse::Reply);
    expectSearchMeets(channels::ieee488, OtherUse::PendingRead);
    main.Timer1_Timer(channels::ieee488);
    main.noteReply(channels::ieee488, QStringLiteral("is cut"));
    desk.clock.after(10, [&] {
        expectUse(channels::ieee488, ChannelUse::Search);
        expectRefusal(channels::ieee488, QStringLiteral("The GPIB address search is running."));
        main.setupWindows().search().cancel();
    });
    main.setupWindows().search().SearchGPIBLoop();
    expectUse(channels::ieee488, ChannelUse::Free);
    EXPECT_EQ(main.gpibChannel().txtIn->text(), QString()) << "no reply from another address";
    EXPECT_FALSE(main.lblFaults->text().contains(u"is cut"));
}

TEST(Main, AChannelThatIsDisconnectedEndsTheBoardsOperationAndSaysSo)
{
    MainDesk desk;
    desk.connectAll();
    desk.main.mnuSBC->trigger();
    frmSBC &board = *desk.main.boardWindows().boardWindow();
    const QString rs232 =
        QStringLiteral("The RS 232 port is not connected.  Please connect and try again.");
    const QString tcp = QStringLiteral("TCP/IP1 is not connected.  Please connect and try again.");
    const std::pair<int, std::function<void()>> ends[] = {
        {0, [&] { desk.main.cmdDisconnect_Click(1); }},
        {0, [&] { desk.rs232.unplug(QStringLiteral("unplugged")); }},
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
    desk.dialogs.expectMessage(QStringLiteral("Error occurred in CmdSend\r\n") +
                               boardTexts::channelClosed);
    desk.clock.after(1000, [&] { desk.main.gpibChannel().cmdDisconnect->click(); });
    board.calibration->cmdScanCals_Click();
    desk.bus.fault = QStringLiteral("no controller");
    desk.dialogs.expectMessage(QStringLiteral("Error occurred in CmdSend\r\nno controller"));
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
                  isOpen
                      ? QString()
                      : QStringLiteral("VXM250E window closed.  Not saved to EEPROM: channel 3"));
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
