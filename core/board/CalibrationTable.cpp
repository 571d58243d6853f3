#include "core/board/CalibrationTable.h"

namespace corvane {

CalibrationTable::CalibrationTable()
{
    // The last title's trailing blanks belong to it.
    const std::array<QString, rows> titles = {
        QString(),
        QStringLiteral("DAC Value"),
        QStringLiteral("DAC Gain"),
        QStringLiteral("DAC Offset"),
        QStringLiteral("ADC Value"),
        QStringLiteral("ADC Gain"),
        QStringLiteral("ADC Offset"),
        QStringLiteral("Keithley   "),
    };
    for (size_t row = 0; row < titles.size(); ++row)
        m_cells[row][0] = titles[row];
    for (int channel = 0; channel < channels; ++channel)
        setText(0, columnOf(channel), QStringLiteral("Chan%1").arg(channel));
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
