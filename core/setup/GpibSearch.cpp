#include "core/setup/GpibSearch.h"

#include "core/channels/Module1.h"
#include "core/setup/GpibSearchHost.h"
#include "core/setup/SetupTexts.h"
#include "devices/DeviceAbsent.h"
#include "devices/GpibControl.h"

#include <QScopeGuard>
#include <QStringList>

namespace corvane {

namespace {

QString text(const char16_t *fixed)
{
    return QString::fromUtf16(fixed);
}

QString boardName(int board)
{
    return QStringLiteral("GPIB%1").arg(board);
}

QString textOf(GpibSearchHost::OtherUse use)
{
    switch (use) {
    case GpibSearchHost::OtherUse::None:
        break;
    case GpibSearchHost::OtherUse::ListRun:
        return text(setupTexts::listRuns);
    case GpibSearchHost::OtherUse::Loop:
        return text(setupTexts::channelLoops);
    case GpibSearchHost::OtherUse::PendingRead:
        return text(setupTexts::readPends);
    case GpibSearchHost::OtherUse::BoardExchange:
        return text(setupTexts::boardExchanges);
    }
    return {};
}

} // namespace

GpibSearch::GpibSearch(GpibSearchHost &host, Module1 &module, Clock &clock, QObject *parent)
    : QObject(parent)
    , m_host(host)
    , m_module(module)
    , m_waits(clock)
{
}

QString GpibSearch::refusal() const
{
    const auto use = m_host.otherGpibUse();
    if (use == GpibSearchHost::OtherUse::None && m_host.QBXControl1().isBusy())
        return textOf(GpibSearchHost::OtherUse::PendingRead);
    return textOf(use);
}

void GpibSearch::SearchGPIBLoop()
{
    if (m_running)
        return;
    m_running = true;
    const auto ended = qScopeGuard([this] { m_running = false; });
    m_waits.reopen();
    m_faults.clear();
    Q_EMIT faultsChanged({});
    const QByteArray reply = probeBoards();
    m_host.stopSearchTimer();
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
        m_host.QBXControl1().cancel();
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
        return isCancelled() || !m_host.QBXControl1().adapterVersion(board).isEmpty();
    } catch (const PlatformError &) {
        return false;
    }
}

QByteArray GpibSearch::probe(const GpibAddress &address)
{
    GpibControl &control = m_host.QBXControl1();
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
    const QString connectString = m_host.QBXControl1().connectString();
    const QStringList parts = connectString.split(QStringLiteral("::"));
    setStatus(text(setupTexts::foundAt) + connectString);
    m_host.setGpibAddress(parts.value(0), parts.value(1));
    m_host.setGpibResponse(QString::fromLatin1(reply).remove(u'\r').remove(u'\n'));
}

void GpibSearch::reportNothing()
{
    const GpibAddress first{.board = 0, .primary = 0, .secondary = {}};
    m_host.QBXControl1().setConnectString(first.toString());
    m_host.setGpibAddress(boardName(first.board), QString::number(first.primary));
    setStatus(text(isCancelled() ? setupTexts::cancelled : setupTexts::nothingFound));
}

void GpibSearch::setStatus(const QString &text)
{
    Q_EMIT statusChanged(QString::fromUtf16(setupTexts::status) + text);
}

} // namespace corvane
