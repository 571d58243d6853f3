// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/main/ListDrop.h"

#include <QDropEvent>
#include <QMimeData>
#include <QUrl>
#include <QWidget>

namespace corvane {

namespace {

/// The path of the one file; empty when it is anything else.
QString fileOf(const QDropEvent &event)
{
    const QList<QUrl> urls = event.mimeData()->urls();
    return urls.size() == 1 ? urls.first().toLocalFile() : QString();
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
    const QString path = fileOf(drop);
    if (path.isEmpty())
        return false;
    drop.setDropAction(Qt::CopyAction); // the file stays where it is
    drop.accept();
    if (type == QEvent::Drop)
        QMetaObject::invokeMethod(
            this, [this, path] { m_load(path); }, Qt::QueuedConnection);
    return true;
}

} // namespace corvane
