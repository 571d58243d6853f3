// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/widgets/ClosableWindow.h"

#include <QCloseEvent>

namespace corvane {

void bringToFront(QWidget &window)
{
    window.show();
    window.raise();
    window.activateWindow();
}

void ClosableWindow::setProcedure(bool running)
{
    m_procedures += running ? 1 : -1;
    if (m_procedures != (running ? 1 : 0))
        return; // neither the first nor the last
    showBusy(running);
    if (!running)
        QMetaObject::invokeMethod(this, &ClosableWindow::finishClosing, Qt::QueuedConnection);
}

void ClosableWindow::closeEvent(QCloseEvent *event)
{
    event->accept();
    if (isClosing())
        return;
    m_life = Life::Closing;
    Q_EMIT closing();
    endProcedures();
    QMetaObject::invokeMethod(this, &ClosableWindow::finishClosing, Qt::QueuedConnection);
}

/// Goes on when nothing of the window is left on the stack.
void ClosableWindow::finishClosing()
{
    if (m_life != Life::Closing || isBusy())
        return;
    m_life = Life::Closed; // once, whatever its own waits let in
    unload();
    Q_EMIT closed();
}

} // namespace corvane
