// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>

class QMenu;
class QSettings;

namespace corvane {

class CommandList;

/// A menu of the list files that were loaded last, the newest first, also in earlier sessions.
class RecentLists : public QObject
{
    Q_OBJECT

public:
    static constexpr int most = 8;

    /// Without settings those of this session only. All that is given must outlive the object.
    RecentLists(CommandList &list, QMenu &menu, QSettings *settings, QObject *parent);

private:
    void read();
    void add(const QString &path);
    void fillMenu();

    CommandList &m_list;
    QMenu &m_menu;
    QSettings *const m_settings;
    QStringList m_paths;
};

} // namespace corvane
