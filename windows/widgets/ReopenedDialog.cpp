// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/widgets/ReopenedDialog.h"

#include "windows/widgets/ClosableWindow.h"
#include "windows/widgets/ScrollPage.h"

#include <QLayout>

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
    if (!isVisible()) {
        Form_Load();
        if (testAttribute(Qt::WA_Resized))
            growToFit();
    }
    bringToFront(*this);
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
    layout()->activate();
    resize(width(), std::max(height(), layout()->totalHeightForWidth(width())));
}

} // namespace corvane
