// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/widgets/EditableBox.h"

#include "windows/widgets/OneLine.h"

#include <QCompleter>
#include <QCoreApplication>
#include <QLineEdit>
#include <QPointer>

namespace corvane {

namespace {

/// A completer without words. A box makes one over its whole list when its entry has none.
QCompleter *noCompleter()
{
    static QPointer<QCompleter> shared;
    if (!shared)
        shared = new QCompleter(static_cast<QAbstractItemModel *>(nullptr),
                                QCoreApplication::instance());
    return shared;
}

} // namespace

EditableBox::EditableBox(QWidget *parent)
    : QComboBox(parent)
{
    setInsertPolicy(QComboBox::NoInsert);
    auto *entry = new QLineEdit(this);
    entry->setCompleter(noCompleter());
    setLineEdit(entry);
    setCompleter(nullptr);
    oneLine::keepIn(*entry);
    // Left alone the box would put an item that differs in its letters' case in place of the text.
    disconnect(entry, &QLineEdit::editingFinished, this, nullptr);
}

} // namespace corvane
