// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/widgets/OneLine.h"

#include "core/text/LineEnds.h"

#include <QLineEdit>
#include <QValidator>

#include <algorithm>

namespace corvane::oneLine {

namespace {

bool isLineEnd(QChar c)
{
    return lineEnds::isOne(c) || c == QChar::LineSeparator || c == QChar::ParagraphSeparator;
}

/// Accepts every text and cleans it on the way: an entry asks its validator at each change.
class Cleaner : public QValidator
{
public:
    using QValidator::QValidator;

    State validate(QString &text, int &cursor) const override
    {
        clean(text, cursor);
        return Acceptable;
    }
};

} // namespace

void clean(QString &text, int &cursor)
{
    if (std::ranges::none_of(text, isLineEnd))
        return;
    QString cleaned;
    int place = cursor;
    for (qsizetype at = 0; at < text.size();) {
        const qsizetype start = at;
        while (at < text.size() && isLineEnd(text[at]))
            ++at;
        if (at == start)
            cleaned += text[at++];
        else if (start > 0 && at < text.size() && at != cursor)
            cleaned += u' ';
        if (start < cursor && cursor <= at)
            place = static_cast<int>(cleaned.size());
    }
    text = cleaned;
    cursor = place;
}

void keepIn(QLineEdit &entry)
{
    entry.setValidator(new Cleaner(&entry));
}

} // namespace corvane::oneLine
