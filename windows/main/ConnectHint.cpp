// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/main/ConnectHint.h"

#include "core/channels/ChannelSession.h"
#include "core/channels/Reconnect.h"
#include "windows/widgets/Controls.h"
#include "windows/widgets/ResponseView.h"

#include <QApplication>
#include <QEvent>

namespace corvane {

using namespace controls;

ConnectHint::ConnectHint(const QString &text, const ChannelSession &session, ResponseView &box)
    : QWidget(box.viewport())
    , lblHint(note(indexed(u"lblHint"_s, session.index()), text))
    , cmdBench(button(u"Use the Simulated Bench"_s, indexed(u"cmdBench"_s, session.index()),
                      u"Use the simulated bench"_s))
    , m_session(session)
    , m_box(box)
{
    setFont(QApplication::font()); // the box has another, for replies
    lblHint->setText(text);
    cmdBench->setShortcut(QKeySequence(u"Ctrl+B"_s)); // no letter is left
    cmdBench->setToolTip(
        u"Simulated devices answer behind every Channel that is not connected (Ctrl+B)"_s);
    auto *rows = new QVBoxLayout(this);
    rows->addWidget(lblHint);
    rows->addLayout(row({cmdBench, nullptr}));
    rows->addStretch();
    connect(cmdBench, &QPushButton::clicked, this, &ConnectHint::benchWanted);
    using Session = ChannelSession;
    connect(&session, &Session::openChanged, this, &ConnectHint::showWhereEmpty);
    connect(&session, &Session::responseReplaced, this, &ConnectHint::showWhereEmpty);
    connect(&session, &Session::responseAppended, this, &ConnectHint::showWhereEmpty);
    box.viewport()->installEventFilter(this);
    showWhereEmpty();
}

void ConnectHint::withdrawBench()
{
    cmdBench->hide();
}

void ConnectHint::showWhereEmpty()
{
    setVisible(!m_session.isOpen() && !m_session.reconnect().isInCharge() &&
               m_session.response().bytes().isEmpty());
    fill();
}

/// It takes all of the box, which is high enough for it.
void ConnectHint::fill()
{
    const QRect place = m_box.viewport()->rect();
    setGeometry(place);
    const int needed = layout()->heightForWidth(place.width());
    m_box.setMinimumHeight(isHidden() ? 0 : needed + m_box.height() - place.height());
}

bool ConnectHint::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Resize)
        fill();
    return QWidget::eventFilter(watched, event);
}

} // namespace corvane
