// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/text/Dialogs.h"

#include <QDir>
#include <QHash>
#include <QPointer>
#include <QWidget>

#include <vector>

class QDialog;
class QSettings;

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

    /// A file dialog starts in the folder of the file that was chosen last at the same window; from
    /// now on also in that of an earlier session. The settings outlive the dialogs' use.
    void rememberFoldersIn(QSettings &settings) { m_settings = &settings; }
    /// A file that came another way counts as chosen there.
    void noteFolder(const QObject *asker, const QString &path);

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
    [[nodiscard]] QString folderKey(const QObject *asker) const;
    [[nodiscard]] FileQuestion inLastFolder(const QObject *asker, FileQuestion question) const;
    FileChoice chosen(const QObject *asker, const QString &path);
    /// Runs the dialog over the asker's window. False when dismissAll closed it.
    bool run(QDialog &dialog, QObject *asker);

    /// The running dialogs, innermost last; each entry lives in its run's frame.
    std::vector<OpenDialog *> m_open;
    QPointer<const QWidget> m_home;
    QHash<QString, QString> m_lastFolders; ///< by window
    QHash<QString, QString> m_lastTypes;   ///< of the files that were opened, by window
    QSettings *m_settings = nullptr;
    QString m_firstFolder = QDir::currentPath();
};

} // namespace corvane
