#pragma once

#include <QByteArray>
#include <QString>

/// Carriage returns and line feeds, which end the lines of devices and files.
namespace corvane::lineEnds {

[[nodiscard]] inline bool isOne(char c)
{
    return c == '\r' || c == '\n';
}
[[nodiscard]] inline bool isOne(QChar c)
{
    return c == u'\r' || c == u'\n';
}

/// The text without any.
[[nodiscard]] inline QByteArray removed(QByteArray text)
{
    text.removeIf([](char c) { return isOne(c); });
    return text;
}
[[nodiscard]] inline QString removed(QString text)
{
    text.removeIf([](QChar c) { return isOne(c); });
    return text;
}

} // namespace corvane::lineEnds
