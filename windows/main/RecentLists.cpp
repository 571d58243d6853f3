// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/main/RecentLists.h"

#include "core/lists/CommandList.h"

#include <QDir>
#include <QFileInfo>
#include <QMenu>
#include <QSettings>

namespace corvane {

namespace {

const QString key = u"recentLists"_s;

} // namespace

RecentLists::RecentLists(CommandList &list, QMenu &menu, QSettings *settings, QObject *parent)
    : QObject(parent)
    , m_list(list)
    , m_menu(menu)
    , m_settings(settings)
{
    read();
    connect(&list, &CommandList::named, this, [this](const QString &name) {
        if (!name.isEmpty())
            add(m_list.ListFilePath);
    });
    fillMenu();
}

void RecentLists::read()
{
    if (m_settings == nullptr)
        return;
    m_settings->sync();
    m_paths = m_settings->value(key).toStringList().mid(0, most);
}

void RecentLists::add(const QString &path)
{
    const QString whole = QFileInfo(path).absoluteFilePath();
    read(); // another program may have added to them
    m_paths.removeAll(whole);
    m_paths.prepend(whole);
    m_paths = m_paths.mid(0, most);
    if (m_settings != nullptr)
        m_settings->setValue(key, m_paths);
    fillMenu();
}

void RecentLists::fillMenu()
{
    m_menu.clear();
    m_menu.setEnabled(!m_paths.isEmpty());
    for (const QString &path : std::as_const(m_paths)) {
        const QFileInfo file(path);
        const QString shown =
            u"%1  (%2)"_s.arg(file.fileName(), QDir::toNativeSeparators(file.absolutePath()));
        QAction *entry = m_menu.addAction(u"&%1  %2"_s.arg(m_menu.actions().size() + 1)
                                              .arg(QString(shown).replace(u'&', u"&&"_s)));
        connect(entry, &QAction::triggered, this, [this, path] { m_list.openIfThere(path); });
    }
}

} // namespace corvane
