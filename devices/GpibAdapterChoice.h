// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "devices/GpibAddress.h"

#include <QString>

#include <array>
#include <optional>

namespace corvane {

/// What serves a GPIB board, as the command line and the adapter window write it.
struct GpibAdapterChoice
{
    enum class Kind {
        Auto,    ///< "auto": the installed library that knows the board
        None,    ///< "none"
        Tcp,     ///< "tcp:HOST[:PORT]": a "++" controller on the network
        Serial,  ///< "serial:DEVICE": a "++" controller on a serial device
        Library, ///< "library[:BOARD]": the installed ib* library
        Visa     ///< "visa": the installed VISA library
    };

    static constexpr int defaultPort = 1234;

    Kind kind = Kind::Auto;
    QString host = {};
    int port = defaultPort; ///< 1..65535
    QString device = {};
    std::optional<int> libraryBoard = {}; ///< 0..15; none: the board's own number

    /// Reads such a text; an address with colons stands in brackets. Throws PlatformError that
    /// names what is wrong with it.
    static GpibAdapterChoice parse(const QString &text);
    [[nodiscard]] QString toString() const;

    bool operator==(const GpibAdapterChoice &) const = default;
};

/// Which adapter serves each GPIB board, for as long as the program runs.
using GpibAdapterChoices = std::array<GpibAdapterChoice, GpibAddress::boardCount>;

} // namespace corvane
