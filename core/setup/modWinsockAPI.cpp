#include "core/setup/modWinsockAPI.h"

#include "core/setup/SocketTexts.h"
#include "core/text/Dialogs.h"

#include <QHostAddress>

#include <algorithm>

namespace corvane {

namespace {

constexpr int hostNotFound = 11001;
constexpr int serverFailure = 11002;
constexpr int noDataRecord = 11004;

} // namespace

LocalAddress modWinsockAPI::find(const Resolver &resolve)
{
    const QHostInfo host = resolve(QHostInfo::localHostName().trimmed());
    if (host.error() != QHostInfo::NoError)
        return {.failure = host.error() == QHostInfo::HostNotFound ? hostNotFound : serverFailure};
    const QList<QHostAddress> addresses = host.addresses();
    const auto first = std::ranges::find(addresses, QHostAddress::IPv4Protocol,
                                         [](const QHostAddress &each) { return each.protocol(); });
    if (first == addresses.end())
        return {.failure = noDataRecord};
    return {.text = first->toString()};
}

QString modWinsockAPI::taken(const LocalAddress &found, Dialogs &dialogs, QObject *asker)
{
    if (found.failure)
        dialogs.showMessage(asker, {.text = socketTexts::failure(*found.failure),
                                    .icon = Dialogs::Icon::Exclamation});
    return found.text;
}

QString modWinsockAPI::GetLocalIPAddress()
{
    return SocketsInitialize() ? taken(find(m_resolve), m_dialogs) : QString();
}

bool modWinsockAPI::SocketsInitialize(int code)
{
    if (code != 0)
        m_dialogs.showMessage(
            nullptr, {.text = socketTexts::startFailure(code), .icon = Dialogs::Icon::Stop});
    return code == 0;
}

void modWinsockAPI::ReportSocketError(int code)
{
    taken({.failure = code}, m_dialogs);
}

} // namespace corvane
