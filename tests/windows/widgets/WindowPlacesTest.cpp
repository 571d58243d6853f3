// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/widgets/WindowPlaces.h"

#include "tests/support/Testing.h"

#include <QHeaderView>
#include <QSettings>
#include <QSplitter>
#include <QTableWidget>

using namespace corvane;

namespace {

/// A window with all that is remembered of one.
struct SomeWindow : QWidget
{
    SomeWindow()
    {
        setObjectName(u"SomeWindow"_s);
        auto *layout = new QVBoxLayout(this);
        layout->addWidget(&splitter);
        splitter.setObjectName(u"splitter"_s);
        splitter.addWidget(&table);
        splitter.addWidget(new QLabel);
        table.setObjectName(u"table"_s);
        table.setHorizontalHeaderLabels({u"Time"_s, u"Value / unit"_s, u"Text"_s});
        table.horizontalHeader()->setStretchLastSection(true);
    }

    QSplitter splitter;
    QTableWidget table{0, 3};
};

} // namespace

TEST(WindowPlaces, AWindowComesBackAsItWasLeftAndOnTheScreen)
{
    const QTemporaryDir folder;
    QSettings settings(folder.filePath(u"settings.ini"_s), QSettings::IniFormat);
    WindowPlaces::install(&settings);
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    {
        SomeWindow window;
        window.resize(400, 300);
        window.move(30, 40);
        window.show();
        window.splitter.setSizes({300, 80});
        window.table.setColumnWidth(1, 77);
        window.hide();
    }
    {
        SomeWindow window;
        window.show();
        EXPECT_EQ(window.size(), QSize(400, 300));
        EXPECT_EQ(window.pos(), QPoint(30, 40));
        EXPECT_NEAR(window.splitter.sizes().at(0), 300, 12);
        EXPECT_EQ(window.table.columnWidth(1), 77);
        window.move(screen.bottomRight());
        window.resize(5000, 5000);
        window.hide();
    }
    settings.setValue(u"windows/SomeWindow/splitter/splitter"_s, u"of another program"_s);
    settings.setValue(u"windows/SomeWindow/column/table/Value | unit"_s, -5);
    SomeWindow window;
    window.show();
    EXPECT_TRUE(screen.contains(window.frameGeometry()));
    EXPECT_GT(window.table.columnWidth(1), 10);
    delete qApp->findChild<WindowPlaces *>();
}

TEST(WindowPlaces, FitsAFrameIntoTheRoom)
{
    const QRect room(100, 50, 1000, 600);
    EXPECT_EQ(WindowPlaces::fitted({200, 100, 300, 200}, room), QRect(200, 100, 300, 200));
    EXPECT_EQ(WindowPlaces::fitted({-500, 900, 300, 200}, room), QRect(100, 450, 300, 200));
    EXPECT_EQ(WindowPlaces::fitted({0, 0, 4000, 4000}, room), room);
}
