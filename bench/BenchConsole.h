#pragma once

#include "bench/Bench.h"

#include <QSocketNotifier>

#include <array>
#include <memory>

namespace corvane::bench {

/// The bench as a program of its own: prints what is where, reads orders from the standard input
/// and ends on "quit", SIGINT and SIGTERM.
class BenchConsole : public QObject
{
public:
    explicit BenchConsole(BenchOptions options);
    ~BenchConsole() override;

    /// False, with the reason on the standard error, when the bench could not start whole.
    bool start();

private:
    void listenToSignals();
    void readOrders();
    void print(const QString &text);

    Bench m_bench;
    LineReader m_orders;
    std::unique_ptr<QSocketNotifier> m_input;
    std::unique_ptr<QSocketNotifier> m_signals;
    /// A signal handler may do next to nothing: it writes a byte here.
    std::array<int, 2> m_signalPipe{-1, -1};
};

} // namespace corvane::bench
