// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/setup/GpibSearchFaults.h"
#include "devices/GpibAddress.h"
#include "devices/WaitGroup.h"

#include <QObject>

namespace corvane {

class ChannelUsers;
class GpibControl;
class GpibSession;
struct Module1;

/// Looks for the first instrument that answers "*IDN?": boards 0..3, on each the addresses 0..30.
/// It owns the order and the pace of the probes, claims the IEEE 488 Channel meanwhile, and shows
/// that Channel what it has found.
///
/// An address with a fault is passed over. A board is left when its adapter is not there, or when
/// it fails at `faultsToLeave` addresses in a row. What was passed over is told at once.
class GpibSearch : public QObject
{
    Q_OBJECT

public:
    static constexpr int addressesPerBoard = 31;
    static constexpr int probeCount = GpibAddress::boardCount * addressesPerBoard;
    static constexpr int faultsToLeave = 3;
    /// Between the query and the read of its reply.
    static constexpr int replyDelayMs = 75;

    /// All of it must outlive the search.
    GpibSearch(GpibSession &channel, ChannelUsers &users, Module1 &module, Clock &clock,
               QObject *parent = nullptr);

    /// Why no search can start now; empty when one can.
    [[nodiscard]] QString refusal() const;

    /// Searches and returns when the search has ended: an answer, all addresses probed, or
    /// SearchCancelled. Nothing when a search runs already. An empty bus takes
    /// 124 x (75 ms + the control's time-out).
    void SearchGPIBLoop();
    /// Sets SearchCancelled and ends the running wait or read at once.
    void cancel();
    /// True while SearchGPIBLoop is on the stack; this object must not go.
    [[nodiscard]] bool isRunning() const { return m_running; }

Q_SIGNALS:
    /// The last probe is over; what was found is not shown yet.
    void ended();
    /// The Channel is at the device that was found.
    void found();
    void statusChanged(const QString &text);
    /// An address is about to be probed; `number` counts from 1 to probeCount.
    void positionChanged(int number);
    /// What was passed over so far, and why; a line for each reason.
    void faultsChanged(const QString &text);

private:
    QByteArray probeBoards();
    QByteArray probeBoard(int board);
    QByteArray probe(const GpibAddress &address);
    [[nodiscard]] bool isAdapterThere(int board);
    bool writeQuery(GpibControl &control);
    void processPendingEvents();
    [[nodiscard]] bool isCancelled() const;
    void reportFound(const QByteArray &reply);
    void reportNothing();
    void setStatus(const QString &text);

    [[nodiscard]] GpibControl &control() const;

    GpibSession &m_channel;
    ChannelUsers &m_users;
    Module1 &m_module;
    WaitGroup m_waits;
    bool m_running = false;
    GpibSearchFaults m_faults;
};

} // namespace corvane
