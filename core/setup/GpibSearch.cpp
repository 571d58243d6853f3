// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/setup/GpibSearch.h"

#include "core/channels/GpibSession.h"
#include "core/channels/Module1.h"
#include "core/setup/SetupTexts.h"
#include "core/text/LineEnds.h"
#include "devices/DeviceAbsent.h"
#include "devices/GpibControl.h"

#include <QScopeGuard>

namespace corvane {

GpibSearch::GpibSearch(GpibSession &channel, ChannelUsers &users, Module1 &module, Clock &clock,
                       QObject *parent)
    : QObject(parent)
    , m_channel(channel)
    , m_users(users)
    , m_module(module)
    , m_waits(clock)
{
}

QString GpibSearch::refusal() const
{
    const QString refusal = m_users.refusal(m_channel.index(), ChannelUse::Search);
    return refusal.isEmpty() && control().isBusy()
               ? ChannelUsers::told(m_channel.index(), ChannelUse::Reply)
               : refusal;
}

GpibControl &GpibSearch::control() const
{
    return m_channel.control();
}

void GpibSearch::SearchGPIBLoop()
{
    if (m_running)
        return;
    m_running = true;
    m_users.claim(m_channel.index(), ChannelUse::Search);
    const auto leave = qScopeGuard([this] {
        m_running = false;
        m_users.release(m_channel.index(), ChannelUse::Search);
    });
    m_waits.reopen();
    m_faults.clear();
    Q_EMIT faultsChanged({});
    const QByteArray reply = probeBoards();
    Q_EMIT ended();
    if (reply.isEmpty())
        reportNothing();
    else
        reportFound(reply);
}

void GpibSearch::cancel()
{
    m_module.SearchCancelled = true;
    m_waits.close();
    if (m_running)
        control().cancel();
}

QByteArray GpibSearch::probeBoards()
{
    for (int board = 0; board < GpibAddress::boardCount; ++board) {
        QByteArray reply = probeBoard(board);
        if (!reply.isEmpty() || isCancelled())
            return reply;
    }
    return {};
}

QByteArray GpibSearch::probeBoard(int board)
{
    int faults = 0; // in a row
    for (int primary = 0; primary < addressesPerBoard; ++primary) {
        processPendingEvents();
        if (isCancelled())
            return {};
        Q_EMIT positionChanged(board * addressesPerBoard + primary + 1);
        const GpibAddress address{.board = board, .primary = primary, .secondary = {}};
        try {
            QByteArray reply = probe(address);
            if (!reply.isEmpty())
                return reply;
            faults = 0;
        } catch (const PlatformError &error) {
            ++faults;
            const bool there = isAdapterThere(board);
            if (isCancelled())
                return {};
            const bool left = !there || faults == faultsToLeave;
            if (left)
                m_faults.addLeft(address, primary - (faults - 1), error.description());
            else
                m_faults.addSkipped(address, error.description());
            Q_EMIT faultsChanged(m_faults.text());
            if (left)
                return {};
        }
    }
    return {};
}

/// Asked after a fault: was it the adapter's, or the address's alone?
bool GpibSearch::isAdapterThere(int board)
{
    try {
        return isCancelled() || !control().adapterVersion(board).isEmpty();
    } catch (const PlatformError &) {
        return false;
    }
}

QByteArray GpibSearch::probe(const GpibAddress &address)
{
    GpibControl &control = this->control();
    setStatus(address.toString());
    control.setConnectString(address.toString());
    control.reset();
    if (isCancelled())
        return {};
    const bool written = writeQuery(control);
    if (isCancelled() || m_waits.wait(replyDelayMs) == WaitEnd::Cancelled || isCancelled())
        return {};
    control.setConnectString(address.toString()); // the user may have chosen another meanwhile
    return written ? control.read() : QByteArray();
}

/// False when no device took the query.
bool GpibSearch::writeQuery(GpibControl &control)
{
    try {
        control.write(QByteArrayLiteral("*IDN?"));
        return true;
    } catch (const DeviceAbsent &) {
        return false;
    }
}

/// One batch of events: what was posted or clicked before now has been handled on return.
void GpibSearch::processPendingEvents()
{
    bool reached = false;
    QObject marker; // takes the posted call with it when the wait ends early
    QMetaObject::invokeMethod(
        &marker, [&reached] { reached = true; }, Qt::QueuedConnection);
    m_waits.waitUntil([&reached] { return reached; }, 1);
}

bool GpibSearch::isCancelled() const
{
    return m_module.SearchCancelled || m_waits.isClosed();
}

void GpibSearch::reportFound(const QByteArray &reply)
{
    const QString connectString = control().connectString();
    setStatus(setupTexts::foundAt + connectString);
    m_channel.showFound(connectString.section(u"::"_s, 0, 0), connectString.section(u"::"_s, 1, 1),
                        lineEnds::removed(reply));
    Q_EMIT found();
}

void GpibSearch::reportNothing()
{
    constexpr int first = 0;
    m_channel.showFound(GpibAddress::boardName(first), QString::number(first), {});
    setStatus(isCancelled() ? setupTexts::cancelled : setupTexts::nothingFound);
}

void GpibSearch::setStatus(const QString &text)
{
    Q_EMIT statusChanged(setupTexts::status + text);
}

} // namespace corvane
