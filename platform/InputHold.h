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
    /// Holds input for as long as it lives; may be nested.
    class Scope
    {
    public:
        explicit Scope(InputHold &hold);
        ~Scope();
        Q_DISABLE_COPY_MOVE(Scope)

    private:
        InputHold &m_hold;
        int m_outerWaits;
        const QWindow *m_outerModal;
    };

    /// `clock` tells whether another wait runs inside the held one.
    explicit InputHold(const Clock &clock);
    ~InputHold() override;

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
    int m_depth = 0;
    int m_waits = 0;                  ///< running waits when the innermost scope began
    const QWindow *m_modal = nullptr; ///< the modal window then; only compared
    bool m_handOverQueued = false;
};

} // namespace corvane
