// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/ChannelDriver.h"

#include "core/channels/ChannelSession.h"
#include "devices/WaitGroup.h"

namespace corvane {

namespace {

/// A reply is whole when nothing follows it for this long.
constexpr int quietMs = 60;

} // namespace

bool channelDriver::open(ChannelSession &session, WaitGroup &waits, int patienceMs)
{
    bool failed = false;
    const QObject watch;
    QObject::connect(&session, &ChannelSession::connectFailed, &watch,
                     [&failed] { failed = true; });
    session.open();
    waits.waitUntil([&] { return failed || session.isOpen(); }, patienceMs);
    return session.isOpen();
}

std::optional<QString> channelDriver::ask(ChannelSession &session, WaitGroup &waits,
                                          const QString &command, int patienceMs)
{
    int arrivals = 0;
    const QObject watch;
    QObject::connect(&session, &ChannelSession::replied, &watch, [&arrivals] { ++arrivals; });
    session.setCommand(command);
    session.send();
    waits.waitUntil([&] { return arrivals > 0; }, patienceMs);
    for (int seen = 0; seen != arrivals;) {
        seen = arrivals;
        waits.wait(quietMs);
    }
    return arrivals > 0 ? std::optional(QString::fromLatin1(session.response().bytes()))
                        : std::nullopt;
}

} // namespace corvane
