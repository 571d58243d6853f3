// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/traffic/TrafficWriter.h"

#include "core/traffic/TrafficLine.h"
#include "core/traffic/TrafficRecorder.h"
#include "devices/PlatformError.h"
#include "devices/RegularFile.h"

#include <QDeadlineTimer>
#include <QThread>

#include <utility>

namespace corvane {

namespace {

/// Lines are put together up to here, then written.
constexpr qsizetype enough = qsizetype{256} << 10;
/// As many batches leave the window time to answer.
constexpr int batchesATurn = 8;

} // namespace

TrafficWriter::TrafficWriter(TrafficRecorder &recorder, const QString &path)
    : m_recorder(recorder)
    , m_path(path)
    , m_file(path)
    , m_next(recorder.first())
    , m_lost(recorder.first())
{
    constexpr auto mode = QIODevice::WriteOnly | QIODevice::Unbuffered | QIODevice::Truncate;
    if (path == u"-")
        m_output = std::make_unique<UnwaitingOutput>();
    else if (const QString refused = regularFile::open(m_file, mode); !refused.isEmpty())
        throw PlatformError(u"%1: %2"_s.arg(path, refused));
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
    checkFile();
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
        tellLoss();
    while (m_next < m_recorder.end() && m_pending.size() < enough)
        m_pending += trafficLine::ofEvent(m_recorder.at(m_next++));
}

/// With the device that the bus is addressed to behind the gap: that may have been lost with it.
void TrafficWriter::tellLoss()
{
    const bool isLast = m_next == m_recorder.end();
    const qint64 time = isLast ? m_recorder.now() : m_recorder.at(m_next).time;
    m_pending += trafficLine::ofLost(time, std::exchange(m_lost, 0));
    if (std::optional<TrafficEvent> addressed = m_recorder.addressedBefore()) {
        addressed->time = time;
        m_pending += trafficLine::ofEvent(*addressed);
    }
}

bool TrafficWriter::put()
{
    if (!m_output)
        return putIntoFile();
    const auto taken = m_output->write(m_pending);
    if (!taken)
        fail(m_output->errorString());
    m_pending.remove(0, taken.value_or(0));
    return taken.value_or(0) > 0;
}

bool TrafficWriter::putIntoFile()
{
    const qint64 before = m_file.pos();
    if (checkFile()) {
        if (const QString fault = regularFile::write(m_file, m_pending); !fault.isEmpty()) {
            const QByteArray written = m_pending.first(m_file.pos() - before);
            m_file.resize(before + written.lastIndexOf('\n') + 1); // no part of a line
            fail(fault);
        }
    }
    m_pending.clear();
    return true;
}

/// Into a file that is not ours any more goes what nobody will read.
bool TrafficWriter::checkFile()
{
    const QString mishap = m_output ? QString() : regularFile::mishap(m_file, m_path, m_file.pos());
    if (m_fault.isEmpty() && !mishap.isEmpty())
        fail(mishap);
    return m_fault.isEmpty();
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
    const QString name = m_output ? u"standard output"_s : m_path;
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
            fail(u"it takes no more"_s);
        else
            QThread::msleep(1);
    }
    m_timer.stop();
    m_recorder.disconnect(this);
    if (checkFile() && !m_output) {
        if (const QString fault = regularFile::sync(m_file); !fault.isEmpty())
            fail(fault);
    }
    m_file.close();
    return m_fault;
}

} // namespace corvane
