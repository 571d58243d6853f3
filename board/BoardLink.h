#pragma once

#include "platform/WaitGroup.h"

#include <QObject>
#include <QString>

namespace corvane {

class BoardChannels;

/// The link to the board over a Channel that the main window has connected: sending a command,
/// taking its answer, waiting, and addressing the reference meter on the shared GPIB control. It
/// opens no port, and it leaves to BoardSession who may use it and when.
///
/// A Channel that is closed or fails gives the empty answer; nothing but readMeter and
/// addressGpib throws.
class BoardLink : public QObject
{
    Q_OBJECT

public:
    /// Numbered as the "Communications Method" options are.
    enum Method : qint16 { Rs232 = 0, Ieee = 1, TcpIp = 2 };

    BoardLink(BoardChannels &channels, WaitGroup &waits, QObject *parent = nullptr);

    /// 0..2; holds from the next OutputToSbc on. Others are ignored.
    void setMethod(int method);
    [[nodiscard]] Method method() const { return m_method; }
    /// The main window's Channel that the method borrows.
    [[nodiscard]] int channel() const;

    /// Sends a command. Appends a carriage return to it when it holds none.
    void OutputToSbc(QString &command);
    /// Why the last exchange failed; empty when it did not.
    [[nodiscard]] const QString &fault() const { return m_fault; }
    /// Takes the answer to the last command; empty when there is none.
    void InputFromSbc(QString &reply);
    /// Sends a command, waits for `beforeReadMs` and returns the answer.
    QString ask(QString command, qint16 beforeReadMs);

    /// Waits for `ms` milliseconds, or until `endEarly` holds or the link is stopped.
    void PauseMS(
        qint16 ms, const Clock::Condition &endEarly = [] { return false; });

    /// One reading of the reference meter, see ReadMeterValue.
    float readMeter(int address);
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
    void forgetAnswer() { m_isSent = false; }

    /// True when every character fits the wire's eight bits.
    static bool isSendable(const QString &text);
    /// A reply without the line ends that a GPIB read leaves in it, to be shown.
    static QString oneLine(const QString &reply);

Q_SIGNALS:
    /// The command last sent, without its terminator; empty at the start of an exchange.
    void commandShown(const QString &text);
    /// The answer, or "NO RESPONSE" with what failed below, if anything did.
    void replyShown(const QString &text, const QString &fault);

private:
    template <class Operation>
    auto onGpib(Operation operation) const;
    static int channelOf(Method method);
    void send(const QString &text);
    QString readReply();

    BoardChannels &m_channels;
    WaitGroup &m_waits;
    Method m_method = Ieee;
    Method m_sentBy = Ieee;
    bool m_isSent = false;
    QString m_fault;
    mutable int m_gpibCalls = 0;
};

} // namespace corvane
