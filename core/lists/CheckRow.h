// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace corvane {

/// One check of a test list: a reply against what was expected. Judged without a widget.
struct CheckRow
{
    enum class Cell { Untouched, Passed, Failed };

    struct Verdict
    {
        bool passed = false;
        /// What the check row's response cell shows. A reply that only continues beyond the
        /// expected text fails and yet shows Passed.
        Cell cell = Cell::Untouched;

        bool operator==(const Verdict &) const = default;
    };

    QString reply;
    QString expected;
    QString tolerance;

    /// A numeric expectation compares numbers: each difference and the tolerance are rounded to
    /// single precision first, and a difference as large as the tolerance passes. Any other
    /// compares the characters; a double quote at either end of it is dropped.
    [[nodiscard]] Verdict judge() const;
};

} // namespace corvane
