#pragma once

#include "common/Module1.h"

#include <QByteArrayView>
#include <QString>

namespace corvane {

class Clock;
class Dialogs;
class WaitGroup;

/// What a Channel needs of the window around it.
class ChannelHost
{
public:
    virtual ~ChannelHost() = default;

    /// The Channel's command goes out.
    virtual void commandSent(int index, const QString &command) = 0;
    /// A reply is in the response box of Channel `index`: its first `keep` bytes, dropped ones
    /// among them, were there before, `tail` follows them. During a list run it goes into the grid
    /// and lets the run continue.
    virtual void replyArrived(int index, qsizetype keep, QByteArrayView tail) = 0;
    /// The GPIB Channel read nothing within its time-out during a list run; the box says so.
    virtual void replyTimedOut(int index) = 0;
    /// Ends the list run that is on, if one is.
    virtual void ResetTransferData(int index) = 0;
    virtual void TimerTransfer_Timer(int index) = 0;
    /// The Channel's log box was clicked.
    virtual void chkLog_Click(int index) = 0;
    /// The list buttons of the Channel's tab: get, send and stop.
    virtual void cmdLoadFrmChmber_Click(int index) = 0;
    virtual void cmdLoadToChmber_Click(int index) = 0;
    virtual void cmdStop_Click(int index) = 0;
    /// The text that echo removal looks for, "<05:" for address 05.
    [[nodiscard]] virtual QByteArray echoPrefix() const = 0;
    /// Says in the window, without a message box, what happened to the Channel's device. It stays
    /// there until clearFault, which also follows when the Channel is open again.
    virtual void reportFault(int index, const QString &description) = 0;
    /// The Channel's device works again.
    virtual void clearFault(int index) = 0;
    /// Says what the program is waiting for, until it is called with an empty text.
    virtual void showProgress(const QString &text) = 0;
    /// Says in the window what is to know about the reply in the Channel's box; empty: it is whole.
    virtual void noteReply(int index, const QString &note) = 0;
    /// A command list runs over the Channel.
    [[nodiscard]] virtual bool runsList(int index) const = 0;

    /// Why the Channel must not send now (the GPIB search or the board window uses its device);
    /// empty when it may.
    [[nodiscard]] virtual QString channelRefusal(int index) const = 0;

protected:
    ChannelHost() = default;
    Q_DISABLE_COPY_MOVE(ChannelHost)
};

/// What all Channels share.
struct ChannelContext
{
    ChannelHost &host;
    Module1 &module;
    Dialogs &dialogs;
    WaitGroup &waits;
};

} // namespace corvane
