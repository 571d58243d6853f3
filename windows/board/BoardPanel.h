#pragma once

#include <QWidget>

namespace corvane {

class BoardLink;
class BoardSession;

/// What the board window's pages have in common: the link, the session, and actions that cannot be
/// used while an operation runs.
class BoardPanel : public QWidget
{
    Q_OBJECT

public:
    BoardPanel(BoardLink &link, BoardSession &session, QWidget *parent = nullptr);

protected:
    /// The control is disabled while any operation of the board window runs.
    template <class Control>
    Control *exchanging(Control *control)
    {
        connect(this, &BoardPanel::idleChanged, control, &QWidget::setEnabled);
        return control;
    }

    BoardLink &m_link;
    BoardSession &m_session;

Q_SIGNALS:
    void idleChanged(bool idle);
};

} // namespace corvane
