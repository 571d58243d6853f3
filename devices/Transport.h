// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArrayView>
#include <QObject>

namespace corvane {

/// What a serial port, a TCP client and the GPIB control have in common: bytes go out and come in,
/// and whoever uses it, that is told.
class Transport : public QObject
{
    Q_OBJECT

Q_SIGNALS:
    /// The bytes were handed to the system, or have been taken from it. They are gone when the
    /// receiver returns.
    void sent(QByteArrayView bytes);
    void received(QByteArrayView bytes);
    /// A send or a read failed; it is thrown on behind this.
    void failed(const QString &description);
    /// A read found nothing within its time-out.
    void timedOut();
    /// What is sent from now on goes to another device of the bus.
    void addressed(const QString &address);

protected:
    /// Sends, or takes what has come. Throws PlatformError. False: cancelled meanwhile, and whether
    /// the bytes have left is not known.
    virtual bool put(const QByteArray &bytes) = 0;
    virtual QByteArray take() = 0;

    /// The same, and told, unless it was cancelled.
    void send(const QByteArray &bytes);
    QByteArray receive();
};

} // namespace corvane
