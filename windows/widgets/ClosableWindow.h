// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QScopeGuard>
#include <QWidget>

namespace corvane {

/// Shows a window, or brings it to the front where it is open already.
void bringToFront(QWidget &window);

/// A window that may be closed at any moment, inside a wait or a message box of its own too.
/// Closing hides it and ends its procedures; `closed` follows when nothing of it is left on the
/// stack, and from then on it may be destroyed, with deleteLater.
class ClosableWindow : public QWidget
{
    Q_OBJECT

Q_SIGNALS:
    /// The window begins to close.
    void closing();
    void closed();

protected:
    /// One procedure of the window that waits or asks: while the result is in scope the window
    /// stays.
    [[nodiscard]] auto procedure()
    {
        setProcedure(true);
        return qScopeGuard([this] { setProcedure(false); });
    }
    [[nodiscard]] bool isClosing() const { return m_life != Life::Open; }
    [[nodiscard]] bool isBusy() const { return m_procedures > 0; }
    /// A procedure has begun, or has returned, where no scope can tell.
    void setProcedure(bool running);
    /// The first procedure has begun, or the last one has returned.
    virtual void showBusy(bool /*busy*/) {}
    /// The window closes: ends what its procedures wait for and ask.
    virtual void endProcedures() = 0;
    /// What is left to do before `closed`, when the procedures have returned; may wait.
    virtual void unload() {}
    void closeEvent(QCloseEvent *event) override;

private:
    enum class Life { Open, Closing, Closed };

    void finishClosing();

    Life m_life = Life::Open;
    int m_procedures = 0;
};

} // namespace corvane
