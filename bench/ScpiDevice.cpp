// SPDX-License-Identifier: GPL-3.0-or-later
#include "bench/ScpiDevice.h"

#include "bench/Text.h"

#include <QList>

#include <utility>

namespace corvane::bench {

namespace {

constexpr size_t longestErrorQueue = 10;

QList<QByteArray> commandsOf(const QByteArray &line)
{
    QList<QByteArray> commands;
    QByteArray command;
    bool quoted = false;
    for (const char c : line) {
        if (c == '"')
            quoted = !quoted;
        if (c == ';' && !quoted)
            commands.append(std::exchange(command, {}));
        else
            command.append(c);
    }
    commands.append(command);
    return commands;
}

} // namespace

std::optional<QByteArray> ScpiDevice::answer(const QByteArray &line)
{
    Reply reply;
    for (const QByteArray &text : commandsOf(line)) {
        const QByteArray command = text.trimmed();
        if (command.isEmpty())
            continue;
        const Reply part = run(command);
        if (part)
            reply = reply ? *reply + ';' + *part : *part;
    }
    return reply;
}

ScpiDevice::Reply ScpiDevice::run(const QByteArray &command)
{
    const auto [header, arguments] = text::wordAndRest(command);
    if (text::matches(header, "*IDN?"))
        return identity();
    if (text::matches(header, "SYSTem:ERRor?")) {
        if (m_errors.empty())
            return "0,\"No error\"";
        const QByteArray error = m_errors.front();
        m_errors.pop_front();
        return error;
    }
    if (text::matches(header, "*CLS")) {
        clearErrors();
        return done();
    }
    return execute(header, arguments);
}

ScpiDevice::Reply ScpiDevice::done() const
{
    return m_acknowledge == Acknowledge::Yes ? Reply("OK") : std::nullopt;
}

ScpiDevice::Reply ScpiDevice::refuse(int code, const QByteArray &text)
{
    const QByteArray error = QByteArray::number(code) + ",\"" + text + '"';
    if (m_errors.size() < longestErrorQueue)
        m_errors.push_back(error);
    else
        m_errors.back() = "-350,\"Queue overflow\"";
    return m_acknowledge == Acknowledge::Yes ? Reply("ERROR " + error) : std::nullopt;
}

} // namespace corvane::bench
