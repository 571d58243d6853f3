// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/trend/TrendWindow.h"

#include "tests/core/trend/ScriptedEvents.h"
#include "tests/support/ScriptedDialogs.h"
#include "tests/support/Soon.h"
#include "windows/trend/TrendPlot.h"
#include "windows/trend/TrendTable.h"

using namespace corvane;

namespace {

using Outcome = Dialogs::FileChoice::Outcome;

struct TrendWindowTest : testing::Test
{
    TrendWindowTest()
    {
        window.show();
        window.plot->resize(800, 400);
    }
    void ask(int channel, QByteArrayView command, QByteArrayView reply)
    {
        events.sent(channel, command);
        events.received(channel, reply);
    }
    /// 20 s of 100 numbers from 0 to 99 on TCP/IP-1, and the same times ten on RS-232.
    void ramp()
    {
        for (int step = 0; step < 100; ++step) {
            const QByteArray number = QByteArray::number(step);
            ask(channels::tcpIp1, "? PV x\r", number + "C\r\n");
            ask(channels::rs232, "READ?\r", number + "0C\r\n");
            events.pass(160'000);
        }
        refresh();
    }
    void refresh() { window.tmrRefresh_Timer(); }
    [[nodiscard]] QString cell(int row, int column) const
    {
        return window.grdCurves->item(row, column)->text();
    }
    QByteArray save(const QString &name)
    {
        const QString path = folder.filePath(name);
        dialogs.answerSave({Outcome::Chosen, path});
        window.cmdSave_Click();
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::keyClick(window.plot, key, modifiers);
    }

    QTemporaryDir folder;
    ScriptedEvents events;
    ScriptedDialogs dialogs;
    TrendWindow window{{events, dialogs, folder.path()}};
};

} // namespace

TEST_F(TrendWindowTest, ShowsARowACurveAndFollowsTheNewestWithTheValuesFitting)
{
    EXPECT_TRUE(window.lblNote->isVisible()) << "says what to do while there is nothing";
    ramp();
    EXPECT_FALSE(window.lblNote->isVisible());
    ASSERT_EQ(window.grdCurves->rowCount(), 2);
    const QStringList expected{u""_s,   u"TCP/IP-1"_s, u"? PV x"_s, u"99"_s, u"0"_s,
                               u"99"_s, u"49.5"_s,     u"100"_s,    u"C"_s};
    for (int column = 0; column < expected.size(); ++column)
        EXPECT_EQ(cell(0, column), expected[column]) << column;
    const TrendPlot::Sight sight = window.plot->sight();
    EXPECT_NEAR(sight.begin, 0.02, 0.01);
    EXPECT_GE(sight.end, 19.8);
    EXPECT_LT(sight.lowest, 0);
    EXPECT_GT(sight.highest, 990);
    window.grdCurves->item(1, TrendTable::Shown)->setCheckState(Qt::Unchecked);
    EXPECT_FALSE(window.plot->isShown(1));
    EXPECT_LT(window.plot->sight().highest, 200) << "of those shown";
    ask(channels::tcpIp1, "? PV x\r", "500C\r\n");
    refresh();
    EXPECT_GT(window.plot->sight().highest, 500);
    EXPECT_GT(window.plot->sight().end, sight.end);
    EXPECT_EQ(cell(0, TrendTable::Last), u"500");
    for (const QWidget *control : window.findChildren<QWidget *>()) {
        const bool isControl = (control->focusPolicy() & Qt::TabFocus) != 0 &&
                               control->isVisible() && !control->objectName().startsWith(u"qt_");
        EXPECT_FALSE(isControl && control->accessibleName().isEmpty())
            << control->metaObject()->className() << control->objectName().toStdString();
    }
}

TEST_F(TrendWindowTest, KeysAndMouseZoomAndMoveAndFollowBringsItBack)
{
    ramp();
    const TrendPlot::Sight all = window.plot->sight();
    press(Qt::Key_Plus);
    EXPECT_TRUE(window.plot->isFollowing()) << "zooming stays with the newest";
    EXPECT_GT(window.plot->sight().begin, all.begin + 1);
    EXPECT_NEAR(window.plot->sight().end, all.end, 0.2);
    press(Qt::Key_Left);
    EXPECT_FALSE(window.chkFollow->isChecked());
    const TrendPlot::Sight left = window.plot->sight();
    ask(channels::tcpIp1, "? PV x\r", "7\r\n");
    refresh();
    EXPECT_EQ(window.plot->sight().begin, left.begin) << "stays where it was moved to";
    press(Qt::Key_Up, Qt::ControlModifier);
    EXPECT_FALSE(window.chkFit->isChecked());
    EXPECT_GT(window.plot->sight().lowest, left.lowest);
    press(Qt::Key_Minus, Qt::ControlModifier);
    EXPECT_LT(window.plot->sight().lowest, left.lowest + 1);
    window.chkFollow->click();
    EXPECT_TRUE(window.plot->isFollowing());
    EXPECT_GT(window.plot->sight().end, left.end);
    press(Qt::Key_Home);
    EXPECT_TRUE(window.chkFit->isChecked());
    EXPECT_NEAR(window.plot->sight().begin, 0.02, 0.01);

    auto *picture = window.plot->findChild<QWidget *>();
    const QPoint middle = picture->rect().center();
    QTest::mousePress(picture, Qt::LeftButton, {}, middle);
    QTest::mouseMove(picture, middle + QPoint(50, 0));
    QTest::mouseMove(picture, middle + QPoint(100, 0));
    QTest::mouseRelease(picture, Qt::LeftButton, {}, middle + QPoint(100, 0));
    EXPECT_LT(window.plot->sight().begin, 0) << "dragged to the right";
    QTest::mousePress(picture, Qt::RightButton, {}, middle);
    QTest::mouseMove(picture, middle + QPoint(40, 30));
    QTest::mouseMove(picture, middle + QPoint(80, 60));
    QTest::mouseRelease(picture, Qt::RightButton, {}, middle + QPoint(80, 60));
    EXPECT_LT(window.plot->sight().end - window.plot->sight().begin, 5) << "the frame";
    EXPECT_FALSE(window.plot->isFitting());
    window.cboTime->setCurrentIndex(1);
    const TrendPlot::Sight before = window.plot->sight();
    window.cboTime_Click();
    EXPECT_NEAR(window.plot->sight().begin, before.begin, 1e-4) << "other labels, the same times";
}

TEST_F(TrendWindowTest, ZoomsAsFarAsTimesAndNumbersGo)
{
    ramp();
    press(Qt::Key_Home);
    for (const Qt::Key key : {Qt::Key_Plus, Qt::Key_Minus}) {
        for (int time = 0; time < 400; ++time) {
            press(key);
            press(key, Qt::ControlModifier);
        }
        const TrendPlot::Sight sight = window.plot->sight();
        EXPECT_GT(sight.end - sight.begin, 1e-6);
        EXPECT_LT(sight.end - sight.begin, 1e10);
        EXPECT_GT(sight.highest - sight.lowest, 1e-11);
        EXPECT_LT(sight.highest - sight.lowest, 1e201);
    }
    press(Qt::Key_Home);
    EXPECT_NEAR(window.plot->sight().begin, 0.02, 0.01);
}

TEST_F(TrendWindowTest, DrawsTheStepOfADenseLineWholeAlsoOfOneThatHasDashes)
{
    ask(channels::tcpIp1, "? PV x\r", "50\r\n");
    for (int step = 0; step < 8'000; ++step) {
        const int value = (step < 4'000 ? 0 : 90) + (step % 2) * 10;
        ask(channels::rs232, "READ?\r", QByteArray::number(value) + "\r\n");
    }
    refresh();
    const QColor ink = window.plot->line(1).color();
    ASSERT_NE(window.plot->line(1).style(), Qt::SolidLine);
    const QImage picture = window.plot->grab().toImage();
    for (int y = picture.height() / 4; y < picture.height() / 2; ++y) {
        bool isInked = false;
        for (int x = 0; x < picture.width(); ++x) {
            const QColor pixel = picture.pixelColor(x, y);
            isInked = isInked || pixel.red() - pixel.blue() > (ink.red() - ink.blue()) / 3;
        }
        ASSERT_TRUE(isInked) << "in row " << y;
    }
}

TEST_F(TrendWindowTest, TellsTheValueUnderThePointer)
{
    events.pass(36LL * 3'600 * 1'000'000);
    ask(channels::tcpIp1, "? PV x\r", "23.5 C\r\n");
    refresh();
    const QString usage = window.lblPointed->text();
    const QRect picture = window.plot->rect();
    QString told;
    for (int y = 0; y < picture.height() && told.isEmpty(); y += 10) {
        for (int x = 0; x < picture.width() && told.isEmpty(); x += 10) {
            window.plot->point(QPointF(x, y));
            if (window.lblPointed->text() != usage)
                told = window.lblPointed->text();
        }
    }
    EXPECT_TRUE(told.startsWith(u"TCP/IP-1  ? PV x  =  23.5 C  at 129600.020 s (2026-01-0"))
        << told.toStdString();
    window.plot->point(QPointF(-1, -1));
    EXPECT_EQ(window.lblPointed->text(), usage);
}

TEST_F(TrendWindowTest, SavesPictureDocumentAndTableWholeOrSaysWhyNot)
{
    ramp();
    const QImage picture = QImage::fromData(save(u"a.PNG"_s));
    EXPECT_GE(picture.width(), 2 * 700) << "fine enough for paper";
    EXPECT_EQ(picture.pixelColor(1, 1), Qt::white);
    EXPECT_TRUE(save(u"a.pdf"_s).startsWith("%PDF"));
    const QByteArray table = save(u"a.csv"_s);
    EXPECT_EQ(table.count('\n'), 201);
    EXPECT_EQ(dialogs.questions.back().folder, folder.path() + u'/') << "where the last one went";

    const QString notSaved = u"The trend was not saved.\r\n"_s;
    const QString none = folder.filePath(u"none/a.csv"_s);
    dialogs.answerSave({Outcome::Chosen, none});
    dialogs.expectMessage(notSaved + QDir::toNativeSeparators(none) +
                          u": No such file or directory"_s);
    window.cmdSave_Click();
    const QString odd = folder.filePath(u"a.txt"_s);
    dialogs.answerSave({Outcome::Chosen, odd});
    dialogs.expectMessage(notSaved + QDir::toNativeSeparators(odd) +
                          u": the name must end in .png, .pdf or .csv"_s);
    window.cmdSave_Click();
    EXPECT_FALSE(QFile::exists(odd));
    dialogs.answerSave({Outcome::Cancelled, {}});
    window.cmdSave_Click();
}

TEST_F(TrendWindowTest, ClearsAndClosesAndGoesOnWhileItIsClosed)
{
    ramp();
    press(Qt::Key_Left);
    window.cmdClear->click();
    EXPECT_EQ(window.grdCurves->rowCount(), 0);
    EXPECT_TRUE(window.chkFollow->isChecked());
    ASSERT_TRUE(soon([this] { return window.isActiveWindow(); }));
    press(Qt::Key_Escape);
    EXPECT_FALSE(window.isVisible());
    ask(channels::tcpIp1, "? PV x\r", "1\r\n");
    EXPECT_TRUE(soon([this] { return !window.series().curves().empty(); }));
    EXPECT_EQ(window.grdCurves->rowCount(), 0) << "nobody looks";
    window.show();
    EXPECT_EQ(window.grdCurves->rowCount(), 1);
}

TEST_F(TrendWindowTest, StaysReadableOnADarkDesktopAndWithManyCurvesAndHugeNumbers)
{
    QPalette dark;
    dark.setColor(QPalette::Base, QColor(30, 30, 30));
    dark.setColor(QPalette::Text, QColor(230, 230, 230));
    const QColor onLight = window.plot->line(0).color();
    window.setPalette(dark);
    EXPECT_GT(window.plot->line(0).color().lightness(), onLight.lightness());
    for (int command = 0; command < 20; ++command)
        ask(channels::tcpIp1, "Q" + QByteArray::number(command) + '\r', "1e308\r\n");
    refresh();
    std::set<std::pair<QRgb, Qt::PenStyle>> lines;
    for (int curve = 0; curve < 20; ++curve)
        lines.emplace(window.plot->line(curve).color().rgb(), window.plot->line(curve).style());
    EXPECT_EQ(lines.size(), 20U);
    EXPECT_TRUE(window.plot->isShown(TrendTable::shownAtFirst - 1));
    EXPECT_FALSE(window.plot->isShown(TrendTable::shownAtFirst));
    EXPECT_EQ(cell(0, TrendTable::Mean), u"1e+308");
}
