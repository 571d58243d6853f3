// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <optional>

/// The two units of the board's DACs and ADCs: 16-bit counts in hexadecimal, and volts.
namespace corvane::dacUnits {

inline constexpr double fullScaleVolts = 2.5;
inline constexpr int fullScaleCounts = 0xFFFF;

double voltsOf(double counts);
/// Whole counts, kept to 0..65535.
int countsOf(double volts);
/// The counts that a hexadecimal text means; nothing when it means none, or more than 16 bits.
std::optional<int> countsFromHex(const QString &text);

/// The text in the other unit; a text that is no number in the first one stays as it is.
QString toHexText(const QString &volts);
QString toVoltsText(const QString &hex);

} // namespace corvane::dacUnits
