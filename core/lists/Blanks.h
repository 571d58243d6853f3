#pragma once

#include <QString>
#include <QStringView>

namespace corvane {

/// The text without blanks at its ends; other white space stays.
inline QString trimBlanks(QStringView text)
{
    while (text.startsWith(u' '))
        text = text.sliced(1);
    while (text.endsWith(u' '))
        text.chop(1);
    return text.toString();
}

} // namespace corvane
