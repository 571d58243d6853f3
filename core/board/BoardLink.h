// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/board/MeterReading.h"
#include "devices/WaitGroup.h"

#include <QHash>
#include <QObject>
#include <QSet>
#include <QString>

namespace corvane {

class ChannelSet;
class ChannelSession;
class GpibControl;

/// The half of an exchange that failed.
enum class Exchange { Send, Read };

/// The link to the board over a Channel that the main window has connected: sending a command,
/// taking its answer, waiting, and addressing the reference meter on the shared GPIB control. It
/// opens no port, and it leaves to BoardSession who may use it and when.
///
/// A Channel that is closed or fails gives the empty answer and exchangeFailed; nothing but
/// readMeter and addressGpib throws.
///
/// Answers carry no mark of what they answer. A command whose answer stayed out may still get one:
/// before the next command goes the same way it has a time to arrive in, and is dropped.
class BoardLink : public QObject
{
    Q_OBJECT

public:
    /// Numbered as the "Communications Method" options are, and as the Channels from RS 232 on.
    enum Method : qint16 { Rs232 = 0, Ieee = 1, TcpIp = 2 };

    BoardLink(ChannelSet &channels, WaitGroup &waits, QObject *parent = nullptr);

    /// 0..2; holds from the next OutputToSbc on. Others are ignored.
    void setMethod(int method);
    [[nodiscard]] Method method() const { return m_method; }
    /// The main window's Channel that the method borrows.
    [[nodiscard]] int channel() const;

    /// Sends a command. Appends a carriage return to it when it holds none. Nothing leaves any more
    /// once `isCancelled` holds.
    void OutputToSbc(QString &command, const Clock::Condition &isCancelled = Clock::never);
    /// The last command went out.
    [[nodiscard]] bool isSent() const { return m_isSent; }
    /// Why the last exchange failed; empty when it did not.
    [[nodiscard]] const QString &fault() const { return m_fault; }
    /// Takes the answer to the last command; empty when there is none, or nothing but line ends.
    void InputFromSbc(QString &reply);
    /// Sends a command, waits for `beforeReadMs` and returns the answer; that of a command which
    /// went out is read in spite of a cancel.
    QString ask(QString command, qint16 beforeReadMs,
                const Clock::Condition &isCancelled = Clock::never);

    /// Waits for `ms` milliseconds, or until `endEarly` holds or the link is stopped.
    void PauseMS(qint16 ms, const Clock::Condition &endEarly = Clock::never);

    /// The answer of the reference meter to one reading, see askMeter.
    QString readMeter(int address, const Clock::Condition &isCancelled = Clock::never);
    /// Addresses the GPIB control to a device and opens it. Throws PlatformError.
    void addressGpib(const QString &connectString);
    [[nodiscard]] QString gpibConnectString() const;
    void setGpibConnectString(const QString &text);

    /// True when a wait was ended by stop: return at once, without another exchange.
    [[nodiscard]] bool isStopped() const { return m_waits.isClosed(); }
    /// Ends every wait and every call that blocks on the bus.
    void stop();
    /// True when commands go over the Channel, or the answer to the last one comes over it.
    [[nodiscard]] bool usesChannel(int channel) const;
    /// Lets waits run again after stop.
    void resume() { m_waits.reopen(); }
    /// No answer is waited for any more.
    void forgetAnswer();

Q_SIGNALS:
    /// usesChannel may answer otherwise from now on.
    void channelsChanged();
    /// The command last sent, without its terminator; empty at the start of an exchange.
    void commandShown(const QString &text);
    /// The answer, or "NO RESPONSE", and what is to be said about it, if anything is.
    void replyShown(const QString &text, const QString &note);
    /// The Channel could not send or be read; the exchange has no answer.
    void exchangeFailed(int channel, Exchange half, const QString &cause);

private:
    template <class Operation>
    auto onGpib(Operation operation) const;
    [[nodiscard]] static int channelOf(Method method);
    /// The Channel that the last command went over.
    [[nodiscard]] ChannelSession &sentOver() const;
    [[nodiscard]] GpibControl &control() const;
    void send(const QString &text);
    QString readReply();
    [[nodiscard]] QByteArray received() const;
    /// On a route whose answers end their lines: this one has not ended yet.
    [[nodiscard]] bool isCut() const;
    void awaitRest(QString &reply);
    /// On the bus an answer that comes late is read for that to the next command, unless another
    /// one follows.
    void passLateAnswers(QString &reply);
    /// One of the answers that stayed out has come.
    void settle(const QString &route);
    [[nodiscard]] bool isLateOn(const QString &route) const;
    [[nodiscard]] QString route() const;
    void dropLateAnswers(const Clock::Condition &isEnded);
    void expectLateAnswer();
    void fail(Exchange half, const QString &cause);

    /// Answers that stayed out on one route, and since when the oldest has.
    struct Unanswered
    {
        int count = 0;
        quint32 sinceMs = 0;
    };

    ChannelSet &m_channels;
    WaitGroup &m_waits;
    Method m_method = Ieee;
    Method m_sentBy = Ieee;
    bool m_isSent = false;
    QString m_fault;
    bool m_droppedLate = false;
    /// By route: the Channel, and on the GPIB bus the address.
    QHash<QString, Unanswered> m_unanswered;
    QSet<QString> m_endsLines; ///< the routes on which an answer has ended its line
    bool m_mayBeLate = false;  ///< an earlier answer is still out on the bus
    bool m_isCut = false;
    mutable int m_gpibCalls = 0;
};

} // namespace corvane
