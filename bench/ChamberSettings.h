// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>

#include <optional>
#include <span>
#include <vector>

namespace corvane::bench {

/// One setting as the table lists it.
struct ChamberSetting
{
    static constexpr int isText = -1;

    const char *name;
    /// The value at power-up.
    const char *initial;
    /// Decimals of the value as it is written; `isText` for a text.
    int decimals;
    /// The least and the greatest value; of a text nothing and its greatest length.
    double low;
    double high;
};

/// The settings of a chamber controller that can be changed: their table, values and limits.
class ChamberSettings
{
public:
    enum class Outcome { Done, Unknown, WrongType, OutOfRange };

    ChamberSettings();

    static std::span<const ChamberSetting> table();

    [[nodiscard]] bool has(const QByteArray &name) const { return indexOf(name).has_value(); }
    /// The value as text ("25.0"); nothing when there is no such setting. Any letter case.
    [[nodiscard]] std::optional<QByteArray> read(const QByteArray &name) const;
    /// Takes the value, unless it is of the wrong kind or outside its limits.
    Outcome write(const QByteArray &name, const QByteArray &value);
    /// The value of a setting that is a number.
    [[nodiscard]] double number(const char *name) const;

private:
    [[nodiscard]] static std::optional<size_t> indexOf(const QByteArray &name);
    [[nodiscard]] bool fitsSetPointLimits(const QByteArray &name, double value) const;

    std::vector<QByteArray> m_values;
};

} // namespace corvane::bench
