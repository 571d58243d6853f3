// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/widgets/QtDialogs.h"

#include "devices/FileQuestions.h"
#include "windows/widgets/BusyPointer.h"
#include "windows/widgets/FileDialog.h"

#include <QDir>
#include <QFileInfo>
#include <QGridLayout>
#include <QGuiApplication>
#include <QMessageBox>
#include <QScreen>
#include <QSettings>
#include <QWindow>

#include <algorithm>

namespace corvane {

namespace {

QMessageBox::Icon toQt(Dialogs::Icon icon)
{
    switch (icon) {
    case Dialogs::Icon::Stop:
        return QMessageBox::Critical;
    case Dialogs::Icon::Exclamation:
        return QMessageBox::Warning;
    case Dialogs::Icon::None:
        break;
    }
    return QMessageBox::NoIcon;
}

/// A message that quotes a reply of any length, cut in its middle so that the buttons stay on the
/// screen.
QString fittingText(const QString &text)
{
    constexpr qsizetype longest = 600;
    return text.size() <= longest ? text
                                  : text.first(longest / 2) + u" ... "_s + text.last(longest / 2);
}

/// Moves the dialog to a centre, all of it on the screen.
void moveTo(QDialog &dialog, QPoint centre, const QRect &screen)
{
    QRect place(QPoint(), dialog.frameGeometry().size());
    place.moveCenter(centre);
    place.moveLeft(std::max(screen.left(), std::min(place.left(), screen.right() - place.width())));
    place.moveTop(std::max(screen.top(), std::min(place.top(), screen.bottom() - place.height())));
    dialog.move(place.topLeft());
}

/// A box with a word or two in it would cut its title.
void widenForTitle(QMessageBox &box)
{
    constexpr int width = 240;
    if (auto *grid = qobject_cast<QGridLayout *>(box.layout()))
        grid->addItem(new QSpacerItem(width, 0), grid->rowCount(), 0, 1, grid->columnCount());
}

/// Places the dialog over the window it speaks for; there is no parent that would do it.
void placeOver(QDialog &dialog, const QWidget *window)
{
    if (!window)
        return;
    dialog.setWindowIcon(window->windowIcon());
    dialog.winId(); // makes the native window that is to follow the other one
    dialog.windowHandle()->setTransientParent(window->windowHandle());
    if (!window->isVisible())
        return;
    dialog.ensurePolished();
    dialog.adjustSize();
    const auto place = [&dialog, centre = window->frameGeometry().center(),
                        screen = window->screen()->availableGeometry()] {
        moveTo(dialog, centre, screen);
    };
    place();
    // A message box takes its size, and its frame, as it is shown.
    QMetaObject::invokeMethod(&dialog, place, Qt::QueuedConnection);
}

} // namespace

/// That of the first widget among the object and its parents.
const QWidget *QtDialogs::windowOf(const QObject *asker) const
{
    while (asker && !asker->isWidgetType())
        asker = asker->parent();
    return asker ? static_cast<const QWidget *>(asker)->window() : m_home.get();
}

bool QtDialogs::run(QDialog &dialog, QObject *asker)
{
    OpenDialog entry{dialog};
    m_open.push_back(&entry);
    const BusyPointer::Pause pause;
    dialog.setWindowModality(Qt::ApplicationModal);
    placeOver(dialog, windowOf(asker));
    dialog.exec();
    std::erase(m_open, &entry);
    return !entry.dismissed;
}

Dialogs::Answer QtDialogs::showMessage(QObject *asker, const MessageBox &box)
{
    const bool asks = box.buttons == Buttons::YesNo;
    QMessageBox dialog;
    dialog.setObjectName(u"messageBox"_s);
    dialog.setTextFormat(Qt::PlainText);
    dialog.setText(fittingText(box.text));
    dialog.setWindowTitle(box.title);
    dialog.setIcon(toQt(box.icon));
    dialog.setStandardButtons(asks ? QMessageBox::Yes | QMessageBox::No : QMessageBox::Ok);
    if (asks && box.icon == Icon::Exclamation) // Yes loses something: Enter must not
        dialog.setDefaultButton(QMessageBox::No);
    dialog.setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    widenForTitle(dialog);
    if (!run(dialog, asker))
        return Answer::Dismissed;
    switch (dialog.standardButton(dialog.clickedButton())) {
    case QMessageBox::Ok:
        return Answer::Ok;
    case QMessageBox::Yes:
        return Answer::Yes;
    case QMessageBox::No:
        return Answer::No;
    default:
        return Answer::Dismissed;
    }
}

QString QtDialogs::folderKey(const QObject *asker) const
{
    const QWidget *window = windowOf(asker);
    return window ? u"folders/"_s + window->objectName() : QString();
}

Dialogs::FileQuestion QtDialogs::inLastFolder(const QObject *asker, FileQuestion question) const
{
    const QString key = folderKey(asker);
    QString last = m_lastFolders.value(key);
    if (last.isEmpty() && m_settings != nullptr && !key.isEmpty())
        last = m_settings->value(key).toString();
    if (!last.isEmpty() && QFileInfo(last).isDir())
        question.folder = last;
    return question;
}

void QtDialogs::noteFolder(const QObject *asker, const QString &path)
{
    const QString key = folderKey(asker);
    if (key.isEmpty())
        return;
    m_lastFolders[key] = QFileInfo(path).absolutePath();
    if (m_settings != nullptr)
        m_settings->setValue(key, m_lastFolders[key]);
}

Dialogs::FileChoice QtDialogs::chosen(const QObject *asker, const QString &path)
{
    noteFolder(asker, path);
    return {FileChoice::Outcome::Chosen, path};
}

Dialogs::FileChoice QtDialogs::openFile(QObject *asker, const FileQuestion &question)
{
    FileDialog dialog(inLastFolder(asker, question), m_firstFolder, QFileDialog::AcceptOpen);
    const QString key = folderKey(asker);
    dialog.selectNameFilter(m_lastTypes.value(key));
    while (run(dialog, asker) && dialog.result() == QDialog::Accepted) {
        const QString path = dialog.path();
        if (QFileInfo(path).isFile()) {
            m_lastTypes[key] = dialog.selectedNameFilter();
            return chosen(asker, path);
        }
        const MessageBox missing{.text =
                                     u"%1\nFile not found."_s.arg(QDir::toNativeSeparators(path)),
                                 .icon = Icon::Exclamation};
        if (showMessage(asker, missing) == Answer::Dismissed)
            break;
    }
    return {};
}

Dialogs::FileChoice QtDialogs::saveFile(QObject *asker, const FileQuestion &question)
{
    FileDialog dialog(inLastFolder(asker, question), m_firstFolder, QFileDialog::AcceptSave);
    while (run(dialog, asker) && dialog.result() == QDialog::Accepted) {
        const QString path = dialog.path();
        if (fileQuestions::isRefusedName(path))
            return {FileChoice::Outcome::InvalidName, path};
        if (!QFileInfo::exists(path))
            return chosen(asker, path);
        const MessageBox replace{.text = u"%1 already exists.\nDo you want to replace it?"_s.arg(
                                     QDir::toNativeSeparators(path)),
                                 .icon = Icon::Exclamation,
                                 .buttons = Buttons::YesNo};
        const Answer answer = showMessage(asker, replace);
        if (answer == Answer::Yes)
            return chosen(asker, path);
        if (answer == Answer::Dismissed)
            break;
    }
    return {};
}

void QtDialogs::dismissAll()
{
    auto innermostFirst = m_open;
    std::ranges::reverse(innermostFirst);
    for (OpenDialog *open : innermostFirst) {
        open->dismissed = true;
        // The toolkit's own questions inside a file dialog ("New folder", "Delete") go first.
        for (QDialog *inner : open->dialog.findChildren<QDialog *>())
            inner->reject();
        open->dialog.reject();
    }
}

} // namespace corvane
