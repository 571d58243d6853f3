#pragma once

#include <QByteArray>
#include <QString>

namespace corvane {

/// What the command lists need of the main window and its Channels. The lists never talk to a port
/// themselves.
class ListHost
{
public:
    virtual ~ListHost() = default;

    /// The Channel whose tab is showing.
    [[nodiscard]] virtual int showingChannel() const = 0;

    /// A list is about to be run on the Channel: what is still being typed into its entries counts.
    virtual void applyEntries(int index) = 0;
    /// Sends the Channel's command box and stops its TimerTransfer, also when the send fails; shows
    /// its own messages, and may process events meanwhile.
    virtual void cmdSend_Click_Public(int index) = 0;
    /// Puts a text into cboOut of the Channel.
    virtual void setCommand(int index, const QString &text) = 0;
    /// Puts a text into txtIn of the Channel.
    virtual void setResponse(int index, const QString &text) = 0;
    /// The whole text of txtIn of the Channel, a byte a character.
    [[nodiscard]] virtual QByteArray response(int index) const = 0;

    /// Starts or stops TimerTransfer of the Channel, which ticks
    /// TransferEngine::TimerTransfer_Timer. Starting a running timer lets its interval begin anew.
    virtual void setTransferTimer(int index, bool running) = 0;
    [[nodiscard]] virtual bool isTransferTimerRunning(int index) const = 0;
    /// A list runs over the Channel from now on, or no longer.
    virtual void setRunning(int index, bool running) = 0;
    /// The Channel has no connection now. The GPIB Channel never is: its time-out tells.
    [[nodiscard]] virtual bool isClosed(int index) const = 0;
    /// What messages call the Channel.
    [[nodiscard]] virtual QString channelName(int index) const = 0;
    /// Runs cmdStop_Click of the Channel, which calls TransferEngine::ResetTransferData.
    virtual void stopOperation(int index) = 0;
    /// Unchecks chkLoop of the Channel.
    virtual void clearLoop(int index) = 0;
    /// Unchecks chkLog of the Channel, when it is checked, and runs its handler.
    virtual void clearLog(int index) = 0;

    /// Sets the main window's caption.
    virtual void setCaption(const QString &caption) = 0;

protected:
    ListHost() = default;
    Q_DISABLE_COPY_MOVE(ListHost)
};

} // namespace corvane
