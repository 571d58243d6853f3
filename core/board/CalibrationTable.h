// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <array>

namespace corvane {

/// The texts of the calibration grid: row 0 and column 0 are titles, column n + 1 is channel n.
/// Knows nothing of the widget that shows it.
class CalibrationTable
{
public:
    static constexpr int rows = 8;
    static constexpr int columns = 9;
    static constexpr int channels = 8;

    enum Row { DacValue = 1, DacGain, DacOffset, AdcValue, AdcGain, AdcOffset, Meter };

    /// The titles, and blank values.
    CalibrationTable();

    static constexpr int columnOf(int channel) { return channel + 1; }

    /// Row 0..7, column 0..8.
    [[nodiscard]] const QString &text(int row, int column) const;
    void setText(int row, int column, const QString &text);

    bool operator==(const CalibrationTable &) const = default;

private:
    std::array<std::array<QString, columns>, rows> m_cells;
};

} // namespace corvane
