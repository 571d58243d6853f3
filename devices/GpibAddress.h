// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <optional>

namespace corvane {

/// Where an instrument sits: a board and its primary (and, rarely, secondary) address.
struct GpibAddress
{
    static constexpr int boardCount = 4;

    int board = 0;                ///< 0..3, as in "GPIB0"
    int primary = 0;              ///< 0..30
    std::optional<int> secondary; ///< 96..126

    /// Reads a connect string, "GPIB0::5" or "GPIB0::5::96". Throws PlatformError that names what
    /// is wrong with it.
    static GpibAddress parse(const QString &connectString);
    [[nodiscard]] QString toString() const;
    /// "GPIB0".
    static QString boardName(int board);

    bool operator==(const GpibAddress &) const = default;
};

} // namespace corvane
