// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/UnattendedDialogs.h"

#include "core/text/PrintableText.h"

#include <QTextStream>

namespace corvane {

Dialogs::Answer UnattendedDialogs::showMessage(QObject *, const MessageBox &box)
{
    m_messages << printableText::message(box.text) << Qt::endl;
    return box.buttons == Buttons::YesNo ? Answer::No : Answer::Ok;
}

} // namespace corvane
