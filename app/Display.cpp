// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/Display.h"

#include "devices/Literals.h"

namespace corvane {

namespace {

/// The window system that is asked for, without its arguments; empty: the usual one.
QString askedPlatform()
{
    return qEnvironmentVariable("QT_QPA_PLATFORM").section(u':', 0, 0);
}

} // namespace

bool display::isThere()
{
    const QString platform = askedPlatform();
    if (!platform.isEmpty())
        return platform != u"offscreen" && platform != u"minimal";
#ifdef Q_OS_UNIX
    return !qEnvironmentVariableIsEmpty("DISPLAY") ||
           !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
#else
    return true;
#endif
}

QString display::fault()
{
    QString fault;
    if (const QString platform = askedPlatform(); !platform.isEmpty())
        fault = u"the toolkit cannot start on \"%1\" (QT_QPA_PLATFORM)."_s.arg(platform);
    else
        fault = u"the display %1 cannot be opened."_s.arg(
            qEnvironmentVariable("DISPLAY", qEnvironmentVariable("WAYLAND_DISPLAY")));
    return fault + u"\nUse --run LIST to run a list without one. With CORVANE_DEBUG=1 "
                   "the toolkit's own messages are shown."_s;
}

} // namespace corvane
