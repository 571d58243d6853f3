// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "perf/Child.h"
#include "perf/PtyFeeder.h"

namespace corvane::perf {

/// What is fed to a reader of a serial port, how much at a time, and how fast (0: as it reads).
struct Load
{
    size_t bytes;
    size_t piece;
    double bytesPerSecond;
};

/// How long a reader took from the first byte fed to the last one kept, and what it used meanwhile.
struct Reading
{
    double seconds = 0;
    double processorSeconds = 0;
    double memoryBytes = 0;
    bool whole = false;

    [[nodiscard]] double megabytesPerSecond(const Load &load) const
    {
        return static_cast<double>(load.bytes) / seconds / 1e6;
    }
};

/// For a reader's own process: prints what runReader() waits for.
class ReaderReport
{
public:
    ReaderReport()
    {
        std::puts("ready");
        std::fflush(stdout);
    }
    /// Everything has come; `whole`: and nothing is missing or wrong.
    void done(bool whole) const
    {
        std::printf("done=%f processor=%f memory=%f whole=%d\n", now(),
                    perf::processorSeconds() - m_processorSeconds, residentBytes() - m_memory,
                    whole ? 1 : 0);
    }

private:
    double m_processorSeconds = perf::processorSeconds();
    double m_memory = residentBytes();
};

/// Runs a reader: the command, the device and the number of bytes as its last arguments.
inline Reading runReader(QStringList command, const Load &load)
{
    PtyFeeder feeder;
    command << QString::fromStdString(feeder.path()) << QString::number(load.bytes);
    Child reader(command);
    if (!reader.waitForOutput("ready"))
        return {};
    const double begin = now();
    feeder.start(load.bytes, load.piece, load.bytesPerSecond);
    const Usage usage = reader.finish();
    const auto said = [&](const char *name) { return figure(usage.output, name).value_or(0); };
    return {said("done") - begin, said("processor"), said("memory"), said("whole") == 1};
}

/// A plain terminal in a reader's place: it ends some time after the last byte, and its processor
/// time is that of its whole life.
inline Reading runPicocom(const Load &load)
{
    PtyFeeder feeder;
    Child terminal({u"sh"_s, u"-c"_s, u"exec picocom -q -l -r -x 1000 \"$0\" >/dev/null"_s,
                    QString::fromStdString(feeder.path())});
    std::this_thread::sleep_for(std::chrono::milliseconds(300)); // it says nothing when it is open
    feeder.start(load.bytes, load.piece, load.bytesPerSecond);
    const double seconds = feeder.join();
    const Usage usage = terminal.finish();
    return {seconds, usage.processorSeconds, 0, usage.succeeded};
}

} // namespace corvane::perf
