// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/main/ListDrop.h"

#include <QDropEvent>
#include <QMimeData>
#include <QUrl>
#include <QWidget>

namespace corvane {

namespace {

/// The paths of the files of this computer among what is dropped.
QStringList filesOf(const QDropEvent &event)
{
    QStringList paths;
    for (const QUrl &each : event.mimeData()->urls()) {
        if (each.isLocalFile())
            paths.append(each.toLocalFile());
    }
    return paths;
}

} // namespace

ListDrop::ListDrop(QWidget &window, std::function<void(const QString &)> load)
    : QObject(&window)
    , m_load(std::move(load))
{
    window.setAcceptDrops(true);
    window.installEventFilter(this);
    for (QWidget *each : window.findChildren<QWidget *>()) {
        if (each->acceptDrops())
            each->installEventFilter(this);
    }
}

bool ListDrop::eventFilter(QObject *, QEvent *event)
{
    const QEvent::Type type = event->type();
    if (type != QEvent::DragEnter && type != QEvent::DragMove && type != QEvent::Drop)
        return false;
    auto &drop = static_cast<QDropEvent &>(*event);
    const QStringList paths = filesOf(drop);
    if (paths.isEmpty())
        return false;
    drop.setAccepted(false);
    if (paths.size() > 1)
        return true;
    drop.setDropAction(Qt::CopyAction); // the file stays where it is
    drop.accept();
    if (type == QEvent::Drop)
        QMetaObject::invokeMethod(
            this, [this, path = paths.first()] { m_load(path); }, Qt::QueuedConnection);
    return true;
}

} // namespace corvane
