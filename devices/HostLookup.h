#pragma once

#include <QHostInfo>

#include <functional>

namespace corvane::hostLookup {

/// The addresses of a host in the order to be tried, none for a name that is not known; may block
/// for as long as it likes, on any thread. It must own all it uses, and throw nothing.
using Resolver = std::function<QList<QHostAddress>(const QString &name)>;

/// What the system's resolver says of a host. The toolkit's own lookup would hold up the end of the
/// program while a name server is silent, or outlive what it needs.
QHostInfo systemHost(const QString &name);
/// Its addresses alone.
QList<QHostAddress> systemResolver(const QString &name);

} // namespace corvane::hostLookup
