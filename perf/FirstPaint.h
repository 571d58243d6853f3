// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "perf/Harness.h"

#include <QCoreApplication>
#include <QEvent>
#include <QTimer>
#include <QWidget>

#include <cstdio>

namespace corvane::perf {

/// Watches a window until it has painted itself for the first time, prints
/// "painted=SECONDS memory=BYTES" (monotonic clock; resident) and ends the program.
class FirstPaint : public QObject
{
public:
    static void watch(QWidget &window) { window.installEventFilter(new FirstPaint(window)); }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Paint) {
            watched->removeEventFilter(this);
            // The event is still to be handled: what follows it in the queue comes after the paint.
            QTimer::singleShot(0, this, [] {
                std::printf("painted=%f memory=%f\n", now(), residentBytes());
                std::fflush(stdout);
                QCoreApplication::quit();
            });
        }
        return QObject::eventFilter(watched, event);
    }

private:
    explicit FirstPaint(QWidget &window)
        : QObject(&window)
    {
    }
};

} // namespace corvane::perf
