// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/widgets/ReopenedDialog.h"

#include "windows/widgets/ClosableWindow.h"
#include "windows/widgets/ScrollPage.h"

#include <algorithm>

namespace corvane {

ReopenedDialog::ReopenedDialog(const QString &name, const QString &title, QWidget *parent)
    : QDialog(parent)
{
    setObjectName(name);
    setWindowTitle(title);
    setAccessibleName(title);
}

void ReopenedDialog::openWindow()
{
    const bool wasOpen = isVisible();
    if (!wasOpen)
        Form_Load();
    bringToFront(*this);
    if (!wasOpen)
        growToFit(); // its texts have their fonts by now
}

void ReopenedDialog::done(int result)
{
    endProcedure();
    QDialog::done(result);
}

void ReopenedDialog::finishLayout(int characters)
{
    ScrollPage::wrap(*this);
    if (characters > 0)
        resize(characters * fontMetrics().averageCharWidth(), 0);
}

void ReopenedDialog::growToFit()
{
    const auto *page = findChild<ScrollPage *>(QString(), Qt::FindDirectChildrenOnly);
    const int wide = std::max(width(), page->widget()->minimumSizeHint().width());
    const int high =
        page->hasHeightForWidth() ? page->heightForWidth(wide) : page->sizeHint().height();
    resize(wide, std::max(height(), high));
}

} // namespace corvane
