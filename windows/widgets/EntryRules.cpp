// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/widgets/EntryRules.h"

#include "windows/widgets/OneLine.h"

#include <QAbstractSpinBox>
#include <QComboBox>
#include <QCoreApplication>
#include <QEvent>
#include <QLineEdit>

namespace corvane {

namespace {

/// The widget when it is a box that the wheel turns.
QWidget *turningBox(QObject *object)
{
    if (auto *box = qobject_cast<QComboBox *>(object))
        return box;
    return qobject_cast<QAbstractSpinBox *>(object);
}

/// A file may have any name.
bool namesFile(const QLineEdit &entry)
{
    return entry.window()->inherits("QFileDialog");
}

/// An entry or a box is about to be shown for the first time.
void prepare(QObject *object)
{
    if (const auto *box = qobject_cast<QComboBox *>(object); box && box->lineEdit())
        box->lineEdit()->setAccessibleName(box->accessibleName());
    if (QWidget *box = turningBox(object)) {
        if (box->focusPolicy() == Qt::WheelFocus)
            box->setFocusPolicy(Qt::StrongFocus);
    } else if (auto *entry = qobject_cast<QLineEdit *>(object)) {
        if (!entry->validator() && !namesFile(*entry))
            oneLine::keepIn(*entry);
    }
}

} // namespace

void EntryRules::install()
{
    QCoreApplication *application = QCoreApplication::instance();
    if (application->findChild<EntryRules *>(QString(), Qt::FindDirectChildrenOnly) == nullptr)
        application->installEventFilter(new EntryRules(application));
}

bool EntryRules::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Polish) {
        prepare(watched);
    } else if (event->type() == QEvent::Wheel) {
        const QWidget *box = turningBox(watched);
        if (box && !box->hasFocus()) {
            event->ignore(); // the widget behind is asked next
            return true;
        }
    }
    return false;
}

} // namespace corvane
