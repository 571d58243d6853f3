#include "core/traffic/TrafficWriter.h"

#include "core/traffic/TrafficLine.h"
#include "core/traffic/TrafficRecorder.h"
#include "devices/PlatformError.h"
#include "devices/RegularFile.h"
#include "devices/StandardStreams.h"

#include <QDeadlineTimer>
#include <QThread>

#include <cstdio>

namespace corvane {

namespace {

/// Lines are put together up to here, then written.
constexpr qsizetype enough = qsizetype{256} << 10;
/// As many batches leave the window time to answer.
constexpr int batchesATurn = 8;
/// A pipe that can take anything takes so much at once.
constexpr qsizetype pipePiece = 4096;

} // namespace

TrafficWriter::TrafficWriter(TrafficRecorder &recorder, const QString &path)
    : m_recorder(recorder)
    , m_path(path)
    , m_isStandardOutput(path == u"-")
    , m_file(path)
    , m_next(recorder.first())
    , m_lost(recorder.first())
{
    constexpr auto mode = QIODevice::WriteOnly | QIODevice::Unbuffered;
    const QString refused =
        m_isStandardOutput ? QString() : regularFile::open(m_file, mode | QIODevice::Truncate);
    if (!refused.isEmpty() || (m_isStandardOutput && !m_file.open(stdout, mode)))
        throw PlatformError(
            u"%1: %2"_s.arg(path, refused.isEmpty() ? m_file.errorString() : refused));
    m_pending = trafficLine::ofStart(recorder.began());
    writeSome();
    if (!m_fault.isEmpty())
        throw PlatformError(m_fault);
    connect(&recorder, &TrafficRecorder::aboutToDrop, this, &TrafficWriter::makeRoom);
    connect(&m_timer, &QTimer::timeout, this, &TrafficWriter::timer_Timer);
    m_timer.start(intervalMs);
}

void TrafficWriter::timer_Timer()
{
    bool isMore = true;
    for (int turn = 0; turn < batchesATurn && isMore; ++turn)
        isMore = writeSome();
    // Into a file without a name goes what nobody will read.
    if (m_fault.isEmpty() && !m_isStandardOutput && !QFile::exists(m_path))
        fail(u"the file has gone"_s);
    if (m_fault.isEmpty())
        m_timer.start(isMore ? 0 : intervalMs);
}

bool TrafficWriter::writeSome()
{
    if (!m_fault.isEmpty())
        return false;
    fill();
    return !m_pending.isEmpty() && put();
}

void TrafficWriter::fill()
{
    if (m_lost > 0 && m_pending.size() < enough)
        m_pending += trafficLine::ofLost(m_recorder.now(), std::exchange(m_lost, 0));
    while (m_next < m_recorder.end() && m_pending.size() < enough)
        m_pending += trafficLine::ofEvent(m_recorder.at(m_next++));
}

bool TrafficWriter::put()
{
    if (m_isStandardOutput) {
        if (!standardStreams::takesOutput())
            return false;
        const QByteArrayView piece =
            QByteArrayView(m_pending).first(std::min(m_pending.size(), pipePiece));
        if (const QString fault = regularFile::write(m_file, piece); !fault.isEmpty())
            fail(fault);
        m_pending.remove(0, piece.size());
        return true;
    }
    const qint64 before = m_file.size();
    if (const QString fault = regularFile::write(m_file, m_pending); !fault.isEmpty()) {
        m_file.resize(before); // no part of a line
        fail(fault);
    }
    m_pending.clear();
    return true;
}

void TrafficWriter::makeRoom(quint64 before)
{
    while (m_next < before && writeSome()) {
    }
    if (m_next < before)
        m_lost += before - std::exchange(m_next, before);
}

void TrafficWriter::fail(const QString &why)
{
    const QString name = m_isStandardOutput ? u"standard output"_s : m_path;
    m_fault = u"%1: %2; the recording of the traffic ends here"_s.arg(name, why);
    m_timer.stop();
    m_recorder.disconnect(this);
    Q_EMIT failed(m_fault);
}

QString TrafficWriter::finish()
{
    QDeadlineTimer patience(patienceMs);
    for (;;) {
        if (writeSome())
            patience.setRemainingTime(patienceMs);
        else if (m_pending.isEmpty() || !m_fault.isEmpty())
            break;
        else if (patience.hasExpired())
            fail(u"its reader takes no more"_s);
        else
            QThread::msleep(1);
    }
    m_timer.stop();
    m_recorder.disconnect(this);
    m_file.close();
    return m_fault;
}

} // namespace corvane
