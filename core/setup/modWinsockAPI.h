#pragma once

#include "core/text/Dialogs.h"

#include <QString>

#include <optional>

namespace corvane {

class SocketsApi;

/// The computer's own address, or why it is not known.
struct LocalAddress
{
    QString text{};
    /// The code that starting the sockets library, or a later call to it, failed with.
    std::optional<int> startFailure{};
    std::optional<int> failure{};
};

/// Finds the computer's own IPv4 address and words the failures of the sockets library. It leaves
/// the calls to the operating system to SocketsApi and has nothing to do with the Channels'
/// sockets.
class modWinsockAPI
{
public:
    /// The mask that goes with the address.
    static constexpr auto subnetMask = u"255.255.255.0";

    modWinsockAPI(SocketsApi &sockets, Dialogs &dialogs)
        : m_sockets(sockets)
        , m_dialogs(dialogs)
    {
    }

    /// Looks the address up and shows nothing. A name server that is silent holds it up for as long
    /// as the system's resolver has patience, so it may be called on any thread.
    static LocalAddress find(SocketsApi &sockets);
    /// The address that was found; empty after a failure, which has then been shown in one message.
    static QString taken(const LocalAddress &found, Dialogs &dialogs, QObject *asker = nullptr);

    /// The computer's first IPv4 address as "192.168.1.20"; empty after any failure, which has then
    /// been shown in one message.
    QString GetLocalIPAddress();

    /// Starts the sockets library, version 1.1. A failure is shown and gives false.
    bool SocketsInitialize();

    /// Shows the message for a code of the sockets library; an unknown one is shown by its number.
    void ReportSocketError(int code);

private:
    SocketsApi &m_sockets;
    Dialogs &m_dialogs;
};

} // namespace corvane
