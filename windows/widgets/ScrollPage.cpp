// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/widgets/ScrollPage.h"

#include <QApplication>
#include <QVBoxLayout>

namespace corvane {

void ScrollPage::wrap(QWidget &widget)
{
    auto *content = new QWidget;
    content->setLayout(widget.layout());
    auto *place = new QVBoxLayout(&widget);
    place->setContentsMargins({});
    place->addWidget(new ScrollPage(*content));
}

ScrollPage::ScrollPage(QWidget &content)
{
    setFrameShape(QFrame::NoFrame);
    setWidgetResizable(true);
    setFocusPolicy(Qt::NoFocus);
    setWidget(&content);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    connect(qApp, &QApplication::focusChanged, this,
            [this](const QWidget *, const QWidget *now) { showFocus(now); });
}

/// Its content, when it goes, may give the focus to another.
ScrollPage::~ScrollPage()
{
    qApp->disconnect(this);
}

QSize ScrollPage::sizeHint() const
{
    return widget()->sizeHint();
}

bool ScrollPage::hasHeightForWidth() const
{
    return widget()->hasHeightForWidth();
}

int ScrollPage::heightForWidth(int width) const
{
    return widget()->heightForWidth(width);
}

void ScrollPage::showFocus(const QWidget *now)
{
    if (!now || !widget()->isAncestorOf(now))
        return;
    const QPoint from = now->mapTo(widget(), QPoint());
    if (now->width() > viewport()->width())
        ensureVisible(from.x(), from.y()); // its middle would hide its beginning
    else
        ensureWidgetVisible(const_cast<QWidget *>(now));
}

} // namespace corvane
