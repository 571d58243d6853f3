#include "windows/board/BoardPanel.h"

#include "core/board/BoardSession.h"

namespace corvane {

BoardPanel::BoardPanel(BoardLink &link, BoardSession &session, QWidget *parent)
    : QWidget(parent)
    , m_link(link)
    , m_session(session)
{
    connect(&session, &BoardSession::runningChanged, this,
            [this](bool running) { Q_EMIT idleChanged(!running); });
}

} // namespace corvane
