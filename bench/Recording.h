// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "bench/Responder.h"

#include <QHash>
#include <QStringList>

#include <optional>

namespace corvane::bench {

/// What one device answered while its traffic was recorded.
struct RecordedDevice
{
    /// Where it sits on the GPIB.
    struct Gpib
    {
        int board = 0;
        int address = 0;
        int secondary = 0; ///< 96..126; 0: none
    };

    /// The title of its Channel's tab.
    QString channel;
    std::optional<Gpib> gpib;
    /// By request line, without its line end: the reply to each time that it was sent, in order.
    /// One that got no reply has no pieces.
    QHash<QByteArray, std::vector<Pieces>> replies;
    /// What it sent unasked after each connection; nothing stands for one without, the first too.
    std::vector<Pieces> unasked;
    QByteArray firstRequest;
    int exchanges = 0;
};

/// A recording of traffic, one JSON object a line, as far as it can be replayed.
///
/// A reply is everything that was received after a request until the next one on that Channel, at
/// that GPIB address. Its pieces keep the delays that they came with; what follows a pause is taken
/// for unasked.
struct Recording
{
    /// As long as this pause at least.
    static constexpr int quietMs = 200;

    /// What a file may hold that is read into memory.
    struct Limits
    {
        qint64 keptBytes = qint64{256} << 20;
        qint64 lineBytes = qint64{16} << 20;
    };

    QString path;
    std::vector<RecordedDevice> devices;
    /// What could not be used, with its line's number; of many lines the first ones.
    QStringList notes;
    /// Why nothing of it can be used; empty when something can.
    QString fault;

    /// Reads a file line by line. Anything but a regular file is refused and never waited for.
    static Recording read(const QString &path, Limits limits);
    static Recording read(const QString &path) { return read(path, Limits{}); }
};

} // namespace corvane::bench
