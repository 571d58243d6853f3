#include "setup/modWinsockAPI.h"

#include "setup/SocketTexts.h"
#include "setup/SocketsApi.h"

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

QString modWinsockAPI::GetLocalIPAddress()
{
    if (!SocketsInitialize())
        return {};
    const auto ended = qScopeGuard([this] { m_sockets.cleanUp(); });
    const auto host = m_sockets.hostName();
    if (!host) {
        ReportSocketError(m_sockets.lastError());
        return {};
    }
    const auto name = QString::fromLocal8Bit(*host).trimmed().toLocal8Bit().toStdString();
    const auto addresses = m_sockets.addresses(name);
    if (addresses.empty()) {
        ReportSocketError(m_sockets.lastError());
        return {};
    }
    return dotted(addresses.front());
}

bool modWinsockAPI::SocketsInitialize()
{
    const int code = m_sockets.start(version11);
    if (code == 0)
        return true;
    m_dialogs.showMessage(nullptr,
                          {.text = socketTexts::startFailure(code), .icon = Dialogs::Icon::Stop});
    return false;
}

void modWinsockAPI::ReportSocketError(int code)
{
    m_dialogs.showMessage(nullptr,
                          {.text = socketTexts::failure(code), .icon = Dialogs::Icon::Exclamation});
}

} // namespace corvane
