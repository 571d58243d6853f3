// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/traffic/TrafficEvent.h"

#include <QByteArray>
#include <QDateTime>

namespace corvane {

/// A file format that events are saved in: what stands in front, and what each event adds.
struct TrafficFormat
{
    QByteArray (*start)(const QDateTime &began);
    QByteArray (*event)(const QDateTime &began, const TrafficEvent &event);

    /// By the path's ending: "csv" comma-separated values (UTF-8, lines ended by CR LF: seconds,
    /// wall clock, Channel, kind, text, hexadecimal), "pcapng" packets with one interface a
    /// Channel, direction flags and times to the microsecond, with what is no bytes as comments;
    /// any other ending lines of text.
    static TrafficFormat ofPath(const QString &path);
};

} // namespace corvane
