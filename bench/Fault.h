// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "bench/OrderText.h"

#include <QByteArray>
#include <QString>

#include <optional>
#include <vector>

namespace corvane::bench {

/// One way in which a device or its transport can fail, as it is ordered. It acts on the commands
/// that follow (unplugging at once), on every one or, with `once`, on the next only.
struct Fault
{
    enum class Kind {
        None,
        Silent,  ///< no reply
        Slow,    ///< the reply comes `ms` late
        Late,    ///< the reply comes with the next command
        Split,   ///< the reply comes in pieces `ms` apart, CR and LF each by itself
        Garbage, ///< `text`, or all 256 byte values when it is empty, in the reply's place
        Twice,   ///< the reply comes again after `ms`
        NoEnd,   ///< the reply lacks its line end
        Drop,    ///< the connection drops in the place of a reply; always once
        Flood,   ///< `bytes` bytes in pieces of `piece` in the reply's place; always once
        Unplug,  ///< the adapter, server or instrument goes away until the fault is cleared
    };

    static constexpr qint64 mostFloodBytes = 100'000'000;

    Kind kind = Kind::None;
    int ms = 0;
    qint64 bytes = 0;
    int piece = 0;
    QByteArray text{};
    bool once = false;

    bool operator==(const Fault &) const = default;

    /// "none", "silent", "slow 500", "late", "split 20", "garbage", "garbage 1e40\r,1", "twice 0",
    /// "noend", "drop", "flood 10000000 4096", "unplug"; each may end with "once". Numbers may be
    /// left out. Nothing when the text is none of these.
    static std::optional<Fault> parse(const QString &text);
    /// The text that parses to this fault.
    [[nodiscard]] QString toString() const;
    /// What can be ordered. Each word alone parses to the fault with what is in force when its
    /// arguments are left out.
    static std::vector<OrderText> choices();
};

} // namespace corvane::bench
