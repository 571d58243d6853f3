#include "main/UnattendedDialogs.h"

#include <QTextStream>

namespace corvane {

Dialogs::Answer UnattendedDialogs::showMessage(QWidget *, const MessageBox &box)
{
    m_messages << QString(box.text).replace(QStringLiteral("\r\n"), QStringLiteral("\n"))
               << Qt::endl;
    return box.buttons == Buttons::YesNo ? Answer::No : Answer::Ok;
}

} // namespace corvane
