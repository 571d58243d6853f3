// SPDX-License-Identifier: GPL-3.0-or-later
#include "bench/ChamberSettings.h"

#include "bench/Text.h"

namespace corvane::bench {

namespace {

constexpr int isText = ChamberSetting::isText;

constexpr ChamberSetting settings[] = {
    {"SP", "25.0", 1, -100, 200},                // temperature set point, degrees C
    {"HSP", "50.0", 1, 0, 100},                  // humidity set point, % RH
    {"SPLO", "-70.0", 1, -100, 200},             // lowest temperature set point
    {"SPHI", "180.0", 1, -100, 200},             // highest temperature set point
    {"HSPLO", "10.0", 1, 0, 100},                // lowest humidity set point
    {"HSPHI", "98.0", 1, 0, 100},                // highest humidity set point
    {"PB", "4.0", 1, 0.1, 50},                   // temperature proportional band, degrees C
    {"TI", "120", 0, 0, 3600},                   // temperature integral time, s
    {"TD", "15", 0, 0, 600},                     // temperature derivative time, s
    {"HPB", "10.0", 1, 0.1, 50},                 // humidity proportional band, % RH
    {"HTI", "240", 0, 0, 3600},                  // humidity integral time, s
    {"HTD", "30", 0, 0, 600},                    // humidity derivative time, s
    {"RAMP", "60.0", 1, 0.1, 600},               // temperature ramp rate, degrees C a minute
    {"HRAMP", "60.0", 1, 0.1, 600},              // humidity ramp rate, % RH a minute
    {"ALLO", "-75.0", 1, -100, 200},             // low temperature alarm
    {"ALHI", "185.0", 1, -100, 200},             // high temperature alarm
    {"HALLO", "5.0", 1, 0, 100},                 // low humidity alarm
    {"HALHI", "99.0", 1, 0, 100},                // high humidity alarm
    {"ALDLY", "30", 0, 0, 3600},                 // alarm delay, s
    {"RUN", "1", 0, 0, 1},                       // 1 conditioning, 0 standing still
    {"ADDR", "5", 0, 1, 30},                     // RS-485 address
    {"NAME", "CHAMBER-A", isText, 0, 40},        // name of the chamber
    {"UUTNAME", "Sample rack 1", isText, 0, 40}, // name of the unit under test, may hold blanks
    {"UUTLOT", "LOT 2041", isText, 0, 40},       // lot of the unit under test, may hold blanks
};

QByteArray withoutQuotes(QByteArray value)
{
    if (value.size() >= 2 && value.startsWith('"') && value.endsWith('"'))
        value = value.sliced(1, value.size() - 2);
    return value;
}

} // namespace

ChamberSettings::ChamberSettings()
{
    for (const ChamberSetting &setting : settings)
        m_values.emplace_back(setting.initial);
}

std::span<const ChamberSetting> ChamberSettings::table()
{
    return settings;
}

std::optional<size_t> ChamberSettings::indexOf(const QByteArray &name)
{
    for (size_t i = 0; i < std::size(settings); ++i) {
        if (name.compare(settings[i].name, Qt::CaseInsensitive) == 0)
            return i;
    }
    return std::nullopt;
}

std::optional<QByteArray> ChamberSettings::read(const QByteArray &name) const
{
    const auto index = indexOf(name);
    return index ? std::optional(m_values[*index]) : std::nullopt;
}

ChamberSettings::Outcome ChamberSettings::write(const QByteArray &name, const QByteArray &value)
{
    const auto index = indexOf(name);
    if (!index)
        return Outcome::Unknown;
    const ChamberSetting &setting = settings[*index];
    if (setting.decimals == isText) {
        const QByteArray words = withoutQuotes(value.trimmed());
        if (static_cast<double>(words.size()) > setting.high)
            return Outcome::OutOfRange;
        m_values[*index] = words;
        return Outcome::Done;
    }
    const auto number = text::number(value);
    if (!number)
        return Outcome::WrongType;
    if (*number < setting.low || *number > setting.high || !fitsSetPointLimits(name, *number))
        return Outcome::OutOfRange;
    m_values[*index] = text::fixed(*number, setting.decimals);
    return Outcome::Done;
}

double ChamberSettings::number(const char *name) const
{
    return read(name).value_or(QByteArray()).toDouble();
}

bool ChamberSettings::fitsSetPointLimits(const QByteArray &name, double value) const
{
    const QByteArray setPoint = name.toUpper();
    if (setPoint != "SP" && setPoint != "HSP")
        return true;
    return value >= number((setPoint + "LO").constData()) &&
           value <= number((setPoint + "HI").constData());
}

} // namespace corvane::bench
