#include "windows/widgets/ReopenedDialog.h"

#include "windows/widgets/ClosableWindow.h"

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
    if (!isVisible())
        Form_Load();
    bringToFront(*this);
}

void ReopenedDialog::done(int result)
{
    endProcedure();
    QDialog::done(result);
}

void ReopenedDialog::growToFit()
{
    layout()->activate();
    resize(width(), std::max(height(), layout()->totalHeightForWidth(width())));
}

} // namespace corvane
