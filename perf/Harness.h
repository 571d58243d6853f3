// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <fstream>
#include <functional>
#include <string>
#include <string_view>
#include <sys/resource.h>
#include <unistd.h>
#include <vector>

/// What all benchmarks share: clocks, medians, and a table of figures with their bounds.
///
/// A bound is a ratio of two measurements of one run wherever it can be, so that it means the same
/// on a slow machine and on a busy one.
namespace corvane::perf {

/// Seconds of the monotonic clock.
inline double now()
{
    const auto sinceStart = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration<double>(sinceStart).count();
}

/// Seconds that one call takes.
inline double secondsOf(const std::function<void()> &work)
{
    const double start = now();
    work();
    return now() - start;
}

/// Processor seconds, user's and system's, that this process has taken so far, or with
/// RUSAGE_CHILDREN those that it started and that have ended.
inline double processorSeconds(decltype(RUSAGE_SELF) whose = RUSAGE_SELF)
{
    rusage usage{};
    getrusage(whose, &usage);
    const auto seconds = [](const timeval &time) {
        return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
    };
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

/// Bytes of memory that this process has resident now.
inline double residentBytes()
{
    double total = 0;
    double resident = 0;
    std::ifstream("/proc/self/statm") >> total >> resident;
    return resident * static_cast<double>(sysconf(_SC_PAGESIZE));
}

/// The middle value; of an even number of values the mean of the middle two; 0 of none.
inline double median(std::vector<double> values)
{
    if (values.empty())
        return 0;
    std::sort(values.begin(), values.end());
    const size_t middle = values.size() / 2;
    return values.size() % 2 == 1 ? values[middle] : (values[middle - 1] + values[middle]) / 2;
}

/// Two things measured in turns, A B A B ..., so that what disturbs one disturbs the other.
struct Comparison
{
    double a = 0;     ///< median of A
    double b = 0;     ///< median of B
    double ratio = 0; ///< median of A / B, round by round
};

/// Measures both `rounds` times, after one round that is thrown away. Each returns its own figure.
inline Comparison compare(int rounds, const std::function<double()> &a,
                          const std::function<double()> &b)
{
    std::vector<double> all[3];
    for (int round = -1; round < rounds; ++round) {
        const double ofA = a();
        const double ofB = b();
        if (round < 0)
            continue;
        all[0].push_back(ofA);
        all[1].push_back(ofB);
        all[2].push_back(ofA / ofB);
    }
    return {median(all[0]), median(all[1]), median(all[2])};
}

/// The figures of one benchmark, printed as a table. The exit code tells whether all bounds hold.
class Table
{
public:
    explicit Table(std::string_view title) { std::printf("\n%s\n", std::string(title).c_str()); }

    /// A figure without a bound.
    void note(std::string_view what, double value, std::string_view unit)
    {
        print(what, value, unit, "");
    }
    void atMost(std::string_view what, double value, double bound, std::string_view unit)
    {
        judge(what, value, unit, "at most", bound, value <= bound);
    }
    void atLeast(std::string_view what, double value, double bound, std::string_view unit)
    {
        judge(what, value, unit, "at least", bound, value >= bound);
    }
    /// Says why a figure is missing ("picocom is not installed"); breaks nothing.
    void skip(std::string_view what, std::string_view why)
    {
        std::printf("  %-44s  skipped: %s\n", std::string(what).c_str(), std::string(why).c_str());
    }

    /// 0 when every bound holds, else 1: what main() returns.
    [[nodiscard]] int exitCode() const { return m_broken == 0 ? 0 : 1; }

private:
    // A figure that is not a number (0 / 0) keeps no bound: both comparisons are false.
    void judge(std::string_view what, double value, std::string_view unit, const char *kind,
               double bound, bool holds)
    {
        char text[64];
        std::snprintf(text, sizeof text, "%s %g  %s", kind, bound, holds ? "ok" : "BROKEN");
        print(what, value, unit, text);
        m_broken += holds ? 0 : 1;
    }
    static void print(std::string_view what, double value, std::string_view unit,
                      const char *verdict)
    {
        std::printf("  %-44s %11.4g %-6s %s\n", std::string(what).c_str(), value,
                    std::string(unit).c_str(), verdict);
        std::fflush(stdout);
    }

    int m_broken = 0;
};

} // namespace corvane::perf
