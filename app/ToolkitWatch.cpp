// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/ToolkitWatch.h"

#include <cstdio>
#include <cstdlib>

namespace corvane {

namespace {

enum class Phase { Off, Starting, Running };

/// The toolkit calls a plain function, and the end of the process another; they reach nothing else.
struct Watched
{
    Phase phase = Phase::Off;
    QByteArray cannotStart;
    int exitCode = EXIT_FAILURE;
    bool wordy = !qEnvironmentVariableIsEmpty("CORVANE_DEBUG");
};

Watched &watched()
{
    static Watched state;
    return state;
}

[[noreturn]] void endWith(const QByteArray &words)
{
    std::fprintf(stderr, "corvane: %s\n", words.constData());
    std::fflush(stderr);
    std::_Exit(watched().exitCode);
}

void noteMessage(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    const bool fatal = type == QtFatalMsg;
    if (watched().wordy || (fatal && watched().phase != Phase::Starting))
        std::fprintf(stderr, "%s\n", qPrintable(qFormatLogMessage(type, context, text)));
    if (fatal && watched().phase == Phase::Starting)
        endWith(watched().cannotStart);
}

/// The toolkit ends the process by itself when the display goes away.
void noteEnd()
{
    if (watched().phase == Phase::Running)
        endWith("the display has gone away");
}

} // namespace

ToolkitWatch::ToolkitWatch()
{
    qInstallMessageHandler(noteMessage);
}

ToolkitWatch::ToolkitWatch(const QString &cannotStart, int exitCode)
    : ToolkitWatch()
{
    watched() = {Phase::Starting, cannotStart.toLocal8Bit(), exitCode};
    std::atexit(noteEnd);
}

ToolkitWatch::~ToolkitWatch()
{
    watched().phase = Phase::Off;
}

void ToolkitWatch::started()
{
    watched().phase = Phase::Running;
}

} // namespace corvane
