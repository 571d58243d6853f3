// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/lists/UnreadRest.h"

#include "core/lists/ListKinds.h"
#include "core/lists/ListTexts.h"
#include "core/text/Dialogs.h"

#include <QFileInfo>

#include <algorithm>

namespace corvane {

UnreadRest::UnreadRest(const QString &path, const ListContents &contents)
{
    if (contents.end == ListContents::End::Complete)
        return;
    m_file = QFileInfo(path).canonicalFilePath();
    m_line = std::max(contents.endLine, 1);
}

QString UnreadRest::warning() const
{
    return m_file.isEmpty()
               ? QString()
               : listTexts::restNotRead.arg(listKinds::fileName(m_file), QString::number(m_line));
}

bool UnreadRest::isIn(const QString &path) const
{
    return !m_file.isEmpty() && QFileInfo(path).canonicalFilePath() == m_file;
}

bool UnreadRest::maySaveTo(const QString &path, Dialogs &dialogs, QObject *asker) const
{
    return !isIn(path) ||
           dialogs.showMessage(asker, {.text = warning() + listTexts::saveAllTheSame,
                                       .icon = Dialogs::Icon::Exclamation,
                                       .buttons = Dialogs::Buttons::YesNo}) == Dialogs::Answer::Yes;
}

} // namespace corvane
