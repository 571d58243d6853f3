// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "bench/ByteStream.h"
#include "bench/LineReader.h"
#include "bench/PieceQueue.h"

namespace corvane::bench {

/// One instrument on the GPIB bus: takes messages, and keeps what its device answers, the last byte
/// of a reply marked with END, until it is addressed to talk.
class GpibStation : public QObject, public Plug
{
    Q_OBJECT

public:
    /// The device outlives the station.
    explicit GpibStation(Responder &device);

    /// Somebody has connected to the bus.
    void greet() { m_pieces.add(m_device.greet()); }
    /// Bytes for the device; `end`: the last one came with END, which ends a command like a line
    /// end. A new message discards a reply that nobody read, as instruments do that are asked
    /// anew, unless a fault spoilt it.
    void listen(const QByteArray &bytes, bool end);

    struct Talk
    {
        QByteArray bytes;
        bool end = false;
    };
    /// The next bytes of the device: up to END, or up to and including `stop`; empty when it has
    /// nothing to say now.
    Talk talk(std::optional<char> stop = std::nullopt);

    /// Selected device clear: forgets commands begun and replies not read.
    void clear();

    [[nodiscard]] FaultLine &faults() { return m_faults; }
    void unplug() override;
    bool replug() override;
    [[nodiscard]] bool isPlugged() const override { return m_plugged; }
    [[nodiscard]] QString state() const override { return {}; }
    void discardOutput() override { clear(); }

Q_SIGNALS:
    /// There is something to read.
    void ready();

private:
    void answer(const QByteArray &line);

    Responder &m_device;
    FaultLine m_faults;
    LineReader m_reader;
    PieceQueue m_pieces;
    std::deque<Talk> m_output;
    bool m_keepUnread = false;
    bool m_plugged = true;
};

} // namespace corvane::bench
