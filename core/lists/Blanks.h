// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringView>

namespace corvane {

/// The view of a text, of whatever width its characters are, without blanks at its ends; other
/// white space stays.
template <typename View>
View withoutBlanks(View text)
{
    while (!text.isEmpty() && text.front() == u' ')
        text = text.sliced(1);
    while (!text.isEmpty() && text.back() == u' ')
        text.chop(1);
    return text;
}

inline QString trimBlanks(QStringView text)
{
    return withoutBlanks(text).toString();
}

} // namespace corvane
