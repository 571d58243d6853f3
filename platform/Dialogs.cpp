#include "platform/Dialogs.h"

namespace corvane {

void Dialogs::showMessage(QWidget *parent, const QString &text)
{
    showMessage(parent, MessageBox{.text = text});
}

} // namespace corvane
