// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/lists/PlainText.h"

#include "devices/Literals.h"

#include <QPlainTextEdit>
#include <QTextDocument>

namespace corvane {

QString plainText::of(const QPlainTextEdit &box)
{
    QString text = box.document()->toRawText();
    text.replace(QChar::LineSeparator, QChar::ParagraphSeparator);
    return text.replace(QChar::ParagraphSeparator, u"\r\n"_s);
}

} // namespace corvane
