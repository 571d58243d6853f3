#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace corvane {

/// The few calls to the operating system's sockets library that the computer's own address takes.
/// Free of Qt, so that it compiles and runs alone on every system; a test hands in its own.
class SocketsApi
{
public:
    using Address = std::array<std::uint8_t, 4>;

    virtual ~SocketsApi() = default;

    /// Starts the library, `version` with the major number in its low byte. 0 or an error code.
    virtual int start(std::uint16_t version) = 0;
    /// Ends what one successful start began.
    virtual void cleanUp() = 0;
    /// The computer's host name; nothing on a failure, lastError() says which.
    virtual std::optional<std::string> hostName() = 0;
    /// The IPv4 addresses of a host in the resolver's order; empty on a failure, lastError() says
    /// which. Blocks for as long as the system's resolver takes.
    virtual std::vector<Address> addresses(const std::string &host) = 0;
    /// The code of the last failure, in the numbers of the Windows Sockets library everywhere.
    [[nodiscard]] virtual int lastError() const = 0;

    SocketsApi(const SocketsApi &) = delete;
    SocketsApi &operator=(const SocketsApi &) = delete;

protected:
    SocketsApi() = default;
};

/// The system's own: the Windows Sockets library, elsewhere the local resolver.
std::unique_ptr<SocketsApi> systemSockets();

#ifndef _WIN32
/// The Windows Sockets code for what the local resolver returned. `systemError` is errno, which
/// counts when the resolver refers to it.
int socketsCodeOfResolver(int resolverError, int systemError);
/// The Windows Sockets code for an errno of the host name call.
int socketsCodeOfSystem(int systemError);
#endif

} // namespace corvane
