// SPDX-License-Identifier: GPL-3.0-or-later
// What the Trend window costs: taking replies over from the recorder, the memory of a point, and a
// paint of a million points against one of a thousand.
#include "core/traffic/TrafficRecorder.h"
#include "core/trend/TrendCsv.h"
#include "core/trend/TrendSeries.h"
#include "perf/Application.h"
#include "perf/Harness.h"
#include "windows/trend/TrendPlot.h"

#include <cmath>

using namespace corvane;
using namespace corvane::perf;

namespace {

constexpr int few = 1'000;
constexpr int many = 1'000'000;

/// So many looped queries and their replies, a slow wave with some noise. Like a window that is
/// open all the time, the series follows as they come.
void feed(TrafficRecorder &recorder, TrendSeries &series, int replies)
{
    for (int reply = 0; reply < replies; ++reply) {
        const double value =
            25 + 10 * std::sin(reply * 20.0 / replies) + reply % 101 * 37 % 101 / 50.0;
        recorder.add(3, TrafficKind::Sent, "? PV x\r");
        recorder.add(3, TrafficKind::Received, QByteArray::number(value, 'f', 2) + "\r\n");
        if (reply % few == 0)
            series.follow();
    }
    while (series.follow()) {
    }
}

/// A series of so many points, and the window's plot of it.
struct Painted
{
    explicit Painted(int points)
    {
        feed(recorder, series, points);
        plot.resize(1000, 500);
        plot.show();
        plot.showAll();
        fill();
    }
    /// The points fill the picture, however short a time they took.
    void fill()
    {
        const TrendCurve &curve = series.curves().front();
        const double begin = static_cast<double>(curve.first().time) / 1e6;
        const double length = static_cast<double>(curve.last().time) / 1e6 - begin;
        plot.zoomTime(length / (plot.sight().end - plot.sight().begin));
        plot.moveTime((begin - plot.sight().begin) / length);
    }
    double paint()
    {
        constexpr int paints = 20;
        const double before = processorSeconds();
        for (int each = 0; each < paints; ++each)
            plot.repaintCurves();
        return (processorSeconds() - before) / paints;
    }

    TrafficRecorder recorder;
    TrendSeries series{recorder};
    TrendPlot plot{series};
};

void measurePaint(Table &table)
{
    const double before = residentBytes();
    Painted large(many);
    table.atMost("memory a point, recorder and window included", (residentBytes() - before) / many,
                 100, "bytes");
    Painted small(few);
    const Comparison paint = compare(
        5, [&] { return large.paint(); }, [&] { return small.paint(); });
    table.note("a paint of a thousand points", paint.b * 1e3, "ms");
    table.note("a paint of a million points", paint.a * 1e3, "ms");
    table.atMost("a million over a thousand", paint.ratio, 10, "times");
    QByteArray csv;
    table.note("a million points as a table",
               secondsOf([&] { csv = trendCsv::text(large.series); }), "s");
}

/// What a reply costs beside its being recorded.
void measureFollowing(Table &table)
{
    constexpr int replies = 200'000;
    TrafficRecorder recorder;
    for (int reply = 0; reply < replies; ++reply) {
        recorder.add(3, TrafficKind::Sent, "? PV x\r");
        recorder.add(3, TrafficKind::Received, "25.00\r\n");
    }
    TrendSeries series(recorder);
    double longest = 0;
    bool isMore = true;
    double all = 0;
    while (isMore) {
        const double call = secondsOf([&] { isMore = series.follow(); });
        longest = std::max(longest, call);
        all += call;
    }
    table.note("a reply taken over", all / replies * 1e6, "us");
    table.atMost("the longest call", longest * 1e3, 100, "ms");
}

int measure()
{
    Table table("The Trend window");
    measurePaint(table);
    measureFollowing(table);
    return table.exitCode();
}

} // namespace

int main(int argc, char **argv)
{
    return runApplication(argc, argv, measure);
}
