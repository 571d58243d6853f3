// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/widgets/InputHold.h"

#include "devices/Clock.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QMouseEvent>

#include <algorithm>

namespace corvane {

namespace {

constexpr QEvent::Type inputTypes[] = {QEvent::KeyPress,
                                       QEvent::KeyRelease,
                                       QEvent::MouseButtonPress,
                                       QEvent::MouseButtonRelease,
                                       QEvent::MouseButtonDblClick,
                                       QEvent::MouseMove,
                                       QEvent::Wheel,
                                       QEvent::TouchBegin,
                                       QEvent::TouchUpdate,
                                       QEvent::TouchEnd,
                                       QEvent::TouchCancel,
                                       QEvent::ContextMenu,
                                       QEvent::ShortcutOverride};

bool isInput(const QEvent &event)
{
    if (!event.spontaneous() || std::ranges::find(inputTypes, event.type()) == std::end(inputTypes))
        return false;
    // The pointer passing over a window does nothing that would have to wait.
    return event.type() != QEvent::MouseMove ||
           static_cast<const QMouseEvent &>(event).buttons() != Qt::NoButton;
}

} // namespace

InputHold::InputHold(const Clock &clock, QObject *parent)
    : QObject(parent)
    , m_clock(clock)
{
}

InputHold::~InputHold() = default;

void InputHold::setCalling(bool calling)
{
    m_calling = calling;
    if (!calling) {
        handOverLater();
        return;
    }
    m_waits = m_clock.runningWaits();
    m_modal = QGuiApplication::modalWindow();
    QCoreApplication::instance()->installEventFilter(this);
}

bool InputHold::eventFilter(QObject *watched, QEvent *event)
{
    if (!watched->isWindowType() || !isInput(*event))
        return false;
    if (m_calling && boxOpened())
        return false;
    // What was held goes first, so later input waits behind it.
    if (!isHolding() && m_held.empty())
        return false;
    if (event->type() == QEvent::ShortcutOverride)
        event
            ->accept(); // the key itself follows; the shortcut is looked for when it is handed over
    else
        m_held.push_back(
            {static_cast<QWindow *>(watched), std::unique_ptr<QEvent>(event->clone())});
    if (!isHolding())
        handOverLater();
    return true;
}

bool InputHold::boxOpened() const
{
    const QWindow *modal = QGuiApplication::modalWindow();
    return modal != nullptr && modal != m_modal;
}

bool InputHold::isHolding() const
{
    const bool anotherWaitRuns = m_clock.runningWaits() > m_waits + 1;
    return m_calling && !anotherWaitRuns;
}

void InputHold::handOverLater()
{
    if (m_held.empty()) {
        if (!m_calling)
            QCoreApplication::instance()->removeEventFilter(this);
    } else if (!m_handOverQueued) {
        m_handOverQueued = true;
        QMetaObject::invokeMethod(this, &InputHold::handOverOne, Qt::QueuedConnection);
    }
}

void InputHold::handOverOne()
{
    m_handOverQueued = false;
    if (isHolding() || m_held.empty())
        return; // the end of the hold asks again
    const Held next = std::move(m_held.front());
    m_held.pop_front();
    handOverLater(); // before: what the event starts may run a loop of its own
    if (next.window)
        QCoreApplication::sendEvent(next.window, next.event.get());
}

} // namespace corvane
