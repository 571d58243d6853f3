// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QCursor>
#include <QGuiApplication>

namespace corvane {

/// The pointer says that the program is busy for as long as this lives.
class BusyPointer
{
public:
    BusyPointer() { QGuiApplication::setOverrideCursor(Qt::BusyCursor); }
    ~BusyPointer() { QGuiApplication::restoreOverrideCursor(); }
    Q_DISABLE_COPY_MOVE(BusyPointer)

    /// A box that opens meanwhile waits for the user, and the pointer says so.
    class Pause
    {
    public:
        Pause()
        {
            if (m_wasBusy)
                QGuiApplication::setOverrideCursor(Qt::ArrowCursor);
        }
        ~Pause()
        {
            if (m_wasBusy)
                QGuiApplication::restoreOverrideCursor();
        }
        Q_DISABLE_COPY_MOVE(Pause)

    private:
        const bool m_wasBusy = QGuiApplication::overrideCursor() != nullptr;
    };
};

} // namespace corvane
