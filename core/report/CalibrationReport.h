// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/board/CalibrationTable.h"
#include "core/board/modSBC.h"

namespace corvane {

/// The board's identity as its reply to "*IDN?" tells it.
struct BoardIdentity
{
    QString partNum;
    QString serialNum;
    QString picFirmWare;
    QString rabbitVersion;

    bool operator==(const BoardIdentity &) const = default;
};

/// The calibration report's texts, as pure functions of what it holds. Knows no window and no file.
namespace calibrationReport {

/// The whole file, each line ended by CR LF.
QString text(const ReportFields &fields, const CalibrationTable &table);

/// What of the fields the file cannot hold first: it is bytes, a character each.
struct Misfit
{
    QString ReportFields::*field;
    /// The character, as one or two of the text's units.
    QString character;
};
std::optional<Misfit> firstMisfit(const ReportFields &fields);

/// A field of the identity longer than this is none.
inline constexpr qsizetype longestField = 1000;
/// Reads the reply; nothing when it has fewer than five fields, or one that is too long.
std::optional<BoardIdentity> parseIdentity(const QString &reply);

/// The file name without extension, from part number and serial number; empty when the serial
/// number has no "/".
QString fileName(const QString &partNum, const QString &serialNum);

} // namespace calibrationReport

} // namespace corvane
