#include "core/text/Dialogs.h"

namespace corvane {

void Dialogs::showMessage(QObject *asker, const QString &text)
{
    showMessage(asker, MessageBox{.text = text});
}

} // namespace corvane
