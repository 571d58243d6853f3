// SPDX-License-Identifier: GPL-3.0-or-later
#include <QApplication>
#include <QTimer>

#include <gtest/gtest.h>

/// One application for all tests of an executable, without a display and with Qt's own dialogs.
int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    testing::InitGoogleTest(&argc, argv);
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    return RUN_ALL_TESTS();
}
