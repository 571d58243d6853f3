// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/text/Dialogs.h"

namespace corvane {

void Dialogs::showMessage(QObject *asker, const QString &text)
{
    showMessage(asker, MessageBox{.text = text});
}

} // namespace corvane
