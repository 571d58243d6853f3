// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>

class QSettings;

namespace corvane {

/// Where the windows of the program open, so that no window sees to it itself: with the place, the
/// size, the splitters and the column widths that each had when it was last closed, and always on
/// the screen.
///
/// Windows, splitters and tables are told apart by their object names; those without one are not
/// remembered.
class WindowPlaces : public QObject
{
    Q_OBJECT

public:
    /// From now on, for the whole program. The settings must outlive every window; null: nothing is
    /// remembered.
    static void install(QSettings *settings);

    /// A window's frame moved, and if it must be made smaller, so that all of it is in the room.
    static QRect fitted(const QRect &frame, const QRect &room);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    WindowPlaces(QSettings *settings, QObject *parent);

    QSettings *const m_settings;
};

} // namespace corvane
