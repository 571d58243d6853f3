#pragma once

#include "windows/lists/ListHost.h"

namespace corvane {

class ChannelSession;
class Main;

/// What the command lists see of the main window: its Channels by index.
class ListConnection : public ListHost
{
public:
    explicit ListConnection(Main &window)
        : m_window(window)
    {
    }

    [[nodiscard]] int showingChannel() const override;
    void applyEntries(int index) override;
    void cmdSend_Click_Public(int index) override;
    void setCommand(int index, const QString &text) override;
    void setResponse(int index, const QString &text) override;
    [[nodiscard]] QByteArray response(int index) const override;
    void setTransferTimer(int index, bool running) override;
    [[nodiscard]] bool isTransferTimerRunning(int index) const override;
    void setRunning(int index, bool running) override;
    [[nodiscard]] bool isClosed(int index) const override;
    [[nodiscard]] QString channelName(int index) const override;
    void stopOperation(int index) override;
    void clearLoop(int index) override;
    void clearLog(int index) override;
    void setCaption(const QString &caption) override;

private:
    [[nodiscard]] ChannelSession &session(int index) const;

    Main &m_window;
};

} // namespace corvane
