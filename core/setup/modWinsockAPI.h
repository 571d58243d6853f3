// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "devices/HostLookup.h"

#include <functional>
#include <optional>

namespace corvane {

class Dialogs;

/// The computer's own address, or the code of the sockets library that tells why it is not known.
struct LocalAddress
{
    QString text{};
    std::optional<int> failure{};
};

/// Finds the computer's own IPv4 address and words the failures of the sockets library. It has
/// nothing to do with the Channels' sockets.
class modWinsockAPI
{
public:
    /// Looks a host up; blocks for as long as the system's resolver takes.
    using Resolver = std::function<hostLookup::Answer(const QString &host)>;

    /// The mask that goes with the address.

    explicit modWinsockAPI(Dialogs &dialogs, Resolver resolve = hostLookup::systemAnswer)
        : m_dialogs(dialogs)
        , m_resolve(std::move(resolve))
    {
    }

    /// Looks the address up and shows nothing. A name server that is silent holds it up for as long
    /// as the system's resolver has patience, so it may be called on any thread.
    static LocalAddress find(const Resolver &resolve = hostLookup::systemAnswer);
    /// The address that was found; empty after a failure, which has then been shown in one message.
    static QString taken(const LocalAddress &found, Dialogs &dialogs, QObject *asker = nullptr);

    /// The computer's first IPv4 address as "192.168.1.20"; empty after any failure, which has then
    /// been shown in one message.
    QString GetLocalIPAddress();

    /// Shows the message for the code that starting the sockets library ended with, and gives
    /// false; true for 0. The toolkit starts the library itself.
    bool SocketsInitialize(int code = 0);

    /// Shows the message for a code of the sockets library; an unknown one is shown by its number.
    void ReportSocketError(int code);

private:
    Dialogs &m_dialogs;
    const Resolver m_resolve;
};

} // namespace corvane
