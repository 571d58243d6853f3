// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "bench/Desk.h"
#include "bench/LineReader.h"

#include <QSocketNotifier>

#include <array>
#include <memory>

namespace corvane::bench {

/// A bench as a program of its own: prints what is where, reads orders from the standard input
/// and ends on "quit", SIGINT, SIGTERM and SIGHUP.
class BenchConsole : public QObject
{
public:
    explicit BenchConsole(std::unique_ptr<Desk> desk);
    ~BenchConsole() override;

    /// False, with the reason on the standard error, when the bench could not start whole.
    bool start();

private:
    void listenToSignals();
    void readOrders();
    void print(const QString &text);

    std::unique_ptr<Desk> m_desk;
    LineReader m_orders;
    std::unique_ptr<QSocketNotifier> m_input;
    std::unique_ptr<QSocketNotifier> m_signals;
    /// A signal handler may do next to nothing: it writes a byte here.
    std::array<int, 2> m_signalPipe{-1, -1};
};

} // namespace corvane::bench
