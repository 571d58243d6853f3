// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>

namespace corvane::bench {

/// Bytes both ways between a device and whoever talks to it: one TCP connection, one pseudo
/// terminal.
class ByteStream : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    /// Queues the bytes; they leave as fast as the other end takes them.
    virtual void send(const QByteArray &bytes) = 0;
    /// Bytes queued here that the system has not taken yet.
    [[nodiscard]] virtual qint64 backlog() const = 0;
    /// Breaks the connection. The other end may come back.
    virtual void dropPeer() = 0;

Q_SIGNALS:
    /// Somebody is at the other end now. A stream that cannot tell never says so.
    void opened();
    void received(const QByteArray &bytes);
    /// Nothing is queued any more.
    void drained();
    /// The connection is gone; of a stream that can come back, the connection so far.
    void closed();
};

/// Something that can be pulled out and put back.
class Plug
{
public:
    virtual ~Plug() = default;
    virtual void unplug() = 0;
    /// At the same place again; false when that is not possible now.
    virtual bool replug() = 0;
    [[nodiscard]] virtual bool isPlugged() const = 0;
    /// How the other end uses it, for people: "9600 baud, 1 stop bit", "2 connected". May be empty.
    [[nodiscard]] virtual QString state() const = 0;
    /// Forgets what waits to be taken by the other end.
    virtual void discardOutput() = 0;
};

} // namespace corvane::bench
