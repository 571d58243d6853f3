#include "windows/traffic/TrafficSave.h"

#include "core/traffic/TrafficRecorder.h"
#include "devices/WholeFile.h"

#include <QElapsedTimer>

#include <limits>

namespace corvane {

namespace {

constexpr qint64 turnMs = 8;
constexpr std::size_t eventsALook = 64;

} // namespace

TrafficSave::TrafficSave(const TrafficRecorder &recorder, std::vector<quint64> numbers,
                         const QString &path)
    : m_recorder(recorder)
    , m_numbers(std::move(numbers))
    , m_path(path)
    , m_format(TrafficFormat::ofPath(path))
    , m_bytes(m_format.start(recorder.began()))
{
    connect(&recorder, &TrafficRecorder::aboutToDrop, this, &TrafficSave::add);
    connect(&m_turn, &QTimer::timeout, this, &TrafficSave::turn_Timer);
    m_turn.start(0);
}

/// Those before this number, which may go after it.
void TrafficSave::add(quint64 before)
{
    for (; m_next < m_numbers.size() && m_numbers[m_next] < before; ++m_next) {
        if (m_numbers[m_next] >= m_recorder.first())
            m_bytes += m_format.event(m_recorder.began(), m_recorder.at(m_numbers[m_next]));
    }
}

void TrafficSave::turn_Timer()
{
    QElapsedTimer time;
    time.start();
    while (m_next < m_numbers.size() && !time.hasExpired(turnMs)) {
        const std::size_t last = std::min(m_next + eventsALook, m_numbers.size()) - 1;
        add(m_numbers[last] + 1);
    }
    if (m_next < m_numbers.size())
        return;
    m_turn.stop();
    m_recorder.disconnect(this);
    Q_EMIT done(wholeFile::write(m_path, m_bytes));
}

} // namespace corvane
