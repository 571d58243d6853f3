// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "devices/GpibAddress.h"

#include <QString>

#include <vector>

namespace corvane {

/// What a GPIB search passed over because of faults, and how that is told. When to go on and when
/// to leave a board is the search's to decide.
class GpibSearchFaults
{
public:
    void clear() { m_faults.clear(); }
    /// The address failed and was passed over.
    void addSkipped(const GpibAddress &at, const QString &description);
    /// The address failed and its board was left: none from `first` on was searched.
    void addLeft(const GpibAddress &at, int first, const QString &description);

    /// A line for each reason, as in "GPIB0::4, GPIB1: no adapter"; empty when nothing was passed
    /// over.
    [[nodiscard]] QString text() const;

private:
    struct Fault
    {
        GpibAddress from;
        bool left;
        QString reason; ///< the same for all boards and addresses where that is possible

        [[nodiscard]] QString place() const;
    };

    std::vector<Fault> m_faults;
};

} // namespace corvane
