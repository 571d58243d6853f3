// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/setup/modWinsockAPI.h"

#include "core/setup/SocketTexts.h"
#include "core/text/Dialogs.h"

#include <QHostInfo>

namespace corvane {

LocalAddress modWinsockAPI::find(const Resolver &resolve)
{
    const auto [addresses, fault] = resolve(QHostInfo::localHostName().trimmed());
    if (fault != 0)
        return {.failure = fault};
    return {.text = addresses.front().toString()};
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
