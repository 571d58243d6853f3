// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/traffic/TrafficFilter.h"
#include "core/traffic/TrafficText.h"

#include <QAbstractTableModel>
#include <QTimer>

#include <deque>
#include <optional>
#include <vector>

namespace corvane {

class TrafficRecorder;

/// The recorder's events as rows, oldest first, those that a filter takes. It keeps no event, only
/// which ones its rows are, and follows the recorder when it is told to.
class TrafficModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column { Time, Channel, Kind, Content };
    enum class TimeStyle { Clock, SinceRowBefore };

    /// Bytes of an event that a cell shows at most: nobody reads more, and it would stall the
    /// window.
    static constexpr qsizetype shownBytes = 500;

    explicit TrafficModel(const TrafficRecorder &recorder, QObject *parent = nullptr);

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                      int role) const override;

    /// Takes in what has been recorded since, unless it is paused, and lets go of what the recorder
    /// has dropped. A long recording is gone through in several turns of the event loop.
    void refresh();
    /// True while a part of the recording is still to be gone through.
    [[nodiscard]] bool isSearching() const { return m_turn.isActive(); }
    void setFilter(const TrafficFilter &filter);
    /// While it is paused the rows are of what had been recorded by then.
    void setPaused(bool paused);
    /// No row any more; what is recorded from now on follows.
    void clear();
    void setStyle(trafficText::Style style);
    void setTimeStyle(TimeStyle style);

    /// The number of a row's event.
    [[nodiscard]] quint64 number(int row) const;
    /// The first row whose event has this number or a later one; the number of rows: there is none.
    [[nodiscard]] int rowOf(quint64 number) const;
    /// The row's event; of one that has been dropped meanwhile an empty one.
    [[nodiscard]] TrafficEvent eventAt(int row) const;
    /// A row as a line of text.
    [[nodiscard]] QString line(int row) const;
    /// Marks the rows from one to another, or takes the marks of those that are marked.
    void toggleMarks(int first, int last);
    /// The next marked row below a row, -1 for the top; -1: there is none.
    [[nodiscard]] int markedRow(int from) const;

private:
    void restart(quint64 from);
    void dropGone();
    void takeUnfiltered();
    void turn_Timer();
    void showAnew();
    [[nodiscard]] quint64 end() const;
    [[nodiscard]] bool isDropped(int row) const;
    [[nodiscard]] bool isMarked(int row) const;
    [[nodiscard]] QString timeOf(int row) const;
    [[nodiscard]] QVariant shadeOf(int row, int role) const;

    const TrafficRecorder &m_recorder;
    TrafficFilter m_filter;
    bool m_isFiltered = false;
    quint64 m_from = 0;            ///< events before it are cleared
    quint64 m_next;                ///< the next event to be gone through
    quint64 m_firstRow = 0;        ///< without a filter: the event of row 0
    std::deque<quint64> m_matches; ///< with one: the rows' events
    std::vector<quint64> m_marks;  ///< the marked events, ascending
    trafficText::Style m_style = trafficText::Style::Text;
    TimeStyle m_timeStyle = TimeStyle::Clock;
    std::optional<quint64> m_pausedAt; ///< the end of what is shown
    QTimer m_turn;
};

} // namespace corvane
