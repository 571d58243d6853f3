// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/board/BoardSession.h"

#include <QWidget>

namespace corvane {

/// What the board window's pages have in common: the link, the session, and actions that cannot be
/// used while an operation runs.
class BoardPanel : public QWidget
{
    Q_OBJECT

public:
    BoardPanel(BoardLink &link, BoardSession &session)
        : m_link(link)
        , m_session(session)
    {
        connect(&session, &BoardSession::runningChanged, this,
                [this](bool running) { Q_EMIT idleChanged(!running); });
    }

protected:
    /// The control is disabled while any operation of the board window runs.
    template <class Control>
    Control *exchanging(Control *control)
    {
        connect(this, &BoardPanel::idleChanged, control, &QWidget::setEnabled);
        return control;
    }
    /// Does the work as an operation, when one can begin.
    template <class Work>
    void operate(const Work &work)
    {
        if (const auto operation = m_session.begin())
            work();
    }

    BoardLink &m_link;
    BoardSession &m_session;

Q_SIGNALS:
    void idleChanged(bool idle);
};

} // namespace corvane
