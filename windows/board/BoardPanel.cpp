#include "windows/board/BoardPanel.h"

namespace corvane {

BoardPanel::BoardPanel(BoardLink &link, BoardSession &session)
    : m_link(link)
    , m_session(session)
{
    connect(&session, &BoardSession::runningChanged, this,
            [this](bool running) { Q_EMIT idleChanged(!running); });
}

} // namespace corvane
