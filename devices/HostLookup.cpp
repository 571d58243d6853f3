#include "devices/HostLookup.h"

#include <QUrl>

#include <memory>

#ifdef Q_OS_WIN
#include <winsock2.h>
#include <ws2tcpip.h>
#else
#include <netdb.h>
#include <sys/socket.h>
#endif

namespace corvane {

QHostInfo hostLookup::systemHost(const QString &name)
{
    QHostInfo host;
    // A name of other letters than ASCII's is asked for in its encoded form.
    const QByteArray encoded = QUrl::toAce(name);
    addrinfo wanted{};
    wanted.ai_family = AF_UNSPEC;
    wanted.ai_socktype = SOCK_STREAM;
    addrinfo *list = nullptr;
    const int fault =
        encoded.isEmpty() ? EAI_NONAME : getaddrinfo(encoded.constData(), nullptr, &wanted, &list);
    if (fault != 0) {
        host.setError(fault == EAI_AGAIN ? QHostInfo::UnknownError : QHostInfo::HostNotFound);
        return host;
    }
    const std::unique_ptr<addrinfo, decltype(&freeaddrinfo)> owner(list, &freeaddrinfo);
    QList<QHostAddress> found;
    for (const addrinfo *next = list; next; next = next->ai_next) {
        const QHostAddress address(next->ai_addr);
        if (!address.isNull() && !found.contains(address))
            found.append(address);
    }
    host.setAddresses(found);
    return host;
}

QList<QHostAddress> hostLookup::systemResolver(const QString &name)
{
    return systemHost(name).addresses();
}

} // namespace corvane
