// SPDX-License-Identifier: GPL-3.0-or-later
#include "devices/PlusPlusAdapter.h"

#include "devices/PlatformError.h"
#include "devices/WaitGroup.h"

#include <algorithm>

namespace corvane {

namespace {

constexpr int longestSliceMs = 3000; ///< what every controller takes as its read time-out
constexpr int versionLimitMs = 1000;
constexpr qsizetype longestVersion = 4096; ///< a device that never stops gives no version
constexpr int reviveLimitMs = PlusPlusReply::lateMs - PlusPlusReply::graceMs;

/// The line that sends the bytes to the device: what has a meaning to the controller is escaped.
QByteArray dataLine(const QByteArray &bytes)
{
    QByteArray line;
    line.reserve(bytes.size() + 16);
    for (const char byte : bytes) {
        if (QByteArrayView("\r\n\x1b+").contains(byte))
            line += '\x1b';
        line += byte;
    }
    return line += '\n';
}

} // namespace

PlusPlusAdapter::PlusPlusAdapter(std::unique_ptr<GpibStream> stream, QString otherwise)
    : m_stream(std::move(stream))
    , m_otherwise(std::move(otherwise))
{
}

PlusPlusAdapter::~PlusPlusAdapter() = default;

QString PlusPlusAdapter::description() const
{
    return u"\"++\" controller at %1"_s.arg(m_stream->place());
}

QString PlusPlusAdapter::version(WaitGroup &waits)
{
    if (!ensureConnected(waits))
        return {};
    const QByteArray reply = askVersion(1, versionLimitMs, waits);
    if (reply.isEmpty() && !waits.isClosed())
        fail(u"does not answer; check its power and its cable"_s);
    return QString::fromLatin1(reply).trimmed();
}

void PlusPlusAdapter::open(const GpibAddress &address, WaitGroup &waits)
{
    if (m_stream->isConnected() && !m_version.isEmpty()) {
        // Another program may have changed the settings, or the connection be dead unnoticed.
        try {
            if (!configure(waits, 1))
                return;
        } catch (const PlatformError &) {
            drop();
        }
    }
    if (ensureConnected(waits))
        m_stream->write(selecting(address), waits);
}

void PlusPlusAdapter::clear(const GpibAddress &address, WaitGroup &waits)
{
    if (!ensureConnected(waits))
        return;
    m_stream->write(selecting(address) + "++clr\n", waits);
    m_stream->take();
}

void PlusPlusAdapter::write(const GpibAddress &address, const QByteArray &bytes, int,
                            WaitGroup &waits)
{
    if (bytes.isEmpty() || !ensureConnected(waits))
        return;
    m_stream->take(); // the late answer to an earlier question
    m_stream->write(selecting(address) + dataLine(bytes), waits);
}

QByteArray PlusPlusAdapter::read(const GpibAddress &address, int timeoutMs, WaitGroup &waits)
{
    if (!ensureConnected(waits))
        return {};
    m_stream->take();
    const QByteArray before = m_selected;
    if (const QByteArray select = selecting(address); select != before)
        m_stream->write(select, waits);
    const quint32 start = waits.clock().MS_TIMER();
    for (;;) {
        const int left = timeoutMs - static_cast<int>(waits.clock().MS_TIMER() - start);
        if (left <= 0)
            return {};
        auto verdict = PlusPlusReply::Verdict::Pending;
        const PlusPlusReply reply = readSlice(std::min(left, longestSliceMs), left, waits, verdict);
        if (waits.isClosed() || reply.isCut())
            drop(); // what is still to come must not answer a later question
        if (reply.markFailed())
            m_marksWork = false;
        m_replyEnd = reply.end();
        if (verdict == PlusPlusReply::Verdict::Complete)
            return reply.text();
        if (waits.isClosed())
            return {};
        if (verdict == PlusPlusReply::Verdict::Silent)
            revive(waits);
    }
}

PlusPlusReply PlusPlusAdapter::readSlice(int sliceMs, int leftMs, WaitGroup &waits,
                                         PlusPlusReply::Verdict &verdict)
{
    QByteArray commands;
    if (sliceMs != m_readTimeoutMs)
        commands = "++read_tmo_ms " + QByteArray::number(sliceMs) + '\n';
    m_readTimeoutMs = sliceMs;
    m_stream->write(commands + (m_marksWork ? "++read eoi\n++ver\n" : "++read eoi\n"), waits);

    PlusPlusReply reply(m_version, m_marksWork, sliceMs, leftMs);
    const quint32 start = waits.clock().MS_TIMER();
    const auto now = [&] { return static_cast<int>(waits.clock().MS_TIMER() - start); };
    const auto news = [this] { return m_stream->hasInput() || !m_stream->isConnected(); };
    while ((verdict = reply.judge(now())) == PlusPlusReply::Verdict::Pending) {
        if (waits.waitUntil(news, reply.nextLookMs(now())) == WaitEnd::Cancelled)
            break;
        if (m_stream->hasInput())
            reply.append(m_stream->take(), now());
        else if (!m_stream->isConnected())
            fail(u"went away during a read; check its power and its cable"_s);
    }
    return reply;
}

bool PlusPlusAdapter::ensureConnected(WaitGroup &waits)
{
    if (m_stream->isConnected() && !m_version.isEmpty())
        return true;
    drop();
    try {
        if (!m_stream->connectToController(waits))
            return false;
    } catch (const PlatformError &fault) {
        throw PlatformError(u"GPIB controller: %1"_s.arg(fault.description()) + m_otherwise);
    }
    return configure(waits, 2);
}

/// Finds out whether the controller answers, and sets what a session needs.
bool PlusPlusAdapter::configure(WaitGroup &waits, int attempts)
{
    m_version = askVersion(attempts, versionLimitMs, waits);
    if (waits.isClosed()) {
        drop();
        return false;
    }
    if (m_version.isEmpty())
        fail(u"does not answer \"++ver\"; is it a \"++\" controller, and is another "
             "program connected to it?"_s +
             m_otherwise);
    // This maker's controllers would write every change below into a memory that wears out; with
    // others the same command causes the writing.
    const bool savesByItself = m_version.contains("Prologix");
    m_selected.clear();
    m_readTimeoutMs = 0;
    m_stream->write((savesByItself ? QByteArray("++savecfg 0\n") : QByteArray()) +
                        "++mode 1\n++auto 0\n++eoi 1\n++eos 3\n++eot_enable 0\n",
                    waits);
    return true;
}

/// The last line of the answer to "++ver", empty when none came; what a controller says while it
/// starts comes before.
QByteArray PlusPlusAdapter::askVersion(int attempts, int limitMs, WaitGroup &waits)
{
    m_stream->take();
    for (int attempt = 0; attempt < attempts; ++attempt) {
        if (m_stream->isConnected()) // else it is told below
            m_stream->write("++ver\n", waits);
        QByteArray answer;
        const auto lineCame = [this, &answer] {
            answer += m_stream->take();
            answer = answer.right(longestVersion);
            return answer.endsWith('\n') || !m_stream->isConnected();
        };
        waits.waitUntil(lineCame, limitMs);
        if (!m_stream->isConnected() && !waits.isClosed())
            fail(u"closed the connection; is another program connected to it?"_s);
        const auto lineStart = answer.lastIndexOf('\n', -2) + 1;
        QByteArray line = answer.mid(lineStart);
        if (line.endsWith('\n') && !line.trimmed().isEmpty())
            return line;
    }
    return {};
}

/// After a silent read: a controller that still answers has only dropped the end mark.
void PlusPlusAdapter::revive(WaitGroup &waits)
{
    if (askVersion(1, reviveLimitMs, waits).isEmpty() && !waits.isClosed())
        fail(u"does not answer any more; check its power and its cable"_s);
}

QByteArray PlusPlusAdapter::selecting(const GpibAddress &address)
{
    m_selected = "++addr " + QByteArray::number(address.primary);
    if (address.secondary)
        m_selected += ' ' + QByteArray::number(*address.secondary);
    return m_selected += '\n';
}

void PlusPlusAdapter::drop()
{
    m_stream->drop();
    m_version.clear();
    m_selected.clear();
    m_readTimeoutMs = 0;
    m_marksWork = true;
}

void PlusPlusAdapter::fail(const QString &what)
{
    drop();
    throw PlatformError(u"GPIB controller at %1 %2"_s.arg(m_stream->place(), what));
}

} // namespace corvane
