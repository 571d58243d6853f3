#include "core/setup/modWinsockAPI.h"

#include "core/setup/SocketTexts.h"
#include "core/setup/SocketsApi.h"

#include <QScopeGuard>

namespace corvane {

namespace {

constexpr std::uint16_t version11 = 257;

QString dotted(const SocketsApi::Address &address)
{
    QString text;
    for (const std::uint8_t byte : address)
        text += QString::number(byte) + u'.';
    text.chop(1);
    return text;
}

} // namespace

LocalAddress modWinsockAPI::find(SocketsApi &sockets)
{
    if (const int code = sockets.start(version11); code != 0)
        return {.startFailure = code};
    const auto ended = qScopeGuard([&sockets] { sockets.cleanUp(); });
    const auto host = sockets.hostName();
    if (!host)
        return {.failure = sockets.lastError()};
    const auto name = QString::fromLocal8Bit(*host).trimmed().toLocal8Bit().toStdString();
    const auto addresses = sockets.addresses(name);
    if (addresses.empty())
        return {.failure = sockets.lastError()};
    return {.text = dotted(addresses.front())};
}

QString modWinsockAPI::taken(const LocalAddress &found, Dialogs &dialogs, QObject *asker)
{
    if (found.startFailure)
        dialogs.showMessage(asker, {.text = socketTexts::startFailure(*found.startFailure),
                                    .icon = Dialogs::Icon::Stop});
    else if (found.failure)
        dialogs.showMessage(asker, {.text = socketTexts::failure(*found.failure),
                                    .icon = Dialogs::Icon::Exclamation});
    return found.text;
}

QString modWinsockAPI::GetLocalIPAddress()
{
    return taken(find(m_sockets), m_dialogs);
}

bool modWinsockAPI::SocketsInitialize()
{
    const int code = m_sockets.start(version11);
    if (code != 0)
        taken({.startFailure = code}, m_dialogs);
    return code == 0;
}

void modWinsockAPI::ReportSocketError(int code)
{
    taken({.failure = code}, m_dialogs);
}

} // namespace corvane
