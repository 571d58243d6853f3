// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/channels/ChannelUsers.h"
#include "core/channels/ResponseText.h"

#include <QObject>
#include <QStringList>
#include <QTimer>

#include <functional>

namespace corvane {

class Dialogs;
class PlatformError;
class Reconnect;
class Transport;
class WaitGroup;
struct Module1;

/// What all Channels share.
struct ChannelContext
{
    Module1 &module;
    Dialogs &dialogs;
    WaitGroup &waits;
    ChannelUsers &users;
};

/// What a technician would type into a Channel's connection row. An empty entry is left as it is.
struct ChannelEntries
{
    QString port{};
    QString host{};
    QString address{};
    QString settings{};
};

/// One Channel: its command and history, its connection, the reply, the loop and the two timers.
/// What goes over the wire and how is left to the transport below it.
///
/// It keeps all its state and says by signals what has changed; faults of an operation it shows
/// itself, in a message box.
class ChannelSession : public QObject
{
    Q_OBJECT

public:
    static constexpr int transferIntervalMs = 500;
    static constexpr int startPeriodMs = 1000;
    static constexpr int minPeriodMs = 10;
    static constexpr int maxPeriodMs = 3'600'000;
    static constexpr int historyLimit = 21;

    /// The light beside the status.
    enum class Light { Hidden, Dark, Bright };

    [[nodiscard]] const ChannelTraits &traits() const { return m_traits; }
    [[nodiscard]] int index() const { return m_traits.index; }
    /// What the bytes go over; others use it as well, the board link and the GPIB search.
    [[nodiscard]] Transport &transport() const { return m_transport; }
    /// What messages call the Channel: the title of its tab.
    [[nodiscard]] const QString &caption() const { return m_traits.caption; }

    /// The start-up defaults: timers, light, wait count.
    void initialise();
    /// Stops both timers; nothing of the Channel runs any more.
    void stopTimers();

    // The connection

    /// Opens the transport. A fault is shown, and said by connectFailed, at once or later.
    void open();
    void close();
    /// Opens the transport at the place that it was open at last, whatever the entries hold by now,
    /// and says a fault by connectFailed alone.
    void reopen();
    /// The transport is on its way to be open.
    [[nodiscard]] virtual bool isConnecting() const { return false; }
    /// Sees to a connection that was lost.
    [[nodiscard]] Reconnect &reconnect() const { return *m_reconnect; }
    /// The port is open, the socket connected, the GPIB control configured.
    [[nodiscard]] virtual bool isOpen() const = 0;
    /// There is no connection now. The GPIB Channel has no such state: its time-out tells.
    [[nodiscard]] bool isClosed() const { return m_traits.hasClosedState() && !isOpen(); }
    /// Where the device is: of an open Channel the place that it is connected to, which its entries
    /// may not name any more, else the place in the entries.
    [[nodiscard]] virtual QString place() const = 0;
    /// The state of the transport in its own words; empty when it has none to tell.
    [[nodiscard]] const QString &status() const { return m_status; }
    /// "Connected to ..."; empty while the Channel is not open.
    [[nodiscard]] const QString &connection() const { return m_connection; }
    /// Fills in the connection's entries. Throws PlatformError for an entry that the Channel does
    /// not have or does not offer.
    virtual void fillIn(const ChannelEntries &entries) = 0;

    // Commands

    [[nodiscard]] const QString &command() const { return m_command; }
    void setCommand(const QString &command);
    /// Sends the command. No effect while an earlier send of this Channel still waits.
    void send();
    /// The commands sent before, oldest first.
    [[nodiscard]] const QStringList &history() const { return m_history; }

    // The reply

    [[nodiscard]] const ResponseText &response() const { return m_response; }
    void setResponse(const QByteArray &bytes);
    /// What arrived last ended a line.
    [[nodiscard]] bool endsLine() const { return m_endsLine; }
    /// The box is emptied, and nothing is to be known of its reply any more.
    void clearResponse();

    // The loop

    [[nodiscard]] bool isLooping() const
    {
        return m_context.users.isUsed(index(), ChannelUse::Loop);
    }
    /// Repeats the command at every period. Not while a list runs, or somebody else uses the
    /// Channel.
    virtual void setLooping(bool on);
    [[nodiscard]] int periodMs() const { return m_periodMs; }
    /// Takes a period in range over; another one leaves the last.
    void setPeriod(int ms);

    [[nodiscard]] bool isLogged() const { return m_isLogged; }
    void setLogged(bool on);

    [[nodiscard]] Light light() const { return m_light; }

    // The timers and their ticks

    /// Status, loop, and the GPIB Channel's read.
    QTimer *Timer1;
    /// A tick is a step of the list run.
    QTimer *TimerTransfer;
    void Timer1_Timer();

Q_SIGNALS:
    void openChanged(bool open);
    /// The connection is about to be closed because somebody wants it.
    void closing();
    void statusChanged();
    void connectFailed(const QString &reason);

    void commandChanged(const QString &command);
    void historyChanged();
    void loopingChanged(bool looping);
    void periodChanged(int ms);
    void loggedChanged(bool logged);
    /// An entry of the connection row holds something else, or was refused and is as before.
    void entriesChanged();
    void lightChanged();

    /// A command goes out.
    void commandSent(const QString &command);
    /// The response is another one.
    void responseReplaced();
    /// An arrival stands in the response behind its first `keep` bytes, dropped ones among them.
    void responseAppended(qsizetype keep);
    /// A reply, or a piece of one, has arrived and stands in the response behind its first `keep`
    /// bytes.
    void replied(qsizetype keep, QByteArrayView tail);
    /// Nothing came within the GPIB time-out, and the response says so.
    void timedOut();
    /// A send or a read failed, or was refused, and the box that told it is closed: nothing repeats
    /// it, the loop is off. A closed Channel alone is no such fault.
    void sendFailed();

    /// What happened to the device; empty: it works again.
    void faultChanged(const QString &fault);
    /// What is to be known about the reply in the box; empty: it is whole.
    void noteChanged(const QString &note);
    /// What the Channel is waiting for, seconds maybe; empty: nothing any more.
    void progressChanged(const QString &progress);

protected:
    ChannelSession(int index, Transport &transport, const ChannelContext &context);

    /// Opens, closes the transport. A PlatformError is shown by the caller.
    virtual void openTransport() = 0;
    virtual void reopenTransport() { openTransport(); }
    virtual void closeTransport() = 0;
    /// Sends the command in the transport's framing.
    virtual void transmit(const QByteArray &command) = 0;
    /// One tick of the poll timer.
    virtual void poll() = 0;
    /// A send, a read or the connection failed: what the transport had noted of an exchange is
    /// forgotten.
    virtual void forgetExchange() {}
    [[nodiscard]] virtual QString statusText() const = 0;
    /// Takes the transport's state over, at every tick and at once when it changes.
    void refreshStatus();

    /// Why the Channel must not send now; empty when it may.
    [[nodiscard]] QString refusal() const;
    /// Shows the not-connected message. A loop and a list run wait until the Channel is open again.
    void refuseNotConnected();
    /// Shows why nothing was sent; nothing repeats it.
    void refuseSend(const QString &message);
    /// A send or a read failed: its cause is in the window and the message in a box; nothing of the
    /// exchange is left.
    void exchangeFailed(const PlatformError &error, const QString &message);
    /// Says why the connection failed; in a box behind `message`, unless it is tried again anyway.
    void tellConnectFault(const QString &description, const QString &message);
    void tellFault(const QString &fault);
    void setNote(const QString &note);
    [[nodiscard]] const QString &note() const { return m_note; }
    void setLight(Light light);
    /// The light, if it is on, is bright no more.
    void dimLight();
    void showMessage(const QString &text);
    /// Throws PlatformError when the Channel is given an entry that it does not have.
    void refuseEntry(const QString &entry, const QString &value) const;

    /// The steps that every send begins with: clears the box, notes the command in the history.
    void beginReply();
    /// Appends an arrival to the box and says `note`, or that the box drops its oldest text, then
    /// delivers.
    void appendReply(QByteArrayView arrival, const ResponseText::Cleaning &cleaning,
                     const QString &note = {});
    /// The steps after an arrival: flags, wait count, whoever listens.
    void deliverReply(qsizetype keep);
    /// In a tick: one turn of the loop when it is on.
    void loopOnce();

    ChannelContext m_context;

private:
    void tryToOpen(const std::function<void()> &openIt);
    void remember();
    void tellRefusal(const QString &message);

    const ChannelTraits &m_traits;
    Transport &m_transport;
    QString m_status;
    QString m_connection;
    QString m_command;
    QStringList m_history;
    ResponseText m_response;
    QString m_note;
    bool m_endsLine = false;
    int m_periodMs = startPeriodMs;
    bool m_isLogged = false;
    Reconnect *const m_reconnect;
    Light m_light = Light::Hidden;
    bool m_sending = false; // a send is on the stack, with a wait or a box of its own maybe
};

} // namespace corvane
