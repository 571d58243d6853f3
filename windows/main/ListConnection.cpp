#include "windows/main/ListConnection.h"

#include "core/channels/ChannelTexts.h"
#include "windows/main/Channel.h"
#include "windows/main/Main.h"

#include <QTabWidget>

namespace corvane {

int ListConnection::showingChannel() const
{
    return m_window.tabChannels->currentIndex();
}

void ListConnection::applyEntries(int index)
{
    if (Channel *channel = m_window.channel(index))
        channel->applyPendingEntries();
}

void ListConnection::cmdSend_Click_Public(int index)
{
    m_window.cmdSend_Click_Public(index);
}

void ListConnection::setCommand(int index, const QString &text)
{
    if (Channel *channel = m_window.channel(index))
        channel->setCommand(text);
}

void ListConnection::setResponse(int index, const QString &text)
{
    if (const Channel *channel = m_window.channel(index))
        channel->txtIn->setText(text);
}

QByteArray ListConnection::response(int index) const
{
    const Channel *channel = m_window.channel(index);
    return channel ? channel->txtIn->bytes() : QByteArray();
}

void ListConnection::setTransferTimer(int index, bool running)
{
    const Channel *channel = m_window.channel(index);
    if (!channel)
        return;
    if (running)
        channel->TimerTransfer->start();
    else
        channel->TimerTransfer->stop();
}

bool ListConnection::isTransferTimerRunning(int index) const
{
    const Channel *channel = m_window.channel(index);
    return channel != nullptr && channel->TimerTransfer->isActive();
}

bool ListConnection::isClosed(int index) const
{
    const Channel *channel = m_window.channel(index);
    return index != channels::ieee488 && channel != nullptr && !channel->isOpen();
}

QString ListConnection::channelName(int index) const
{
    return channelTexts::channelCaptions.at(static_cast<size_t>(index));
}

void ListConnection::stopOperation(int index)
{
    m_window.cmdStop_Click(index);
}

void ListConnection::clearLoop(int index)
{
    if (const Channel *channel = m_window.channel(index))
        channel->chkLoop->setChecked(false);
}

void ListConnection::clearLog(int index)
{
    if (const Channel *channel = m_window.channel(index))
        channel->chkLog->setChecked(false); // its handler runs when it was checked
}

void ListConnection::setCaption(const QString &caption)
{
    m_window.setWindowTitle(caption);
}

} // namespace corvane
