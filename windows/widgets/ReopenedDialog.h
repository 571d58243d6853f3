#pragma once

#include <QDialog>

namespace corvane {

/// A dialog that is made once, kept, and filled in anew each time it is opened. It must not be
/// destroyed while something of it waits; closed meanwhile it only hides.
class ReopenedDialog : public QDialog
{
public:
    /// Fills the dialog in and shows it; one that is already open comes to the front as it stands.
    virtual void openWindow();
    virtual void Form_Load() = 0;

protected:
    /// The title is also what a screen reader says.
    ReopenedDialog(const QString &name, const QString &title, QWidget *parent);

    /// Makes the dialog tall enough for its wrapped texts at its present width; never shrinks it.
    void growToFit();
};

} // namespace corvane
