// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QPointer>
#include <QWindow>

#include <deque>
#include <memory>

class QEvent;

namespace corvane {

class Clock;

/// Lets the user's clicks and keys wait while the program is inside a call that must not be
/// disturbed: they are taken off the windows and handed over afterwards, in order. Painting,
/// timers, devices and requests to close a window are not touched.
///
/// A message box or another wait that starts meanwhile needs the user: input passes until it ends.
class InputHold : public QObject
{
    Q_OBJECT

public:
    /// `clock` is the one that the calls wait on; it tells whether another wait runs inside one.
    explicit InputHold(const Clock &clock, QObject *parent = nullptr);
    ~InputHold() override;

    /// A call has begun, or has ended. Calls do not run inside each other.
    void setCalling(bool calling);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    struct Held
    {
        QPointer<QWindow> window;
        std::unique_ptr<QEvent> event;
    };

    [[nodiscard]] bool boxOpened() const;
    [[nodiscard]] bool isHolding() const;
    void handOverLater();
    void handOverOne();

    const Clock &m_clock;
    std::deque<Held> m_held;
    bool m_calling = false;
    int m_waits = 0;                  ///< running waits when the call began
    const QWindow *m_modal = nullptr; ///< the modal window then; only compared
    bool m_handOverQueued = false;
};

} // namespace corvane
