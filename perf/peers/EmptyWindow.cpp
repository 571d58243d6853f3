// SPDX-License-Identifier: GPL-3.0-or-later
// An empty main window: the least that a program on Qt can start with. The measure of the start.
#include "perf/Application.h"
#include "perf/FirstPaint.h"

#include <QMainWindow>

using namespace corvane::perf;

int main(int argc, char **argv)
{
    return runApplication(argc, argv, [] {
        QMainWindow window;
        window.resize(1024, 700);
        FirstPaint::watch(window);
        window.show();
        return QApplication::exec();
    });
}
