#include "core/setup/SocketsApi.h"

#include "Check.h"

using namespace corvane;

int main()
{
    const auto sockets = systemSockets();
    check::that(sockets->addresses("localhost").empty() && sockets->lastError() == 10093,
                "nothing resolves before the start");
    check::that(sockets->start(257) == 0, "version 1.1 starts");

    const auto name = sockets->hostName();
    check::that(name && !name->empty(), "the computer has a name");
    const auto local = sockets->addresses("localhost");
    check::that(!local.empty() && local.front() == SocketsApi::Address{127, 0, 0, 1},
                "localhost is 127.0.0.1");
    check::that(sockets->addresses("no-such-host.invalid").empty(), "an unknown name is refused");
    check::that(sockets->lastError() >= 11001 && sockets->lastError() <= 11004,
                "the refusal has a code of the resolver");

    sockets->cleanUp();
    check::that(sockets->addresses("localhost").empty(), "nothing resolves after the end");
    return check::result();
}
