#include "windows/main/ListConnection.h"

#include "windows/main/ChannelTab.h"
#include "windows/main/Main.h"

#include <QTabWidget>

namespace corvane {

int ListConnection::showingChannel() const
{
    return m_window.tabChannels->currentIndex();
}

void ListConnection::applyEntries(int index)
{
    if (ChannelTab *tab = m_window.channel(index))
        tab->applyPendingEntries();
}

ChannelSession &ListConnection::session(int index) const
{
    return m_window.parts().channels.at(index);
}

void ListConnection::cmdSend_Click_Public(int index)
{
    session(index).send();
}

void ListConnection::setCommand(int index, const QString &text)
{
    session(index).setCommand(text);
}

void ListConnection::setResponse(int index, const QString &text)
{
    session(index).setResponse(text.toLatin1());
}

QByteArray ListConnection::response(int index) const
{
    return session(index).response().bytes();
}

void ListConnection::setTransferTimer(int index, bool running)
{
    if (running)
        session(index).TimerTransfer->start();
    else
        session(index).TimerTransfer->stop();
}

bool ListConnection::isTransferTimerRunning(int index) const
{
    return session(index).TimerTransfer->isActive();
}

void ListConnection::setRunning(int index, bool running)
{
    m_window.parts().channels.users().claim(index, ChannelUse::List, running);
}

bool ListConnection::isClosed(int index) const
{
    return session(index).isClosed();
}

QString ListConnection::channelName(int index) const
{
    return channelCaption(index);
}

void ListConnection::stopOperation(int index)
{
    m_window.cmdStop_Click(index);
}

void ListConnection::clearLoop(int index)
{
    session(index).setLooping(false);
}

void ListConnection::clearLog(int index)
{
    session(index).setLogged(false);
}

void ListConnection::setCaption(const QString &caption)
{
    m_window.setWindowTitle(caption);
}

} // namespace corvane
