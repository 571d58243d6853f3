#pragma once

#include "core/text/Dialogs.h"

#include <QDir>
#include <QPointer>
#include <QWidget>

#include <vector>

class QDialog;

namespace corvane {

/// The dialogs on the screen. Each lives in the frame that asked and belongs to no window, so a
/// window that goes meanwhile takes no open box with it.
class QtDialogs : public Dialogs
{
public:
    using Dialogs::showMessage;

    QtDialogs() = default;

    /// The window that a box stands over whose asker leads to none; it outlives the dialogs' use.
    void setHome(const QWidget *window) { m_home = window; }
    /// Where a file dialog starts that is asked for no folder; the current one until this is set.
    void setFirstFolder(const QString &folder) { m_firstFolder = folder; }

    Answer showMessage(QObject *asker, const MessageBox &box) override;
    FileChoice openFile(QObject *asker, const FileQuestion &question) override;
    FileChoice saveFile(QObject *asker, const FileQuestion &question) override;
    void dismissAll() override;
    [[nodiscard]] int openCount() const override { return static_cast<int>(m_open.size()); }

private:
    struct OpenDialog
    {
        QDialog &dialog;
        bool dismissed = false;
    };

    [[nodiscard]] const QWidget *windowOf(const QObject *asker) const;
    /// Runs the dialog over the asker's window. False when dismissAll closed it.
    bool run(QDialog &dialog, QObject *asker);

    /// The running dialogs, innermost last; each entry lives in its run's frame.
    std::vector<OpenDialog *> m_open;
    QPointer<const QWidget> m_home;
    QString m_firstFolder = QDir::currentPath();
};

} // namespace corvane
