// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/traffic/TrafficEvent.h"

#include <QDateTime>

#include <optional>

/// How an event is shown to people.
namespace corvane::trafficText {

enum class Style { Text, Hexadecimal, Both };

/// The words of an event's kind: "sent", "received", "connected".
QString kindOf(TrafficKind kind);
/// The content on one line, `most` bytes of it at most: control characters by their names, as in
/// "*IDN?<CR>", other bytes that cannot be printed by their numbers, as in "<80>"; or all by their
/// numbers, as in "2A 49"; or both.
QString contentOf(const TrafficEvent &event, Style style, qsizetype most);
/// The wall clock of a time, to the microsecond: "15:55:00.123456".
QString clockOf(const QDateTime &began, qint64 time);
/// The same with the date and the time zone: "2026-11-25T15:55:00.123456+01:00".
QString stampOf(const QDateTime &began, qint64 time);
/// Seconds to the microsecond: "0.001234".
QString secondsOf(qint64 microseconds);
/// The text with its control characters by their names.
QString visible(const QString &text);
/// The bytes of a text in which control characters may be written by their names or numbers;
/// nothing when it has a character that is no byte.
std::optional<QByteArray> bytesOf(const QString &text);

} // namespace corvane::trafficText
