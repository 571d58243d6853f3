// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/e2e/EndToEndDesk.h"
#include "windows/board/CalibrationPanel.h"
#include "windows/board/DacAdcPanel.h"
#include "windows/board/frmSBC.h"
#include "windows/main/BoardWindows.h"
#include "windows/report/frmSBCPrint.h"
#include "windows/widgets/TextGrid.h"

using namespace corvane;

namespace {

frmSBCPrint *openReport(EndToEndDesk &desk)
{
    desk.main.boardWindows().openReport();
    for (QWidget *window : QApplication::topLevelWidgets()) {
        if (auto *report = qobject_cast<frmSBCPrint *>(window))
            return report;
    }
    return nullptr;
}

/// The report of a board with Channel 2 calibrated, and what is left of it in the next one.
void saveReport(EndToEndDesk &desk)
{
    const QTemporaryDir folder;
    desk.dialogs.savePath = folder.filePath(u"r.txt"_s);
    QPointer<frmSBCPrint> report = openReport(desk);
    ASSERT_TRUE(report);
    report->txtYourName->setText(u"A. Tester"_s);
    report->cmdAccept_Click();
    QFile file(desk.dialogs.savePath);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArrayList lines = file.readAll().split('\n');
    ASSERT_EQ(lines.size(), 30);
    for (const auto &[line, text] : {std::pair(6, "  Serial Number:  07/0123\r"),
                                     std::pair(11, "  File Name:  25010-1_0123-07\r"),
                                     std::pair(14, "  Technician:  A. Tester\r"),
                                     std::pair(22, "DAC Value\t           2.00000     \r")})
        EXPECT_EQ(lines[line], text) << line;
    EXPECT_TRUE(desk.waitFor([&] { return !report; }));
    report = openReport(desk);
    EXPECT_EQ(report->txtYourName->text(), u"A. Tester");
    report->cmdCAncel_Click();
    EXPECT_TRUE(desk.messages.contains(u"Print Successful"));
    desk.messages.clear();
}

} // namespace

TEST(EndToEndBoard, SetsReadsCalibratesAndReportsAChannel)
{
    EndToEndDesk desk;
    Main &main = desk.main;
    const QString boardPort = QString::number(desk.program.workbench().bench()->boardPort());
    main.cmdDisconnect_Click(1);
    main.cmdDisconnect_Click(3);
    desk.channels.at(1).fillIn({.port = u"3"_s});
    desk.channels.at(2).fillIn({.address = u"9"_s});
    desk.channels.at(3).fillIn({.port = boardPort});
    for (const int index : {1, 2, 3})
        ASSERT_TRUE(desk.open(index));
    main.mnuSBC->trigger();
    frmSBC &board = *main.boardWindows().boardWindow();
    for (const int method : {0, 1, 2}) {
        board.CallOptSbcCommMeth(static_cast<qint16>(method));
        const double volts = 1.0 + method * 0.5; // another one each time
        board.dacAdc->txtSendDac[2]->setText(QString::number(volts));
        board.dacAdc->cmdSendDac_Click(2);
        board.dacAdc->cmdReadAdc_Click(2);
        EXPECT_NEAR(board.dacAdc->lblReadAdc[2]->text().toDouble(), volts, 0.15) << method;
    }
    board.calibration->txtChannel->setText(u"2"_s);
    board.calibration->cmdCal_Click();
    EXPECT_NEAR(board.calibration->MSFlexGrid1->cells().text(7, 3).toDouble(), 2.0, 0.002);
    EXPECT_EQ(main.parts().channels.gpib().control().connectString(), u"GPIB0::9")
        << "addressed to the board again";
    EXPECT_EQ(desk.messages, QString());
    saveReport(desk);
    const QPointer<frmSBC> closing(&board);
    main.mnuSBC->trigger();
    main.mnuSBC->trigger(); // while it still closes
    EXPECT_TRUE(desk.waitFor([&] {
        const frmSBC *again = main.boardWindows().boardWindow();
        return !closing && again && again->isVisible();
    }));
    EXPECT_TRUE(main.mnuSBC->isChecked());
    main.mnuSBC->trigger();
    EXPECT_TRUE(desk.waitFor([&] { return !main.boardWindows().boardWindow(); }));
    EXPECT_FALSE(main.mnuSBC->isChecked());
}
