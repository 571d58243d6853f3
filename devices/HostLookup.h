#pragma once

#include "devices/DetachedCall.h"

#include <QHostAddress>
#include <QList>
#include <QString>

namespace corvane {

/// Asks the system for the addresses of a host without blocking its caller, and without holding up
/// the end of the program as the toolkit's own look-up does when a name server is silent.
class HostLookup
{
public:
    /// The addresses of a name in the order to be tried; may block for as long as it likes, on any
    /// thread.
    using Resolver = std::function<QList<QHostAddress>(const QString &name)>;
    using Found = std::function<void(const QList<QHostAddress> &addresses)>;

    /// The system's resolver.
    static QList<QHostAddress> systemResolver(const QString &name);

    explicit HostLookup(Resolver resolver = systemResolver)
        : m_resolver(std::move(resolver))
    {
    }

    /// `found` gets the addresses, none for a name that is not known, in the event loop. An earlier
    /// look-up is forgotten. Throws as DetachedCall does.
    void start(const QString &name, Found found);
    void forget() { m_call.forget(); }

private:
    Resolver m_resolver;
    DetachedCall m_call;
};

} // namespace corvane
