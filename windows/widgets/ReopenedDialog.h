// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>
#include <QScopeGuard>

namespace corvane {

/// A dialog that is made once, kept, and filled in anew each time it is opened. Closed inside its
/// own procedure it hides and ends what that waits for.
class ReopenedDialog : public QDialog
{
public:
    /// Fills the dialog in and shows it; one that is already open comes to the front as it stands.
    virtual void openWindow();
    virtual void Form_Load() = 0;
    /// Every way of closing ends here.
    void done(int result) override;
    /// True while a procedure that waits is on the stack: the dialog must not be destroyed.
    [[nodiscard]] bool isBusy() const { return m_isBusy; }

protected:
    /// The title is also what a screen reader says.
    ReopenedDialog(const QString &name, const QString &title, QWidget *parent);

    /// One procedure that waits, for as long as the result is in scope.
    [[nodiscard]] auto procedure()
    {
        m_isBusy = true;
        return qScopeGuard([this] { m_isBusy = false; });
    }
    /// The dialog closes: ends what its procedure waits for.
    virtual void endProcedure() {}
    /// What the dialog shows has been laid out: it scrolls where there is too little room.
    /// `characters` is how wide the dialog is at first; 0: as wide as its content.
    void finishLayout(int characters = 0);
    /// Makes the dialog large enough for its controls and wrapped texts; never shrinks it.
    void growToFit();

private:
    bool m_isBusy = false;
};

} // namespace corvane
