// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/widgets/FileDialog.h"

#include "devices/FileQuestions.h"

#include <QFileInfo>

#include <algorithm>

namespace corvane {

FileDialog::FileDialog(const Dialogs::FileQuestion &question, const QString &firstFolder,
                       AcceptMode mode)
{
    setAcceptMode(mode);
    setFileMode(AnyFile);
    setOption(DontConfirmOverwrite);
    setDirectory(question.folder.isEmpty() ? firstFolder : question.folder);
    setNameFilters(fileQuestions::nameFilters(question.filter));
    // A name that begins like a path, as of a part number "/12", belongs to this folder too.
    QString name = question.name;
    while (name.startsWith(u'/'))
        name.remove(0, 1);
    selectFile(name);
}

QString FileDialog::path() const
{
    QString chosen = selectedFiles().value(0);
    QStringList types;
    for (const QString &each : nameFilters())
        types.append(fileQuestions::extensionOf(each));
    const auto isTyped = [&chosen](const QString &type) {
        return !type.isEmpty() && chosen.endsWith(u'.' + type, Qt::CaseInsensitive);
    };
    // One of the other types is chosen by its extension too, however long that is.
    if (acceptMode() != AcceptSave || std::ranges::any_of(types, isTyped))
        return chosen;
    const QString type = fileQuestions::extensionOf(selectedNameFilter());
    const QString path = fileQuestions::withExtension(chosen, type);
    // What is written goes by the type: where each has its own, no other is taken.
    const bool isOther = path == chosen && types.size() > 1 && !types.contains(QString());
    return isOther && !path.isEmpty() ? path + u'.' + type : path;
}

void FileDialog::accept()
{
    const QString chosen = selectedFiles().value(0);
    if (QFileInfo(chosen).isDir())
        QFileDialog::accept(); // steps into the folder
    else
        done(Accepted);
}

} // namespace corvane
