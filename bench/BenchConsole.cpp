// SPDX-License-Identifier: GPL-3.0-or-later
#include "bench/BenchConsole.h"

#include <QCoreApplication>

#include <csignal>
#include <cstdio>
#include <fcntl.h>
#include <unistd.h>

namespace corvane::bench {

namespace {

// A signal handler reaches nothing but a global.
volatile std::sig_atomic_t signalDescriptor = -1;

void wake(int)
{
    const char byte = 0;
    [[maybe_unused]] const auto written = ::write(signalDescriptor, &byte, 1);
}

} // namespace

BenchConsole::BenchConsole(std::unique_ptr<Desk> desk)
    : m_desk(std::move(desk))
{
    connect(m_desk.get(), &Desk::said, this, &BenchConsole::print);
}

BenchConsole::~BenchConsole()
{
    signalDescriptor = -1;
    for (const int descriptor : m_signalPipe) {
        if (descriptor >= 0)
            ::close(descriptor);
    }
}

bool BenchConsole::start()
{
    if (!m_desk->start()) {
        std::fprintf(stderr, "corvane-bench: %s\n", qPrintable(m_desk->errorString()));
        return false;
    }
    listenToSignals();
    m_input = std::make_unique<QSocketNotifier>(STDIN_FILENO, QSocketNotifier::Read);
    connect(m_input.get(), &QSocketNotifier::activated, this, &BenchConsole::readOrders);
    print(m_desk->order(u"list"_s));
    print(u"\nStart the program against it:\n  corvane %1\n\n%2\n"
          "Orders are read here; \"help\" lists them, \"quit\" ends."_s.arg(
              m_desk->programArguments().join(u' '), m_desk->tcpHint()));
    return true;
}

void BenchConsole::listenToSignals()
{
    if (::pipe2(m_signalPipe.data(), O_CLOEXEC | O_NONBLOCK) != 0)
        return;
    signalDescriptor = m_signalPipe[1];
    m_signals = std::make_unique<QSocketNotifier>(m_signalPipe[0], QSocketNotifier::Read);
    connect(m_signals.get(), &QSocketNotifier::activated, this, [] { QCoreApplication::quit(); });
    for (const int signal : {SIGINT, SIGTERM, SIGHUP})
        std::signal(signal, wake);
    // Nobody may be reading what is printed; the links must go all the same.
    std::signal(SIGPIPE, SIG_IGN);
}

void BenchConsole::readOrders()
{
    std::array<char, 4096> buffer{};
    const ssize_t count = ::read(STDIN_FILENO, buffer.data(), buffer.size());
    if (count <= 0) {
        // Started in the background: it goes on without orders.
        m_input->setEnabled(false);
        return;
    }
    for (const QByteArray &line : m_orders.feed(QByteArray(buffer.data(), count))) {
        const QString order = QString::fromLatin1(line).trimmed();
        if (order == u"quit") {
            QCoreApplication::quit();
            return;
        }
        if (!order.isEmpty())
            print(m_desk->order(order));
    }
}

void BenchConsole::print(const QString &text)
{
    std::fprintf(stdout, "%s\n", qPrintable(text));
    std::fflush(stdout);
}

} // namespace corvane::bench
