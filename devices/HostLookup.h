// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QHostAddress>
#include <QList>
#include <QString>

#include <functional>

namespace corvane::hostLookup {

/// The addresses of a host in the order to be tried, none for a name that is not known; may block
/// for as long as it likes, on any thread. It must own all it uses, and throw nothing.
using Resolver = std::function<QList<QHostAddress>(const QString &name)>;

struct Answer
{
    QList<QHostAddress> addresses{};
    /// Why there is none, 11001..11004 as the sockets library numbers it; 0: there is one.
    int fault = 0;
};

/// What the system's resolver says, of the host's IPv4 addresses. The toolkit's own would hold up
/// the end of the program while a name server is silent, tells less of a fault, and passes over
/// the addresses of a computer that has none of the kind outside itself.
Answer systemAnswer(const QString &name);
/// The host's addresses of every kind.
QList<QHostAddress> systemResolver(const QString &name);

} // namespace corvane::hostLookup
