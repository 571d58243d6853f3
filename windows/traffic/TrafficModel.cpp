#include "windows/traffic/TrafficModel.h"

#include "core/traffic/TrafficRecorder.h"

#include <QColor>
#include <QElapsedTimer>
#include <QFont>

#include <algorithm>
#include <vector>

namespace corvane {

namespace {

/// The window answers in between.
constexpr qint64 turnMs = 8;
/// The clock is looked at only so often.
constexpr quint64 eventsALook = 512;

} // namespace

TrafficModel::TrafficModel(const TrafficRecorder &recorder, QObject *parent)
    : QAbstractTableModel(parent)
    , m_recorder(recorder)
    , m_next(recorder.first())
    , m_firstRow(recorder.first())
{
    m_turn.setInterval(0);
    connect(&m_turn, &QTimer::timeout, this, &TrafficModel::turn_Timer);
}

int TrafficModel::rowCount(const QModelIndex &parent) const
{
    if (parent.isValid())
        return 0;
    return static_cast<int>(m_isFiltered ? m_matches.size() : m_next - m_firstRow);
}

int TrafficModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : Content + 1;
}

QVariant TrafficModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    static const QStringList titles{u"Time"_s, u"Channel"_s, u"What"_s, u"Content"_s};
    return orientation == Qt::Horizontal && role == Qt::DisplayRole ? titles.value(section)
                                                                    : QVariant();
}

quint64 TrafficModel::number(int row) const
{
    const auto index = static_cast<quint64>(row);
    return m_isFiltered ? m_matches.at(index) : m_firstRow + index;
}

TrafficEvent TrafficModel::event(int row) const
{
    const quint64 wanted = number(row);
    return wanted < m_recorder.first() ? TrafficEvent{} : m_recorder.at(wanted);
}

QString TrafficModel::timeOf(int row) const
{
    const qint64 time = event(row).time;
    if (m_timeStyle == TimeStyle::Clock)
        return trafficText::clockOf(m_recorder.began(), time);
    return u'+' + trafficText::secondsOf(row == 0 ? 0 : time - event(row - 1).time);
}

QVariant TrafficModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid())
        return {};
    const int row = index.row();
    if (role == Qt::BackgroundRole || role == Qt::ForegroundRole)
        return shadeOf(row, role);
    if (role != Qt::DisplayRole)
        return {};
    const TrafficEvent shown = event(row);
    const bool isMarked = m_marks.contains(number(row));
    switch (index.column()) {
    case Time:
        return (isMarked ? u"\u25cf "_s : u"  "_s) + timeOf(row); // not by its colour alone
    case Channel:
        return channelCaption(shown.channel);
    case Kind:
        return shown.kind == TrafficKind::Sent       ? u"\u2192 sent"_s
               : shown.kind == TrafficKind::Received ? u"\u2190 received"_s
                                                     : trafficText::kindOf(shown.kind);
    default:
        return trafficText::contentOf(shown, m_style, shownBytes);
    }
}

/// Ink and paper always together, so that they stay readable on a dark desktop too.
QVariant TrafficModel::shadeOf(int row, int role) const
{
    const bool isPaper = role == Qt::BackgroundRole;
    if (m_marks.contains(number(row)))
        return isPaper ? QColor(0xff, 0xf0, 0xb8) : QColor(0x20, 0x20, 0x20);
    const TrafficKind kind = event(row).kind;
    if (kind == TrafficKind::Fault || kind == TrafficKind::TimedOut)
        return isPaper ? QColor(0xfb, 0xdc, 0xdc) : QColor(0x8a, 0x0a, 0x0a);
    return {};
}

QString TrafficModel::line(int row) const
{
    QStringList cells;
    for (int column = Time; column <= Content; ++column)
        cells.append(data(index(row, column), Qt::DisplayRole).toString().trimmed());
    return cells.join(u'\t');
}

void TrafficModel::refresh()
{
    dropGone();
    if (m_isPaused || m_next == m_recorder.end())
        return;
    if (!m_isFiltered)
        takeUnfiltered();
    else if (!m_turn.isActive())
        turn_Timer();
}

void TrafficModel::dropGone()
{
    const quint64 first = m_recorder.first();
    m_next = std::max(m_next, first);
    m_marks.erase(m_marks.begin(), m_marks.lower_bound(first));
    const int gone = rowOf(first);
    if (gone == 0)
        return;
    beginRemoveRows({}, 0, gone - 1);
    if (m_isFiltered)
        m_matches.erase(m_matches.begin(), m_matches.begin() + gone);
    else
        m_firstRow = first;
    endRemoveRows();
}

void TrafficModel::takeUnfiltered()
{
    const int rows = rowCount();
    const quint64 end = m_recorder.end();
    beginInsertRows({}, rows, rows + static_cast<int>(end - m_next) - 1);
    m_next = end;
    endInsertRows();
}

/// Goes through a part of the recording.
void TrafficModel::turn_Timer()
{
    QElapsedTimer time;
    time.start();
    m_next = std::max(m_next, m_recorder.first());
    std::vector<quint64> found;
    while (m_next < m_recorder.end() && !time.hasExpired(turnMs)) {
        const quint64 end = std::min(m_recorder.end(), m_next + eventsALook);
        for (; m_next < end; ++m_next) {
            if (m_filter.takes(m_recorder.at(m_next)))
                found.push_back(m_next);
        }
    }
    if (!found.empty()) {
        const int rows = rowCount();
        beginInsertRows({}, rows, rows + static_cast<int>(found.size()) - 1);
        m_matches.insert(m_matches.end(), found.begin(), found.end());
        endInsertRows();
    }
    if (m_next < m_recorder.end())
        m_turn.start();
    else
        m_turn.stop();
}

void TrafficModel::setFilter(const TrafficFilter &filter)
{
    if (filter == m_filter)
        return;
    m_filter = filter;
    restart(m_from);
}

void TrafficModel::clear()
{
    restart(m_recorder.end());
}

/// All rows anew, from an event on.
void TrafficModel::restart(quint64 from)
{
    beginResetModel();
    m_turn.stop();
    m_from = from;
    m_isFiltered = !m_filter.takesAll();
    m_matches.clear();
    m_firstRow = m_next = std::max(from, m_recorder.first());
    endResetModel();
    refresh();
}

void TrafficModel::setStyle(trafficText::Style style)
{
    m_style = style;
    showAnew();
}

void TrafficModel::setTimeStyle(TimeStyle style)
{
    m_timeStyle = style;
    showAnew();
}

void TrafficModel::showAnew()
{
    if (rowCount() > 0)
        Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, Content));
}

/// The first row whose event has this number or a later one.
int TrafficModel::rowOf(quint64 number) const
{
    if (m_isFiltered)
        return static_cast<int>(std::ranges::lower_bound(m_matches, number) - m_matches.begin());
    return static_cast<int>(std::clamp(number, m_firstRow, m_next) - m_firstRow);
}

void TrafficModel::toggleMark(int row)
{
    const quint64 marked = number(row);
    if (m_marks.erase(marked) == 0)
        m_marks.insert(marked);
    Q_EMIT dataChanged(index(row, 0), index(row, Content));
}

int TrafficModel::markedRow(int from, bool below) const
{
    const auto isShown = [this](quint64 mark) {
        const int row = rowOf(mark);
        return row < rowCount() && number(row) == mark ? row : -1;
    };
    int found = -1;
    for (const quint64 mark : m_marks) {
        const int row = isShown(mark);
        if (below && row > from)
            return row;
        if (!below && row >= 0 && row < from)
            found = row;
    }
    return found;
}

} // namespace corvane
