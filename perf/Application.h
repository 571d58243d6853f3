// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QApplication>

#include <cstdio>
#include <exception>
#include <functional>

namespace corvane::perf {

/// Runs `work` with an application object, its windows drawn into memory unless the caller chose a
/// window system. Returns its exit code; 2, with the reason on standard error, when it throws.
inline int runApplication(int &argc, char **argv, const std::function<int()> &work)
{
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    try {
        return work();
    } catch (const std::exception &fault) {
        std::fprintf(stderr, "%s\n", fault.what());
        return 2;
    }
}

} // namespace corvane::perf
