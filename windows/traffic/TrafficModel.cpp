// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/traffic/TrafficModel.h"

#include "core/traffic/TrafficRecorder.h"
#include "windows/traffic/TrafficTurn.h"

#include <QColor>

#include <algorithm>
#include <iterator>
#include <ranges>

namespace corvane {

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

/// It is a row until the next refresh.
bool TrafficModel::isDropped(int row) const
{
    return number(row) < m_recorder.first();
}

TrafficEvent TrafficModel::eventAt(int row) const
{
    return isDropped(row) ? TrafficEvent{} : m_recorder.at(number(row));
}

bool TrafficModel::isMarked(int row) const
{
    return std::ranges::binary_search(m_marks, number(row));
}

QString TrafficModel::timeOf(int row) const
{
    const qint64 time = eventAt(row).time;
    if (m_timeStyle == TimeStyle::Clock)
        return trafficText::clockOf(m_recorder.began(), time);
    const bool isFirst = row == 0 || isDropped(row - 1);
    return u'+' + trafficText::secondsOf(isFirst ? 0 : time - eventAt(row - 1).time);
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
    if (isDropped(row))
        return index.column() == Content ? u"(dropped)"_s : QString();
    const TrafficEvent shown = eventAt(row);
    switch (index.column()) {
    case Time:
        return (isMarked(row) ? u"\u25cf "_s : u"  "_s) + timeOf(row); // not by its colour alone
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
    if (isMarked(row))
        return isPaper ? QColor(0xff, 0xf0, 0xb8) : QColor(0x20, 0x20, 0x20);
    const TrafficKind kind = eventAt(row).kind;
    if (kind == TrafficKind::Fault || kind == TrafficKind::TimedOut)
        return isPaper ? QColor(0xfb, 0xdc, 0xdc) : QColor(0x8a, 0x0a, 0x0a);
    return {};
}

QString TrafficModel::line(int row) const
{
    QStringList cells;
    for (int column = Time; column <= Content; ++column)
        cells.append(data(index(row, column), Qt::DisplayRole).toString());
    cells.first() = cells.first().trimmed(); // room for the mark
    return cells.join(u'\t');
}

void TrafficModel::refresh()
{
    dropGone();
    if (m_next >= end())
        return;
    if (!m_isFiltered)
        takeUnfiltered();
    else if (!m_turn.isActive())
        turn_Timer();
}

void TrafficModel::dropGone()
{
    const quint64 first = m_recorder.first();
    m_marks.erase(m_marks.begin(), std::ranges::lower_bound(m_marks, first));
    const int gone = rowOf(first);
    if (gone > 0)
        beginRemoveRows({}, 0, gone - 1);
    if (m_isFiltered)
        m_matches.erase(m_matches.begin(), m_matches.begin() + gone);
    m_next = std::max(m_next, first);
    m_firstRow = std::max(m_firstRow, first);
    if (gone > 0)
        endRemoveRows();
}

void TrafficModel::takeUnfiltered()
{
    const int rows = rowCount();
    beginInsertRows({}, rows, rows + static_cast<int>(end() - m_next) - 1);
    m_next = end();
    endInsertRows();
}

/// Goes through a part of the recording.
void TrafficModel::turn_Timer()
{
    TrafficTurn turn;
    m_next = std::max(m_next, m_recorder.first());
    std::vector<quint64> found;
    for (bool isOver = false; m_next < end() && !isOver; ++m_next) {
        const TrafficEvent event = m_recorder.at(m_next);
        if (m_filter.takes(event))
            found.push_back(m_next);
        isOver = turn.isOver(event);
    }
    if (!found.empty()) {
        const int rows = rowCount();
        beginInsertRows({}, rows, rows + static_cast<int>(found.size()) - 1);
        m_matches.insert(m_matches.end(), found.begin(), found.end());
        endInsertRows();
    }
    if (m_next < end())
        m_turn.start();
    else
        m_turn.stop();
}

/// Up to which event the rows go.
quint64 TrafficModel::end() const
{
    return m_pausedAt.value_or(m_recorder.end());
}

void TrafficModel::setPaused(bool paused)
{
    m_pausedAt = paused ? std::optional(m_recorder.end()) : std::nullopt;
    refresh();
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

int TrafficModel::rowOf(quint64 number) const
{
    if (m_isFiltered)
        return static_cast<int>(std::ranges::lower_bound(m_matches, number) - m_matches.begin());
    return static_cast<int>(std::clamp(number, m_firstRow, m_next) - m_firstRow);
}

void TrafficModel::toggleMarks(int first, int last)
{
    const auto rows = std::views::iota(first, last + 1);
    const auto toggled = rows | std::views::transform([this](int row) { return number(row); });
    std::vector<quint64> marks;
    std::ranges::set_symmetric_difference(m_marks, toggled, std::back_inserter(marks));
    m_marks = std::move(marks);
    Q_EMIT dataChanged(index(first, 0), index(last, Content));
}

int TrafficModel::markedRow(int from) const
{
    const auto after = from < 0 ? m_marks.begin() : std::ranges::upper_bound(m_marks, number(from));
    for (const quint64 mark : std::ranges::subrange(after, m_marks.end())) {
        const int row = rowOf(mark);
        if (row < rowCount() && number(row) == mark)
            return row;
    }
    return -1;
}

} // namespace corvane
