// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/traffic/TrafficSave.h"

#include "core/traffic/TrafficRecorder.h"
#include "devices/WholeFile.h"
#include "windows/traffic/TrafficTurn.h"

#include <limits>

namespace corvane {

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
    while (m_next < m_numbers.size() && m_numbers[m_next] < before)
        addNext();
}

/// Gives the event; an empty one when it had been dropped before.
TrafficEvent TrafficSave::addNext()
{
    const quint64 number = m_numbers[m_next++];
    if (number < m_recorder.first())
        return {};
    const TrafficEvent event = m_recorder.at(number);
    m_bytes += m_format.event(m_recorder.began(), event);
    ++m_count;
    return event;
}

void TrafficSave::turn_Timer()
{
    TrafficTurn turn;
    while (m_next < m_numbers.size()) {
        if (turn.isOver(addNext()))
            return;
    }
    Q_EMIT done(finish());
}

QString TrafficSave::finish()
{
    if (!m_fault) {
        m_turn.stop();
        add(std::numeric_limits<quint64>::max());
        m_recorder.disconnect(this);
        m_fault = wholeFile::write(m_path, m_bytes);
    }
    return *m_fault;
}

} // namespace corvane
