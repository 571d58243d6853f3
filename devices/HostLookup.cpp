// SPDX-License-Identifier: GPL-3.0-or-later
#include "devices/HostLookup.h"

#include <QMap>
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

namespace {

constexpr int noDataRecord = 11004;

int codeOf(int fault)
{
    static const QMap<int, int> codes{
#ifdef EAI_NODATA
        {EAI_NODATA, noDataRecord},
#endif
        {EAI_NONAME, 11001},
        {EAI_AGAIN, 11002}};
    return codes.value(fault, 11003);
}

hostLookup::Answer ask(const QString &name, int family)
{
    // A name of other letters than ASCII's is asked for in its encoded form.
    const QByteArray host = QUrl::toAce(name);
    addrinfo wanted{};
    wanted.ai_family = family;
    wanted.ai_socktype = SOCK_STREAM;
    addrinfo *list = nullptr;
    const int fault =
        host.isEmpty() ? EAI_NONAME : getaddrinfo(host.constData(), nullptr, &wanted, &list);
    if (fault != 0)
        return {.fault = codeOf(fault)};
    const std::unique_ptr<addrinfo, decltype(&freeaddrinfo)> owner(list, &freeaddrinfo);
    hostLookup::Answer answer;
    for (const addrinfo *next = list; next; next = next->ai_next) {
        const QHostAddress address(next->ai_addr);
        if (!address.isNull() && !answer.addresses.contains(address))
            answer.addresses.append(address);
    }
    if (answer.addresses.isEmpty())
        answer.fault = noDataRecord;
    return answer;
}

} // namespace

hostLookup::Answer hostLookup::systemAnswer(const QString &name)
{
    return ask(name, AF_INET);
}

QList<QHostAddress> hostLookup::systemResolver(const QString &name)
{
    return ask(name, AF_UNSPEC).addresses;
}

} // namespace corvane
