// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/board/CalibrationTable.h"

#include "devices/Literals.h"

namespace corvane {

CalibrationTable::CalibrationTable()
{
    // The last title's trailing blanks belong to it.
    const std::array<QString, rows> titles = {
        QString(),      u"DAC Value"_s, u"DAC Gain"_s,   u"DAC Offset"_s,
        u"ADC Value"_s, u"ADC Gain"_s,  u"ADC Offset"_s, u"Keithley   "_s,
    };
    for (size_t row = 0; row < titles.size(); ++row)
        m_cells[row][0] = titles[row];
    for (int channel = 0; channel < channels; ++channel)
        setText(0, columnOf(channel), u"Chan%1"_s.arg(channel));
}

void CalibrationTable::setText(int row, int column, const QString &text)
{
    m_cells.at(static_cast<size_t>(row)).at(static_cast<size_t>(column)) = text;
}

const QString &CalibrationTable::text(int row, int column) const
{
    return m_cells.at(static_cast<size_t>(row)).at(static_cast<size_t>(column));
}

} // namespace corvane
