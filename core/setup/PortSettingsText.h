#pragma once

#include <QString>

#include <array>

namespace corvane {

/// A serial settings string taken apart into its four texts, as the four entry boxes hold them. It
/// judges nothing: what the port cannot do is the port's to say.
struct PortSettingsText
{
    QString baudRate;
    QString parity; ///< a letter, or an entry of the parity list
    QString dataBits;
    QString stopBits;

    /// The parity box's list, each entry led by its letter.
    static constexpr std::array parities{u"E - Even", u"M - Mark", u"N - None", u"O - Odd",
                                         u"S - Space"};

    /// Splits "9600,n,8,1"; the parity becomes upper case. Missing parts are empty, parts behind
    /// the fourth are dropped.
    static PortSettingsText parse(const QString &settings);
    /// "9600,N,8,1": blanks trimmed, an entry of the parity list as its letter, any other parity
    /// text as it stands.
    [[nodiscard]] QString toString() const;

    bool operator==(const PortSettingsText &) const = default;
};

} // namespace corvane
